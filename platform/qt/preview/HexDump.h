#pragma once

#include <QString>

#include <cstddef>
#include <span>

namespace tolvane::platform {

/// Bytes as lines of sixteen: the offset of the first, each in hexadecimal, and those that are ASCII as
/// characters, with a dot for every other.
QString hexDump(std::span<const std::byte> bytes);

} // namespace tolvane::platform
