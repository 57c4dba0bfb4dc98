#pragma once

namespace tolvane::platform {

/// The running system's version; numbers that it does not have are 0.
struct OperatingSystemVersion {
    int majorVersion = 0;
    int minorVersion = 0;
    int patchVersion = 0;

    friend bool operator==(const OperatingSystemVersion&, const OperatingSystemVersion&) = default;
};

/// What can be known of the system that runs the program.
class ProcessInfo {
public:
    virtual ~ProcessInfo() = default;

    virtual OperatingSystemVersion operatingSystemVersion() const = 0;
};

} // namespace tolvane::platform
