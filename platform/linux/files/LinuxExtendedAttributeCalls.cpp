#include "platform/linux/files/LinuxExtendedAttributeCalls.h"

#include <cerrno>
#include <sys/types.h>
#include <sys/xattr.h>

namespace tolvane::platform {

namespace {

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

ExtendedAttributeCalls::Answer LinuxExtendedAttributeCalls::listxattr(
    const char* path, std::span<char> buffer) const {
    return answerOf(::listxattr(path, startOf(buffer), buffer.size()));
}

ExtendedAttributeCalls::Answer LinuxExtendedAttributeCalls::getxattr(
    const char* path, const char* name, std::span<std::byte> buffer) const {
    return answerOf(::getxattr(path, name, startOf(buffer), buffer.size()));
}

ExtendedAttributeCalls::Answer LinuxLinkAttributeCalls::listxattr(
    const char* path, std::span<char> buffer) const {
    return answerOf(::llistxattr(path, startOf(buffer), buffer.size()));
}

ExtendedAttributeCalls::Answer LinuxLinkAttributeCalls::getxattr(
    const char* path, const char* name, std::span<std::byte> buffer) const {
    return answerOf(::lgetxattr(path, name, startOf(buffer), buffer.size()));
}

} // namespace tolvane::platform
