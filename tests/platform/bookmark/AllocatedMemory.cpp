#include "tests/platform/bookmark/AllocatedMemory.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <malloc.h>

namespace {

// Replaced operators have no other place to keep what they count.
std::size_t now = 0;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)
std::size_t peak = 0; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

} // namespace

// What stands in for 'new' has to take the memory from somewhere.
// NOLINTBEGIN(cppcoreguidelines-no-malloc, cppcoreguidelines-owning-memory)

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    void* const memory = std::malloc(std::max<std::size_t>(size, 1));
    now += memory == nullptr ? 0 : malloc_usable_size(memory);
    peak = std::max(peak, now);
    return memory;
}

void* operator new(std::size_t size) {
    void* const memory = operator new(size, std::nothrow);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void operator delete(void* memory) noexcept {
    now -= memory == nullptr ? 0 : malloc_usable_size(memory);
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    operator delete(memory);
}

void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept {
    operator delete(memory);
}

// NOLINTEND(cppcoreguidelines-no-malloc, cppcoreguidelines-owning-memory)

namespace tolvane::tests {

AllocatedMemory::AllocatedMemory() : before_(now) {
    ::peak = now;
}

std::size_t AllocatedMemory::peak() const {
    return ::peak - before_;
}

} // namespace tolvane::tests
