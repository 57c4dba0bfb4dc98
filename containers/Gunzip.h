#pragma once

#include "platform/values/Value.h"

#include <cstddef>
#include <span>

namespace tolvane::containers {

/// No more than this is inflated.
inline constexpr std::size_t mostInflatedBytes = std::size_t{128} << 20U;

/// True if the bytes begin like a gzip stream.
bool isLikeGzip(std::span<const std::byte> bytes);

/// What a gzip stream inflates to.
struct Gunzipped {
    platform::Data bytes;
    bool isWhole = false; ///< The stream ended, its sum is right, and nothing was left out.
};

/// Inflates a stream up to its first defect or `most` bytes. Bytes after the stream are ignored.
Gunzipped gunzipped(std::span<const std::byte> stream, std::size_t most = mostInflatedBytes);

} // namespace tolvane::containers
