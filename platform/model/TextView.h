#pragma once

#include "platform/model/ActionTarget.h"
#include "platform/model/AttributedString.h"
#include "platform/model/Control.h"
#include "platform/model/Observers.h"
#include "platform/values/URL.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tolvane::platform {

/// The text of a text view with its attributes, kept to the byte.
class TextStorage {
public:
    /// The whole plain text, all lines, without attributes.
    const std::string& string() const { return content_.string(); }
    const AttributedString& attributedString() const { return content_; }

    /// Replaces all text and attributes at once and notifies the observers.
    void setAttributedString(AttributedString content);

    /// Appends the text and notifies the observers.
    void appendAttributedString(const AttributedString& addition);

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
    void setString(std::string text);

    /// Requests that the end of the text be scrolled into view. The front end does that, through
    /// `observeScrolling`.
    void scrollToEndOfDocument(Sender /*sender*/) { scrollingObservers_.notify(); }

    [[nodiscard]] Subscription observeScrolling(Observers::Function observer) {
        return scrollingObservers_.add(std::move(observer));
    }

    using FilesHandler = std::function<void(const std::vector<URL>& files)>;

    /// Who takes files that are dropped on the view; nobody at first.
    void setFilesHandler(FilesHandler handler) { filesHandler_ = std::move(handler); }

    /// Gives dropped files to the handler; false without one.
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
