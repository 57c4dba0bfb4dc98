#pragma once

#include "platform/services/ExtendedAttributeCalls.h"

/// The system's calls for extended attributes, one for one, without retries: position 0 and options 0, so
/// links are followed and attributes that the system hides stay hidden. Several threads may use one object.
namespace tolvane::platform {

class MacExtendedAttributeCalls final : public ExtendedAttributeCalls {
public:
    Answer listxattr(const char* path, std::span<char> buffer) const override;
    Answer getxattr(const char* path, const char* name, std::span<std::byte> buffer) const override;
};

} // namespace tolvane::platform
