#pragma once

#include <cstddef>
#include <string_view>

namespace tolvane::platform {

/// Why bytes are not an AppleDouble file, a block of attributes or a resource fork: the offset, and what was
/// expected there, for people.
struct ForkFault {
    std::size_t offset = 0;
    std::string_view expected;

    friend bool operator==(const ForkFault&, const ForkFault&) = default;
};

} // namespace tolvane::platform
