#include "platform/macos/facts/MacExtendedAttributeCalls.h"

#include "platform/posix/AttributeCallAnswer.h"

#include <cstdint>
#include <sys/xattr.h>

namespace tolvane::platform {

namespace {

constexpr std::uint32_t noPosition = 0;
constexpr int noOptions = 0;

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
