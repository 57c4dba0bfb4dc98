#pragma once

#include "platform/macos/appkit/AppKitCalls.h"
#include "tests/platform/macos/substitute/Substitute.h"

namespace tolvane::tests::macos {

/// What the desktop keeps: objects that it does not keep alive. Exists beside a `Substitute`, one at a time.
class DesktopSubstitute {
public:
    DesktopSubstitute();
    DesktopSubstitute(const DesktopSubstitute&) = delete;
    DesktopSubstitute& operator=(const DesktopSubstitute&) = delete;
    ~DesktopSubstitute();

    static DesktopSubstitute& current();

    bool hasPanel = true;
    CFTypeRef delegate = nullptr;
    CFTypeRef dataSource = nullptr;
    CFTypeRef provider = nullptr;
    /// What the program gave the objects that it made.
    platform::macos::PreviewItems items;
    platform::macos::FileNamesHandler serve;
};

} // namespace tolvane::tests::macos
