#pragma once

#include "platform/values/Value.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tolvane::attributes {

/// A checksum of a file's content that an attribute of the file keeps.
struct StoredChecksum {
    std::string name;           ///< The attribute's, as it was given.
    std::string_view algorithm; ///< "SHA-256"
    platform::Data digest;      ///< In the order in which its digits are written.
};

/// The checksum in an attribute; nothing if it is none, or not in the expected form.
std::optional<StoredChecksum> storedChecksum(std::string_view name, std::span<const std::byte> value);

} // namespace tolvane::attributes
