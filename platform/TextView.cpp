#include "platform/TextView.h"

namespace tolvane::platform {

void TextStorage::setAttributedString(AttributedString content) {
    content_ = std::move(content);
    observers_.notify();
}

void TextStorage::appendAttributedString(const AttributedString& addition) {
    content_.append(addition);
    observers_.notify();
}

} // namespace tolvane::platform
