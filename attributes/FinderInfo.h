#pragma once

#include "attributes/Answer.h"
#include "platform/values/ItemKind.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>

namespace tolvane::attributes {

/// The names of label and tag colours by their numbers, 0 to 7.
std::string_view colorName(std::uint64_t number);

/// Adds the fields of 32 bytes of Finder information, of a file or a folder; where the kind of item is not
/// known, the bytes decide. The sentence that sums them up.
std::string addFinderInfo(
    std::span<const std::byte> bytes, std::optional<platform::ItemKind> kind, Answer& answer);

} // namespace tolvane::attributes
