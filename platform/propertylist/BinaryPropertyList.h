#pragma once

#include "platform/propertylist/PropertyList.h"

#include <cstdint>

namespace tolvane::platform {

/// How large the objects of a binary list may become when each is written out wherever it is shared: a
/// multiple of the list's length, and an allowance for short lists that share much. An element counts as 32
/// bytes and what its text or data has.
inline constexpr std::uint64_t mostPropertyListGrowth = 16;
inline constexpr std::uint64_t propertyListAllowance = std::uint64_t{4} << 20U;

/// Reads the binary form, version 00. The objects that the top one leads to are read; of the others only the
/// offset is looked at. Fill may lie between objects, but an element cannot be fill. Objects that contain
/// themselves, keys that are not texts and texts marked as ASCII that are not are refused.
std::expected<Value, PropertyListFault> readBinaryPropertyList(std::span<const std::byte> bytes);

} // namespace tolvane::platform
