#pragma once

#include "platform/values/Value.h"

#include <cstddef>
#include <optional>
#include <span>

namespace tolvane::attributes {

/// No more than this is inflated.
inline constexpr std::size_t mostInflated = std::size_t{1} << 20U;

/// The content of a whole zlib stream. Nothing if it is damaged, incomplete, followed by other bytes, or
/// longer than `mostInflated`.
std::optional<platform::Data> inflated(std::span<const std::byte> stream);

} // namespace tolvane::attributes
