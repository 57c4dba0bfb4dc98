#pragma once

#include <cstdint>
#include <string>

namespace tolvane::platform {

/// The path of an item by its numbers, "/.vol/65024/1234".
inline std::string volumePath(std::uint64_t fileSystemNumber, std::uint64_t fileNumber) {
    return "/.vol/" + std::to_string(fileSystemNumber) + "/" + std::to_string(fileNumber);
}

} // namespace tolvane::platform
