#pragma once

#include "platform/Control.h"

namespace tolvane::platform {

/// The scrolling frame around a text view. It has no state of its own: where it stands is its widget's
/// affair.
class ScrollView final : public Control {};

} // namespace tolvane::platform
