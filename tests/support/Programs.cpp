#include "tests/support/Programs.h"

namespace tolvane::tests {

std::string programPath(const std::string& name) {
    return std::string(TOLVANE_PROGRAMS_DIR "/") + name;
}

} // namespace tolvane::tests
