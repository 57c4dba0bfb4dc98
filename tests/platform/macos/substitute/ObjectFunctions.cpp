// CoreFoundation's functions about objects themselves.
#include "platform/values/Utf8.h"
#include "tests/platform/macos/substitute/Objects.h"

#include <algorithm>
#include <cstring>

namespace {

using namespace tolvane::tests::macos;

CFTypeID idOf(Kind kind) {
    return static_cast<CFTypeID>(kind);
}

template <typename Stored>
Boolean store(const Number& number, void* place) {
    const Stored value = std::visit([](auto plain) { return static_cast<Stored>(plain); }, number.value);
    std::memcpy(place, &value, sizeof value);
    return number.isTooLarge ? 0 : 1;
}

} // namespace

extern "C" {

void CFRelease(CFTypeRef cf) {
    release(cf);
}

CFTypeID CFGetTypeID(CFTypeRef cf) {
    return idOf(objectOf(cf).kind);
}

CFTypeID CFArrayGetTypeID() {
    return idOf(Kind::array);
}
CFTypeID CFBooleanGetTypeID() {
    return idOf(Kind::boolean);
}
CFTypeID CFDataGetTypeID() {
    return idOf(Kind::data);
}
CFTypeID CFDateGetTypeID() {
    return idOf(Kind::date);
}
CFTypeID CFDictionaryGetTypeID() {
    return idOf(Kind::dictionary);
}
CFTypeID CFNullGetTypeID() {
    return idOf(Kind::null);
}
CFTypeID CFNumberGetTypeID() {
    return idOf(Kind::number);
}
CFTypeID CFStringGetTypeID() {
    return idOf(Kind::string);
}
CFTypeID CFURLGetTypeID() {
    return idOf(Kind::url);
}
CFTypeID CFUUIDGetTypeID() {
    return idOf(Kind::uuid);
}

CFArrayRef CFArrayCreate(
    CFAllocatorRef /*allocator*/, const void** values, CFIndex numValues, const CFArrayCallBacks* callBacks) {
    if (callBacks != &kCFTypeArrayCallBacks || Substitute::current().isToFail()) {
        return nullptr;
    }
    std::vector<CFTypeRef> elements(values, values + numValues);
    for (const CFTypeRef element : elements) {
        retained(element);
    }
    return static_cast<CFArrayRef>(newArray(std::move(elements)));
}

CFIndex CFArrayGetCount(CFArrayRef theArray) {
    return static_cast<CFIndex>(contentOf<std::vector<CFTypeRef>>(theArray, Kind::array).size());
}

const void* CFArrayGetValueAtIndex(CFArrayRef theArray, CFIndex idx) {
    return contentOf<std::vector<CFTypeRef>>(theArray, Kind::array).at(static_cast<std::size_t>(idx));
}

Boolean CFBooleanGetValue(CFBooleanRef boolean) {
    return contentOf<bool>(boolean, Kind::boolean) ? 1 : 0;
}

CFDataRef CFDataCreate(CFAllocatorRef /*allocator*/, const uint8_t* bytes, CFIndex length) {
    if (Substitute::current().isToFail()) {
        return nullptr;
    }
    return static_cast<CFDataRef>(newData({bytes, bytes + length}));
}

CFIndex CFDataGetLength(CFDataRef theData) {
    return static_cast<CFIndex>(contentOf<std::vector<std::uint8_t>>(theData, Kind::data).size());
}

const uint8_t* CFDataGetBytePtr(CFDataRef theData) {
    return contentOf<std::vector<std::uint8_t>>(theData, Kind::data).data();
}

CFDateRef CFDateCreate(CFAllocatorRef /*allocator*/, CFAbsoluteTime at) {
    return Substitute::current().isToFail() ? nullptr : static_cast<CFDateRef>(newDate(at));
}

CFAbsoluteTime CFDateGetAbsoluteTime(CFDateRef theDate) {
    return contentOf<double>(theDate, Kind::date);
}

CFIndex CFDictionaryGetCount(CFDictionaryRef theDict) {
    return static_cast<CFIndex>(
        contentOf<std::vector<std::pair<CFTypeRef, CFTypeRef>>>(theDict, Kind::dictionary).size());
}

const void* CFDictionaryGetValue(CFDictionaryRef theDict, const void* key) {
    const auto& wanted = contentOf<std::u16string>(key, Kind::string);
    for (const auto& [name, value] :
         contentOf<std::vector<std::pair<CFTypeRef, CFTypeRef>>>(theDict, Kind::dictionary)) {
        if (contentOf<std::u16string>(name, Kind::string) == wanted) {
            return value;
        }
    }
    return nullptr;
}

void CFDictionaryGetKeysAndValues(CFDictionaryRef theDict, const void** keys, const void** values) {
    for (const auto& [key, value] :
         contentOf<std::vector<std::pair<CFTypeRef, CFTypeRef>>>(theDict, Kind::dictionary)) {
        *keys++ = key;
        *values++ = value;
    }
}

CFStringRef CFErrorGetDomain(CFErrorRef err) {
    return static_cast<CFStringRef>(contentOf<ErrorFacts>(err, Kind::error).domain);
}

CFIndex CFErrorGetCode(CFErrorRef err) {
    return contentOf<ErrorFacts>(err, Kind::error).code;
}

CFStringRef CFErrorCopyDescription(CFErrorRef err) {
    const auto& facts = contentOf<ErrorFacts>(err, Kind::error);
    return Substitute::current().isToFail() ? nullptr
                                            : static_cast<CFStringRef>(newString(facts.description.c_str()));
}

CFNumberType CFNumberGetType(CFNumberRef number) {
    return contentOf<Number>(number, Kind::number).type;
}

Boolean CFNumberIsFloatType(CFNumberRef number) {
    return std::holds_alternative<double>(contentOf<Number>(number, Kind::number).value) ? 1 : 0;
}

Boolean CFNumberGetValue(CFNumberRef number, CFNumberType theType, void* valuePtr) {
    const auto& content = contentOf<Number>(number, Kind::number);
    switch (theType) {
    case kCFNumberSInt8Type:
        return store<std::int8_t>(content, valuePtr);
    case kCFNumberSInt16Type:
        return store<std::int16_t>(content, valuePtr);
    case kCFNumberSInt32Type:
        return store<std::int32_t>(content, valuePtr);
    case kCFNumberSInt64Type:
        return store<std::int64_t>(content, valuePtr);
    case kCFNumberFloat32Type:
        return store<float>(content, valuePtr);
    case kCFNumberFloat64Type:
        return store<double>(content, valuePtr);
    default:
        return 0;
    }
}

CFStringRef CFStringCreateWithFileSystemRepresentation(CFAllocatorRef /*alloc*/, const char* buffer) {
    return Substitute::current().isToFail() ? nullptr : static_cast<CFStringRef>(newString(buffer));
}

CFStringRef CFStringCreateWithCString(CFAllocatorRef /*alloc*/, const char* cStr, CFStringEncoding encoding) {
    if (encoding != kCFStringEncodingUTF8 || Substitute::current().isToFail()
        || !tolvane::platform::isValidUtf8(cStr)) {
        return nullptr;
    }
    return static_cast<CFStringRef>(newString(cStr));
}

CFIndex CFStringGetLength(CFStringRef theString) {
    return static_cast<CFIndex>(contentOf<std::u16string>(theString, Kind::string).size());
}

void CFStringGetCharacters(CFStringRef theString, CFRange range, UniChar* buffer) {
    const auto& text = contentOf<std::u16string>(theString, Kind::string);
    std::ranges::copy(
        text.substr(static_cast<std::size_t>(range.location), static_cast<std::size_t>(range.length)),
        buffer);
}

CFUUIDBytes CFUUIDGetUUIDBytes(CFUUIDRef uuid) {
    return contentOf<CFUUIDBytes>(uuid, Kind::uuid);
}
}
