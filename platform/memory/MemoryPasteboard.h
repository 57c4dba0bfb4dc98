#pragma once

#include "platform/Pasteboard.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace tolvane::platform {

/// A pasteboard of this process alone, for front ends without a desktop.
class MemoryPasteboard final : public Pasteboard {
public:
    void clearContents() override { texts_.clear(); }

    bool writeObjects(std::span<const std::string> texts) override {
        texts_.insert(texts_.end(), texts.begin(), texts.end());
        return true;
    }

    /// What lies on the pasteboard, in the order of writing.
    const std::vector<std::string>& texts() const { return texts_; }

private:
    std::vector<std::string> texts_;
};

} // namespace tolvane::platform
