#pragma once

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

private:
    std::string text_;
    Observers observers_;
};

} // namespace tolvane::platform
