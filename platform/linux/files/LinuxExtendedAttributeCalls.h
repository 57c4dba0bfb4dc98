#pragma once

#include "platform/services/ExtendedAttributeCalls.h"

/// The kernel's calls for extended attributes, one for one, without retries. Several threads may use one
/// object.
namespace tolvane::platform {

class LinuxExtendedAttributeCalls final : public ExtendedAttributeCalls {
public:
    Answer listxattr(const char* path, std::span<char> buffer) const override;
    Answer getxattr(const char* path, const char* name, std::span<std::byte> buffer) const override;
};

/// The same of a symbolic link itself instead of its target.
class LinuxLinkAttributeCalls final : public ExtendedAttributeCalls {
public:
    Answer listxattr(const char* path, std::span<char> buffer) const override;
    Answer getxattr(const char* path, const char* name, std::span<std::byte> buffer) const override;
};

} // namespace tolvane::platform
