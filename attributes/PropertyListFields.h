#pragma once

#include "attributes/Family.h"
#include "platform/values/Value.h"

#include <optional>
#include <string_view>

namespace tolvane::attributes {

/// How deep the values of a property list are shown.
inline constexpr unsigned deepestListLevel = 32;

/// The value of a property list in the binary or the XML form; nothing if the bytes have neither, or are
/// damaged.
std::optional<platform::Value> propertyListIn(std::span<const std::byte> bytes);

/// Whether bytes begin as such a list does.
bool beginsLikePropertyList(std::span<const std::byte> bytes);

/// Adds a value: elements of arrays under the same name, entries of dictionaries as "name › key". Data that
/// is a property list or a bookmark itself is taken apart too.
void addPropertyList(
    const platform::Value& value, std::string_view name, const Subject& subject, Answer& answer);

} // namespace tolvane::attributes
