#pragma once

#include "platform/Control.h"
#include "platform/Observers.h"

#include <utility>

namespace tolvane::platform {

/// What a button of two states shows, with the platform's numbers.
enum class ButtonState { off = 0, on = 1 };

/// A check box: off until it is set.
class Button final : public Control {
public:
    ButtonState state() const { return state_; }

    /// Tells the observers when the state changes.
    void setState(ButtonState state) {
        if (std::exchange(state_, state) != state) {
            observers_.notify();
        }
    }

    [[nodiscard]] Subscription observe(Observers::Function observer) {
        return observers_.add(std::move(observer));
    }

private:
    ButtonState state_ = ButtonState::off;
    Observers observers_;
};

} // namespace tolvane::platform
