#pragma once

#include "platform/model/ActionTarget.h"
#include "platform/model/AttributedString.h"
#include "platform/model/Observers.h"
#include "platform/values/URL.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tolvane::platform {

/// What a view can hold and an outlet can point at. The concrete controls are models: they keep exactly what
/// they were given and notify observers of changes; a desktop widget only mirrors them.
class Control {
public:
    Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    virtual ~Control() = default;
};

/// The scrolling frame around a text view. It has no state of its own: its widget keeps the scroll position.
class ScrollView final : public Control {};

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

/// The text of a text view with its attributes, kept to the byte.
class TextStorage {
public:
    /// The whole plain text, all lines, without attributes.
    const std::string& string() const { return content_.string(); }
    const AttributedString& attributedString() const { return content_; }

    /// Replaces all text and attributes at once and notifies the observers.
    void setAttributedString(AttributedString content) {
        content_ = std::move(content);
        observers_.notify();
    }

    /// Appends the text and notifies the observers.
    void appendAttributedString(const AttributedString& addition) {
        content_.append(addition);
        observers_.notify();
    }

    [[nodiscard]] Subscription observe(Observers::Function observer) {
        return observers_.add(std::move(observer));
    }

private:
    AttributedString content_;
    Observers observers_;
};

/// A multi-line text view over a storage, which it may lack; its users decide what that means.
class TextView final : public Control {
public:
    TextView() : storage_(std::make_unique<TextStorage>()) {}

    /// The storage, owned by the view, or null.
    TextStorage* textStorage() const { return storage_.get(); }
    void removeTextStorage() { storage_.reset(); }

    /// The whole plain text; empty for a view without a storage.
    std::string string() const { return storage_ ? storage_->string() : std::string(); }

    /// Replaces the whole text and keeps the attributes of the previous first character. Does nothing without
    /// a storage.
    void setString(std::string text) {
        if (storage_) {
            const auto& runs = storage_->attributedString().runs();
            const TextAttributes attributes = runs.empty() ? TextAttributes() : runs.front().attributes;
            storage_->setAttributedString({std::move(text), attributes});
        }
    }

    /// Requests that the end of the text be scrolled into view. The front end does that, through
    /// `observeScrolling`.
    void scrollToEndOfDocument(Sender /*sender*/) { scrollingObservers_.notify(); }

    [[nodiscard]] Subscription observeScrolling(Observers::Function observer) {
        return scrollingObservers_.add(std::move(observer));
    }

    using FilesHandler = std::function<void(const std::vector<URL>& files)>;

    /// Sets what receives files that are dropped on the view; initially nothing does.
    void setFilesHandler(FilesHandler handler) { filesHandler_ = std::move(handler); }

    /// Passes dropped files to the handler; false without one.
    bool performDragOperation(const std::vector<URL>& files) {
        if (filesHandler_) {
            filesHandler_(files);
        }
        return static_cast<bool>(filesHandler_);
    }

private:
    std::unique_ptr<TextStorage> storage_;
    FilesHandler filesHandler_;
    Observers scrollingObservers_;
};

} // namespace tolvane::platform
