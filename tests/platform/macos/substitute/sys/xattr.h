// The two calls with the arguments they have on macOS. The names in the program's symbols are the
// substitute's own, since the C library of Linux has calls of these names with other arguments.
#pragma once

#include <cstddef>
#include <cstdint>
#include <sys/types.h>

extern "C" {

ssize_t listxattr(const char* path, char* names, std::size_t size, int options) __asm__(
    "substituteListxattr");
ssize_t getxattr(
    const char* path,
    const char* name,
    void* value,
    std::size_t size,
    std::uint32_t position,
    int options) __asm__("substituteGetxattr");
}
