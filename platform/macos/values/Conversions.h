#pragma once

#include "platform/macos/values/Owned.h"
#include "platform/values/Error.h"
#include "platform/values/URL.h"
#include "platform/values/Value.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <CoreFoundation/CoreFoundation.h>

/// Between the system's objects and the program's values. None of these functions takes over a reference.
namespace tolvane::platform::macos {

/// The text in UTF-8, with U+FFFD for unpaired surrogates.
std::string textOf(CFStringRef string);

Data bytesOf(CFDataRef data);

/// Null if there is no memory for it.
Owned<CFDataRef> dataOf(std::span<const std::byte> bytes);

/// Nothing if the URL has no bytes or they are not those of an absolute URL.
std::optional<URL> urlOf(CFURLRef url);

/// Null unless the URL has a path that the system takes. A path that ends in "/" is a folder's.
Owned<CFURLRef> fileURLOf(const URL& url);

/// The value of an object of any kind that `Value` knows, null objects included; nothing for others and for
/// integers outside 64 bits. Elements of arrays and dictionaries that have no value are left out, as are keys
/// that are not text.
std::optional<Value> valueOf(CFTypeRef object);
Dictionary dictionaryOf(CFDictionaryRef dictionary);

/// The domain, the code, and the system's description. The error of a call that gave no reason is one of its
/// own.
Error errorOf(const Owned<CFErrorRef>& error);

} // namespace tolvane::platform::macos
