#pragma once

#include "platform/AttributedString.h"
#include "platform/Control.h"
#include "platform/Observers.h"

#include <memory>
#include <string>
#include <utility>

namespace tolvane::platform {

/// The text of a text view with its attributes, to the byte as it was set.
class TextStorage {
public:
    /// The whole plain text, all lines, without attributes.
    const std::string& string() const { return content_.string(); }
    const AttributedString& attributedString() const { return content_; }

    /// Replaces all text and attributes at once and tells the observers.
    void setAttributedString(AttributedString content);

    /// Adds to the end and tells the observers.
    void appendAttributedString(const AttributedString& addition);

    [[nodiscard]] Subscription observe(Observers::Function observer) {
        return observers_.add(std::move(observer));
    }

private:
    AttributedString content_;
    Observers observers_;
};

/// A multi-line text view over a storage. A view may be without one; what that means is up to its users.
class TextView final : public Control {
public:
    TextView() : storage_(std::make_unique<TextStorage>()) {}

    /// Null when the view has no storage. Owned by the view.
    TextStorage* textStorage() const { return storage_.get(); }
    void removeTextStorage() { storage_.reset(); }

    /// The whole plain text; empty for a view without a storage.
    std::string string() const { return storage_ ? storage_->string() : std::string(); }

    /// Replaces the whole text, giving it the attributes that its first character had. A view without a
    /// storage stays as it is.
    void setString(std::string text);

private:
    std::unique_ptr<TextStorage> storage_;
};

} // namespace tolvane::platform
