#include "platform/macos/facts/MacExtendedAttributeCalls.h"

#include <cerrno>
#include <cstdint>
#include <sys/types.h>
#include <sys/xattr.h>

namespace tolvane::platform {

namespace {

constexpr std::uint32_t noPosition = 0;
constexpr int noOptions = 0;

ExtendedAttributeCalls::Answer answerOf(ssize_t result) {
    if (result < 0) {
        return std::unexpected(errno);
    }
    return result;
}

// An empty span may still point somewhere; the size query is made with a null pointer and nothing else.
template <typename Byte>
Byte* startOf(std::span<Byte> buffer) {
    return buffer.empty() ? nullptr : buffer.data();
}

} // namespace

ExtendedAttributeCalls::Answer MacExtendedAttributeCalls::listxattr(
    const char* path, std::span<char> buffer) const {
    return answerOf(::listxattr(path, startOf(buffer), buffer.size(), noOptions));
}

ExtendedAttributeCalls::Answer MacExtendedAttributeCalls::getxattr(
    const char* path, const char* name, std::span<std::byte> buffer) const {
    return answerOf(::getxattr(path, name, startOf(buffer), buffer.size(), noPosition, noOptions));
}

} // namespace tolvane::platform
