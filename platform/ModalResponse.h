#pragma once

#include <functional>

namespace tolvane::platform {

/// What a panel answers when the user agreed. Every other answer means that nothing was chosen.
inline constexpr int modalResponseOK = 1;

/// What a panel calls when it is answered.
using PanelCompletionHandler = std::function<void(int response)>;

} // namespace tolvane::platform
