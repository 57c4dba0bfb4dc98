#pragma once

#include "platform/Action.h"
#include "platform/Control.h"
#include "platform/Observers.h"

#include <string>
#include <string_view>
#include <utility>

namespace tolvane::platform {

/// A one-line text field. Its text is whatever was set, to the byte: line ends, NUL and any length included.
class TextField final : public Control {
public:
    const std::string& stringValue() const { return text_; }

    /// Replaces the whole text and tells the observers.
    void setStringValue(std::string text) {
        text_ = std::move(text);
        observers_.notify();
    }

    [[nodiscard]] Subscription observe(Observers::Function observer) {
        return observers_.add(std::move(observer));
    }

    /// Wants the whole text selected and the keyboard in this field. Only what shows the field can do that,
    /// and hears of it through `observeSelection`.
    void selectText(Sender /*sender*/) { selectionObservers_.notify(); }

    [[nodiscard]] Subscription observeSelection(Observers::Function observer) {
        return selectionObservers_.add(std::move(observer));
    }

private:
    std::string text_;
    Observers observers_;
    Observers selectionObservers_;
};

} // namespace tolvane::platform
