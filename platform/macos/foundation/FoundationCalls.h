#pragma once

#include "platform/services/ProcessInfo.h"

#include <CoreFoundation/CoreFoundation.h>

/// What only Foundation answers. The references that these functions return, and the error, are the caller's.
namespace tolvane::platform::macos {

/// The file manager's attributes of the item at the path; null and an error if there are none.
CFDictionaryRef copyAttributesOfItemAtPath(CFStringRef path, CFErrorRef* error);

CFStringRef copyHomeDirectory();

OperatingSystemVersion operatingSystemVersion();

} // namespace tolvane::platform::macos
