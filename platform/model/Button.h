#pragma once

#include "platform/model/Control.h"
#include "platform/model/Observers.h"

#include <utility>

namespace tolvane::platform {

/// The state of a check box, with the platform's numbers.
enum class ButtonState { off = 0, on = 1 };

/// A check box, initially off.
class Button final : public Control {
public:
    ButtonState state() const { return state_; }

    /// Notifies the observers if the state changes.
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
