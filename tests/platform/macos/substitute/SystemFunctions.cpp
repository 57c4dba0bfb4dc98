// The functions that ask the system, answered as the test says.
#include "platform/macos/foundation/FoundationCalls.h"
#include "tests/platform/macos/substitute/Objects.h"

#include <algorithm>
#include <cerrno>
#include <sys/xattr.h>

namespace {

using namespace tolvane::tests::macos;
using Answer = std::function<CFTypeRef()>;

std::string asText(CFTypeRef reference) {
    if (reference == nullptr) {
        return "null";
    }
    const Object& object = objectOf(reference);
    if (const auto* units = std::get_if<std::u16string>(&object.content)) {
        return {units->begin(), units->end()};
    }
    if (const auto* text = std::get_if<std::string>(&object.content)) {
        return *text;
    }
    if (const auto* bytes = std::get_if<std::vector<std::uint8_t>>(&object.content)) {
        return std::to_string(bytes->size()) + " bytes";
    }
    std::string list;
    if (const auto* elements = std::get_if<std::vector<CFTypeRef>>(&object.content)) {
        for (const CFTypeRef element : *elements) {
            list += (list.empty() ? "[" : " ") + asText(element);
        }
    }
    return list + "]";
}

/// The text or the bytes of an object.
std::string subjectOf(CFTypeRef reference) {
    const Object& object = objectOf(reference);
    if (const auto* bytes = std::get_if<std::vector<std::uint8_t>>(&object.content)) {
        return {bytes->begin(), bytes->end()};
    }
    return asText(reference);
}

/// Counts and notes a call, and makes its answer, or null and the error.
CFTypeRef answered(
    const std::string& call, const Answer& answer, CFErrorRef* error, CFTypeRef subject = nullptr) {
    Substitute& substitute = Substitute::current();
    substitute.calls.push_back(call);
    substitute.subject = subject == nullptr ? std::string() : subjectOf(subject);
    CFTypeRef result = substitute.isToFail() || !answer ? nullptr : answer();
    if (result == nullptr && error != nullptr && substitute.error) {
        *error = static_cast<CFErrorRef>(const_cast<void*>(substitute.error()));
    }
    return result;
}

ssize_t attributeAnswer(const std::string& call) {
    Substitute& substitute = Substitute::current();
    substitute.calls.push_back(call);
    if (!substitute.attributeAnswer) {
        errno = substitute.attributeAnswer.error();
        return -1;
    }
    return *substitute.attributeAnswer;
}

std::string orNull(const char* text) {
    return text == nullptr ? "null" : text;
}

} // namespace

