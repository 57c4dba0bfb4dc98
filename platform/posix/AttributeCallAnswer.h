#pragma once

#include "platform/services/ExtendedAttributeCalls.h"

#include <cerrno>
#include <expected>
#include <span>
#include <sys/types.h>

namespace tolvane::platform {

/// What a system call for extended attributes returned, with the error number that it left.
inline ExtendedAttributeCalls::Answer answerOf(ssize_t result) {
    if (result < 0) {
        return std::unexpected(errno);
    }
    return result;
}

/// Null for an empty buffer, which may still point somewhere: a null pointer asks for the size.
template <typename Byte>
Byte* startOf(std::span<Byte> buffer) {
    return buffer.empty() ? nullptr : buffer.data();
}

} // namespace tolvane::platform
