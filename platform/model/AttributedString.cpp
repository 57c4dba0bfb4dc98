#include "platform/model/AttributedString.h"

#include <utility>

namespace tolvane::platform {

AttributedString::AttributedString(std::string text, const TextAttributes& attributes)
    : text_(std::move(text)) {
    if (!text_.empty()) {
        runs_.push_back({text_.size(), attributes});
    }
}

void AttributedString::append(const AttributedString& other) {
    // A copy, so that a text can be appended to itself.
    const std::vector<Run> added = other.runs_;
    text_ += other.text_;
    for (const Run& run : added) {
        if (!runs_.empty() && runs_.back().attributes == run.attributes) {
            runs_.back().length += run.length;
        } else {
            runs_.push_back(run);
        }
    }
}

} // namespace tolvane::platform
