#pragma once

#include "platform/Error.h"
#include "platform/Value.h"

#include <cstddef>
#include <span>

namespace tolvane::platform {

/// Reads property lists.
class PropertyLists {
public:
    virtual ~PropertyLists() = default;

    /// The list that the bytes hold, whichever of the formats they are in. The bytes are not trusted:
    /// whatever they are, the answer is a value or an error.
    virtual Result<Value> propertyListWithData(std::span<const std::byte> data) const = 0;
};

} // namespace tolvane::platform
