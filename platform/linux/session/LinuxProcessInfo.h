#pragma once

#include "platform/services/ProcessInfo.h"

#include <string>
#include <string_view>
#include <vector>

namespace tolvane::platform {

/// The system's version from VERSION_ID in the os-release file, such as 12 for "12" or 22 and 4 for "22.04".
/// Never fails: missing and invalid numbers are 0.
class LinuxProcessInfo final : public ProcessInfo {
public:
    LinuxProcessInfo() : LinuxProcessInfo({"/etc/os-release", "/usr/lib/os-release"}) {}
    /// The first readable file is used.
    explicit LinuxProcessInfo(std::vector<std::string> files) : files_(std::move(files)) {}

    OperatingSystemVersion operatingSystemVersion() const override;

private:
    std::vector<std::string> files_;
};

/// The version in the text of an os-release file.
OperatingSystemVersion versionInOsRelease(std::string_view text);

} // namespace tolvane::platform
