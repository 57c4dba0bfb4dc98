#pragma once

namespace tolvane::platform {

/// The version of the operating system; missing numbers are 0.
struct OperatingSystemVersion {
    int majorVersion = 0;
    int minorVersion = 0;
    int patchVersion = 0;

    friend bool operator==(const OperatingSystemVersion&, const OperatingSystemVersion&) = default;
};

/// Facts about the running system.
class ProcessInfo {
public:
    virtual ~ProcessInfo() = default;

    virtual OperatingSystemVersion operatingSystemVersion() const = 0;
};

} // namespace tolvane::platform
