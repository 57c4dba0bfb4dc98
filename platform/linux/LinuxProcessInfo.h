#pragma once

#include "platform/ProcessInfo.h"

#include <string>
#include <string_view>
#include <vector>

namespace tolvane::platform {

/// The system's version as VERSION_ID of the os-release file tells it, such as 12 of "12" or 22 and 4 of
/// "22.04". Never fails: what is missing, or is no number, is 0.
class LinuxProcessInfo final : public ProcessInfo {
public:
    LinuxProcessInfo();
    /// The first of these files that can be read counts.
    explicit LinuxProcessInfo(std::vector<std::string> files);

    OperatingSystemVersion operatingSystemVersion() const override;

private:
    std::vector<std::string> files_;
};

/// The version in the text of an os-release file.
OperatingSystemVersion versionInOsRelease(std::string_view text);

} // namespace tolvane::platform