extern "C" {

ssize_t listxattr(const char* path, char* names, std::size_t size, int options) {
    if (const auto& answer = Substitute::current().listAttributes) {
        return answer(path, names, size);
    }
    return attributeAnswer(
        "listxattr " + orNull(path) + (names == nullptr ? " null " : " buffer ") + std::to_string(size) + " "
        + std::to_string(options));
}

ssize_t getxattr(
    const char* path, const char* name, void* value, std::size_t size, std::uint32_t position, int options) {
    if (const auto& answer = Substitute::current().getAttribute) {
        return answer(path, name, value, size);
    }
    return attributeAnswer(
        "getxattr " + orNull(path) + " " + name + (value == nullptr ? " null " : " buffer ")
        + std::to_string(size) + " " + std::to_string(position) + " " + std::to_string(options));
}

CFURLRef CFURLCreateFromFileSystemRepresentation(
    CFAllocatorRef /*allocator*/, const uint8_t* buffer, CFIndex bufLen, Boolean isDirectory) {
    if (Substitute::current().isToFail()) {
        return nullptr;
    }
    const std::string path(buffer, buffer + bufLen);
    return static_cast<CFURLRef>(
        newURL("file://" + path + (isDirectory != 0 && !path.ends_with('/') ? "/" : "")));
}

CFURLRef CFURLCopyAbsoluteURL(CFURLRef relativeURL) {
    objectOf(relativeURL, Kind::url);
    return Substitute::current().isToFail() ? nullptr : static_cast<CFURLRef>(retained(relativeURL));
}

CFIndex CFURLGetBytes(CFURLRef url, uint8_t* buffer, CFIndex bufferLength) {
    const auto& text = contentOf<std::string>(url, Kind::url);
    const auto length = static_cast<CFIndex>(text.size());
    if (Substitute::current().isToFail() || (buffer != nullptr && bufferLength < length)) {
        return -1;
    }
    if (buffer != nullptr) {
        std::ranges::copy(text, buffer);
    }
    return length;
}

CFDictionaryRef CFURLCopyResourcePropertiesForKeys(CFURLRef url, CFArrayRef keys, CFErrorRef* error) {
    const std::string call = "resource values of " + asText(url) + " " + asText(keys);
    return static_cast<CFDictionaryRef>(answered(call, Substitute::current().resourceValues, error, url));
}

CFDataRef CFURLCreateBookmarkData(
    CFAllocatorRef /*allocator*/,
    CFURLRef url,
    CFURLBookmarkCreationOptions options,
    CFArrayRef resourcePropertiesToInclude,
    CFURLRef relativeToURL,
    CFErrorRef* error) {
    const std::string call = "bookmark of " + asText(url) + " " + std::to_string(options) + " "
                             + asText(resourcePropertiesToInclude) + " " + asText(relativeToURL);
    return static_cast<CFDataRef>(answered(call, Substitute::current().bookmark, error, url));
}

CFURLRef CFURLCreateByResolvingBookmarkData(
    CFAllocatorRef /*allocator*/,
    CFDataRef bookmark,
    CFURLBookmarkResolutionOptions options,
    CFURLRef relativeToURL,
    CFArrayRef resourcePropertiesToInclude,
    Boolean* isStale,
    CFErrorRef* error) {
    const std::string call = "resolve " + asText(bookmark) + " " + std::to_string(options) + " "
                             + asText(relativeToURL) + " " + asText(resourcePropertiesToInclude);
    const CFTypeRef item = answered(call, Substitute::current().resolvedItem, error, bookmark);
    *isStale = Substitute::current().isStale ? 1 : 0;
    return static_cast<CFURLRef>(item);
}

CFDataRef CFURLCreateBookmarkDataFromFile(
    CFAllocatorRef /*allocator*/, CFURLRef fileURL, CFErrorRef* errorRef) {
    return static_cast<CFDataRef>(
        answered("bookmark in " + asText(fileURL), Substitute::current().bookmark, errorRef, fileURL));
}

CFDictionaryRef CFURLCreateResourcePropertiesForKeysFromBookmarkData(
    CFAllocatorRef /*allocator*/, CFArrayRef resourcePropertiesToReturn, CFDataRef bookmark) {
    const std::string call = "properties " + asText(resourcePropertiesToReturn) + " of " + asText(bookmark);
    return static_cast<CFDictionaryRef>(answered(call, Substitute::current().bookmarkProperties, nullptr));
}

CFLocaleRef CFLocaleCopyCurrent() {
    return Substitute::current().isToFail() ? nullptr
                                            : static_cast<CFLocaleRef>(newObject(Kind::locale, Nothing()));
}

CFDateFormatterRef CFDateFormatterCreate(
    CFAllocatorRef /*allocator*/,
    CFLocaleRef locale,
    CFDateFormatterStyle dateStyle,
    CFDateFormatterStyle timeStyle) {
    objectOf(locale, Kind::locale);
    Substitute::current().calls.push_back(
        "formatter " + std::to_string(dateStyle) + " " + std::to_string(timeStyle));
    if (Substitute::current().isToFail()) {
        return nullptr;
    }
    return static_cast<CFDateFormatterRef>(const_cast<void*>(newObject(Kind::formatter, Nothing())));
}

CFStringRef CFDateFormatterCreateStringWithDate(
    CFAllocatorRef /*allocator*/, CFDateFormatterRef formatter, CFDateRef date) {
    objectOf(formatter, Kind::formatter);
    objectOf(date, Kind::date);
    return Substitute::current().isToFail()
               ? nullptr
               : static_cast<CFStringRef>(
                     newString(Substitute::current().formattedDate(CFDateGetAbsoluteTime(date)).c_str()));
}
}

namespace tolvane::platform::macos {

CFDictionaryRef copyAttributesOfItemAtPath(CFStringRef path, CFErrorRef* error) {
    return static_cast<CFDictionaryRef>(
        answered("attributes of " + asText(path), Substitute::current().fileAttributes, error, path));
}

CFStringRef copyHomeDirectory() {
    return static_cast<CFStringRef>(answered("home", Substitute::current().homeFolder, nullptr));
}

OperatingSystemVersion operatingSystemVersion() {
    return {13, 4, 1};
}

} // namespace tolvane::platform::macos
