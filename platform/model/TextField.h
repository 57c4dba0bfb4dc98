#pragma once

#include "platform/model/ActionTarget.h"
#include "platform/model/Control.h"
#include "platform/model/Observers.h"

#include <string>
#include <string_view>
#include <utility>

namespace tolvane::platform {

/// A one-line text field. It keeps its text to the byte, including line ends, NULs and any length.
class TextField final : public Control {
public:
    const std::string& stringValue() const { return text_; }

    /// Replaces the whole text and notifies the observers.
    void setStringValue(std::string text) {
        text_ = std::move(text);
        observers_.notify();
    }

    [[nodiscard]] Subscription observe(Observers::Function observer) {
        return observers_.add(std::move(observer));
    }

    /// What a reader has to know about the text, such as that it is not exact. Shown beside it; initially
    /// empty.
    const std::string& note() const { return note_; }

    /// Notifies the observers if the note changes.
    void setNote(std::string note) {
        if (note != note_) {
            note_ = std::move(note);
            observers_.notify();
        }
    }

    /// Requests that the whole text be selected and the field get the keyboard focus. The front end does
    /// that, through `observeSelection`.
    void selectText(Sender /*sender*/) { selectionObservers_.notify(); }

    [[nodiscard]] Subscription observeSelection(Observers::Function observer) {
        return selectionObservers_.add(std::move(observer));
    }

private:
    std::string text_;
    std::string note_;
    Observers observers_;
    Observers selectionObservers_;
};

} // namespace tolvane::platform
