// How much memory the test program has taken with 'new'.
#pragma once

#include <cstddef>

namespace tolvane::tests {

/// The bytes taken at most at one time since this object was made, beyond those taken before.
class AllocatedMemory {
public:
    AllocatedMemory();

    std::size_t peak() const;

private:
    std::size_t before_;
};

} // namespace tolvane::tests
