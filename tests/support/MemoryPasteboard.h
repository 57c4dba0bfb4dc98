#pragma once

#include "platform/services/Pasteboard.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace tolvane::platform {

/// A pasteboard of this process alone.
class MemoryPasteboard final : public Pasteboard {
public:
    bool takesTexts = true;

    void clearContents() override { texts_.clear(); }

    bool writeObjects(std::span<const std::string> texts) override {
        if (takesTexts) {
            texts_.insert(texts_.end(), texts.begin(), texts.end());
        }
        return takesTexts;
    }

    /// What lies on the pasteboard, in the order of writing.
    const std::vector<std::string>& texts() const { return texts_; }

private:
    std::vector<std::string> texts_;
};

} // namespace tolvane::platform
