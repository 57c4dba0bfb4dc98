#include "platform/linux/files/LinuxExtendedAttributeCalls.h"

#include "platform/posix/AttributeCallAnswer.h"

#include <sys/xattr.h>

namespace tolvane::platform {

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
