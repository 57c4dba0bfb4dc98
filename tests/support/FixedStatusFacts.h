#pragma once

#include "platform/services/StatusFactSource.h"

#include <string>

namespace tolvane::tests {

/// The same facts of every item, whose owner is 1000 and which its owner may read.
class FixedStatusFacts final : public platform::StatusFactSource {
public:
    platform::Result<platform::StatusFacts> facts = [] {
        platform::StatusFacts some;
        some.mode = 0100400;
        some.ownerID = 1000;
        some.allocatedSize = 512;
        return some;
    }();

    platform::Result<platform::StatusFacts> factsOfItemAtPath(const std::string& /*path*/) const override {
        return facts;
    }
};

} // namespace tolvane::tests
