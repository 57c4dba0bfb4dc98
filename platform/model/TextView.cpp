#include "platform/model/TextView.h"

namespace tolvane::platform {

void TextStorage::setAttributedString(AttributedString content) {
    content_ = std::move(content);
    observers_.notify();
}

void TextStorage::appendAttributedString(const AttributedString& addition) {
    content_.append(addition);
    observers_.notify();
}

void TextView::setString(std::string text) {
    if (!storage_) {
        return;
    }
    const auto& runs = storage_->attributedString().runs();
    const TextAttributes attributes = runs.empty() ? TextAttributes() : runs.front().attributes;
    storage_->setAttributedString({std::move(text), attributes});
}

} // namespace tolvane::platform
