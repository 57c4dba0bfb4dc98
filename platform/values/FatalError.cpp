#include "platform/values/FatalError.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace tolvane::platform {

void fatalError(std::string_view reason) {
    const std::string line = "tolvane: fatal: " + std::string(reason) + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::abort();
}

} // namespace tolvane::platform
