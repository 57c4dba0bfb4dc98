#pragma once

#include <cstddef>
#include <cstdint>
#include <expected>
#include <span>

namespace tolvane::platform {

/// The system calls for extended attributes, without interpretation. Symbolic links are followed; attributes
/// that the system hides by default are not included.
///
/// Both return the number of bytes that the system call returned (never negative), or its error number. An
/// empty buffer asks for the size. `path` and `name` end in NUL; a null path is passed on and fails as the
/// system decides. The terminal program asks from several threads at a time.
class ExtendedAttributeCalls {
public:
    using Answer = std::expected<std::int64_t, int>;

    virtual ~ExtendedAttributeCalls() = default;

    /// The names of all attributes, each followed by a NUL.
    virtual Answer listxattr(const char* path, std::span<char> buffer) const = 0;

    /// The value of one attribute.
    virtual Answer getxattr(const char* path, const char* name, std::span<std::byte> buffer) const = 0;
};

} // namespace tolvane::platform
