#include "platform/macos/foundation/FoundationCalls.h"

#import <Foundation/Foundation.h>

namespace tolvane::platform::macos {

CFDictionaryRef copyAttributesOfItemAtPath(CFStringRef path, CFErrorRef* error) {
    NSError* failure = nil;
    NSDictionary* const attributes =
        [[NSFileManager defaultManager] attributesOfItemAtPath:(__bridge NSString*)path error:&failure];
    if (attributes == nil) {
        *error = (__bridge_retained CFErrorRef)failure;
        return nullptr;
    }
    return (__bridge_retained CFDictionaryRef)attributes;
}

CFStringRef copyHomeDirectory() {
    return (__bridge_retained CFStringRef)NSHomeDirectory();
}

OperatingSystemVersion operatingSystemVersion() {
    const NSOperatingSystemVersion version = [[NSProcessInfo processInfo] operatingSystemVersion];
    return {
        static_cast<int>(version.majorVersion), static_cast<int>(version.minorVersion),
        static_cast<int>(version.patchVersion)};
}

} // namespace tolvane::platform::macos
