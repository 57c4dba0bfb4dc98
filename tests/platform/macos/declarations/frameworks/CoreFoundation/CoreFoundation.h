// The part of CoreFoundation that platform/macos/ uses, declared for the checks on Linux. The declarations
// are our own; scripts/check-macos-declarations compares them with others. On a Mac the system's own header
// is used instead.
#pragma once

#include <stddef.h>
#include <stdint.h>

#if defined(__cplusplus)
extern "C" {
#endif

typedef unsigned char Boolean;
typedef uint16_t UniChar;
typedef signed long CFIndex;
typedef unsigned long CFTypeID;
typedef unsigned long CFOptionFlags;
typedef double CFTimeInterval;
typedef CFTimeInterval CFAbsoluteTime;
typedef uint32_t CFStringEncoding;
typedef CFIndex CFNumberType;
typedef CFIndex CFDateFormatterStyle;
typedef CFOptionFlags CFURLBookmarkCreationOptions;
typedef CFOptionFlags CFURLBookmarkResolutionOptions;

typedef const void* CFTypeRef;
typedef const struct __CFAllocator* CFAllocatorRef;
typedef const struct __CFArray* CFArrayRef;
typedef const struct __CFBoolean* CFBooleanRef;
typedef const struct __CFData* CFDataRef;
typedef const struct __CFDate* CFDateRef;
typedef const struct __CFDictionary* CFDictionaryRef;
typedef const struct __CFLocale* CFLocaleRef;
typedef const struct __CFNumber* CFNumberRef;
typedef const struct __CFString* CFStringRef;
typedef const struct __CFURL* CFURLRef;
typedef const struct __CFUUID* CFUUIDRef;
typedef struct __CFDateFormatter* CFDateFormatterRef;
typedef struct __CFError* CFErrorRef;

typedef struct {
    CFIndex location;
    CFIndex length;
} CFRange;

typedef struct {
    uint8_t byte0, byte1, byte2, byte3, byte4, byte5, byte6, byte7;
    uint8_t byte8, byte9, byte10, byte11, byte12, byte13, byte14, byte15;
} CFUUIDBytes;

typedef struct {
    CFIndex version;
    const void* (*retain)(CFAllocatorRef allocator, const void* value);
    void (*release)(CFAllocatorRef allocator, const void* value);
    CFStringRef (*copyDescription)(const void* value);
    Boolean (*equal)(const void* value1, const void* value2);
} CFArrayCallBacks;

enum : CFNumberType {
    kCFNumberSInt8Type = 1,
    kCFNumberSInt16Type = 2,
    kCFNumberSInt32Type = 3,
    kCFNumberSInt64Type = 4,
    kCFNumberFloat32Type = 5,
    kCFNumberFloat64Type = 6
};
enum : CFDateFormatterStyle { kCFDateFormatterFullStyle = 4 };

extern const CFArrayCallBacks kCFTypeArrayCallBacks;
extern const CFStringRef kCFURLFileSizeKey;
extern const CFStringRef kCFURLTotalFileSizeKey;
extern const CFStringRef kCFURLTypeIdentifierKey;
extern const CFStringRef kCFURLFileResourceIdentifierKey;
extern const CFStringRef kCFURLCreationDateKey;
extern const CFStringRef kCFURLAttributeModificationDateKey;

void CFRelease(CFTypeRef cf);
CFTypeID CFGetTypeID(CFTypeRef cf);

CFTypeID CFArrayGetTypeID(void);
CFArrayRef CFArrayCreate(
    CFAllocatorRef allocator, const void** values, CFIndex numValues, const CFArrayCallBacks* callBacks);
CFIndex CFArrayGetCount(CFArrayRef theArray);
const void* CFArrayGetValueAtIndex(CFArrayRef theArray, CFIndex idx);

CFTypeID CFBooleanGetTypeID(void);
Boolean CFBooleanGetValue(CFBooleanRef boolean);

CFTypeID CFDataGetTypeID(void);
CFDataRef CFDataCreate(CFAllocatorRef allocator, const uint8_t* bytes, CFIndex length);
CFIndex CFDataGetLength(CFDataRef theData);
const uint8_t* CFDataGetBytePtr(CFDataRef theData);

CFTypeID CFDateGetTypeID(void);
CFDateRef CFDateCreate(CFAllocatorRef allocator, CFAbsoluteTime at);
CFAbsoluteTime CFDateGetAbsoluteTime(CFDateRef theDate);

CFDateFormatterRef CFDateFormatterCreate(
    CFAllocatorRef allocator,
    CFLocaleRef locale,
    CFDateFormatterStyle dateStyle,
    CFDateFormatterStyle timeStyle);
CFStringRef CFDateFormatterCreateStringWithDate(
    CFAllocatorRef allocator, CFDateFormatterRef formatter, CFDateRef date);

CFTypeID CFDictionaryGetTypeID(void);
CFIndex CFDictionaryGetCount(CFDictionaryRef theDict);
const void* CFDictionaryGetValue(CFDictionaryRef theDict, const void* key);
void CFDictionaryGetKeysAndValues(CFDictionaryRef theDict, const void** keys, const void** values);

CFStringRef CFErrorGetDomain(CFErrorRef err);
CFIndex CFErrorGetCode(CFErrorRef err);
CFStringRef CFErrorCopyDescription(CFErrorRef err);

CFLocaleRef CFLocaleCopyCurrent(void);

CFTypeID CFNullGetTypeID(void);

CFTypeID CFNumberGetTypeID(void);
CFNumberType CFNumberGetType(CFNumberRef number);
Boolean CFNumberIsFloatType(CFNumberRef number);
Boolean CFNumberGetValue(CFNumberRef number, CFNumberType theType, void* valuePtr);

CFTypeID CFStringGetTypeID(void);
CFStringRef CFStringCreateWithFileSystemRepresentation(CFAllocatorRef alloc, const char* buffer);
CFStringRef CFStringCreateWithCString(CFAllocatorRef alloc, const char* cStr, CFStringEncoding encoding);
CFIndex CFStringGetLength(CFStringRef theString);
void CFStringGetCharacters(CFStringRef theString, CFRange range, UniChar* buffer);

CFTypeID CFURLGetTypeID(void);
CFURLRef CFURLCreateFromFileSystemRepresentation(
    CFAllocatorRef allocator, const uint8_t* buffer, CFIndex bufLen, Boolean isDirectory);
CFURLRef CFURLCopyAbsoluteURL(CFURLRef relativeURL);
CFIndex CFURLGetBytes(CFURLRef url, uint8_t* buffer, CFIndex bufferLength);
CFDictionaryRef CFURLCopyResourcePropertiesForKeys(CFURLRef url, CFArrayRef keys, CFErrorRef* error);
CFDataRef CFURLCreateBookmarkData(
    CFAllocatorRef allocator,
    CFURLRef url,
    CFURLBookmarkCreationOptions options,
    CFArrayRef resourcePropertiesToInclude,
    CFURLRef relativeToURL,
    CFErrorRef* error);
CFURLRef CFURLCreateByResolvingBookmarkData(
    CFAllocatorRef allocator,
    CFDataRef bookmark,
    CFURLBookmarkResolutionOptions options,
    CFURLRef relativeToURL,
    CFArrayRef resourcePropertiesToInclude,
    Boolean* isStale,
    CFErrorRef* error);
CFDataRef CFURLCreateBookmarkDataFromFile(CFAllocatorRef allocator, CFURLRef fileURL, CFErrorRef* errorRef);
CFDictionaryRef CFURLCreateResourcePropertiesForKeysFromBookmarkData(
    CFAllocatorRef allocator, CFArrayRef resourcePropertiesToReturn, CFDataRef bookmark);

CFTypeID CFUUIDGetTypeID(void);
CFUUIDBytes CFUUIDGetUUIDBytes(CFUUIDRef uuid);

enum : CFStringEncoding { kCFStringEncodingUTF8 = 0x08000100 };

#if defined(__cplusplus)
}
#endif
