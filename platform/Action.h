#pragma once

namespace tolvane::platform {

/// Whoever sent an action: a menu item, a button, another controller. Actions of this program ignore it.
using Sender = const void*;

} // namespace tolvane::platform
