#include "platform/macos/values/Conversions.h"

#include "platform/values/Utf16Text.h"

#include <array>
#include <bit>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::platform::macos {

namespace {

std::size_t sizeOf(CFIndex count) {
    return count > 0 ? static_cast<std::size_t>(count) : 0;
}

template <typename Number>
std::optional<Value> numberAs(CFNumberRef number, CFNumberType type) {
    Number value{};
    return CFNumberGetValue(number, type, &value) != 0 ? std::optional<Value>(value) : std::nullopt;
}

/// In its own width. Types with the names of C's come as those of a fixed width.
std::optional<Value> numberOf(CFNumberRef number) {
    const CFNumberType type = CFNumberGetType(number);
    if (CFNumberIsFloatType(number) != 0) {
        return type == kCFNumberFloat32Type ? numberAs<float>(number, kCFNumberFloat32Type)
                                            : numberAs<double>(number, kCFNumberFloat64Type);
    }
    switch (type) {
    case kCFNumberSInt8Type:
        return numberAs<std::int8_t>(number, type);
    case kCFNumberSInt16Type:
        return numberAs<std::int16_t>(number, type);
    case kCFNumberSInt32Type:
        return numberAs<std::int32_t>(number, type);
    default:
        return numberAs<std::int64_t>(number, kCFNumberSInt64Type);
    }
}

Array arrayOf(CFArrayRef array) {
    Array values;
    const CFIndex count = CFArrayGetCount(array);
    values.reserve(sizeOf(count));
    for (CFIndex index = 0; index < count; ++index) {
        if (auto value = valueOf(CFArrayGetValueAtIndex(array, index))) {
            values.push_back(*std::move(value));
        }
    }
    return values;
}

std::optional<Value> urlValueOf(CFURLRef url) {
    auto converted = urlOf(url);
    return converted ? std::optional<Value>(*std::move(converted)) : std::nullopt;
}

template <typename Reference>
Reference as(CFTypeRef object) {
    return static_cast<Reference>(object);
}

} // namespace

std::string textOf(CFStringRef string) {
    std::vector<UniChar> units(sizeOf(CFStringGetLength(string)));
    CFStringGetCharacters(string, {0, static_cast<CFIndex>(units.size())}, units.data());
    Utf16Text text;
    for (const UniChar unit : units) {
        text.append(static_cast<char16_t>(unit));
    }
    return text.take();
}

Data bytesOf(CFDataRef data) {
    const auto bytes = std::as_bytes(std::span(CFDataGetBytePtr(data), sizeOf(CFDataGetLength(data))));
    return {bytes.begin(), bytes.end()};
}

Owned<CFDataRef> dataOf(std::span<const std::byte> bytes) {
    std::vector<std::uint8_t> copy;
    copy.reserve(bytes.size());
    for (const std::byte byte : bytes) {
        copy.push_back(std::to_integer<std::uint8_t>(byte));
    }
    return Owned(CFDataCreate(nullptr, copy.data(), static_cast<CFIndex>(copy.size())));
}

std::optional<URL> urlOf(CFURLRef url) {
    const Owned<CFURLRef> absolute(CFURLCopyAbsoluteURL(url));
    if (!absolute) {
        return std::nullopt;
    }
    std::vector<std::uint8_t> bytes(sizeOf(CFURLGetBytes(absolute.get(), nullptr, 0)));
    if (bytes.empty()
        || CFURLGetBytes(absolute.get(), bytes.data(), static_cast<CFIndex>(bytes.size())) < 0) {
        return std::nullopt;
    }
    return URL::fromText(std::string(bytes.begin(), bytes.end()));
}

Owned<CFURLRef> fileURLOf(const URL& url) {
    const auto path = url.fileSystemRepresentation();
    if (!path) {
        return Owned<CFURLRef>();
    }
    const std::vector<std::uint8_t> bytes(path->begin(), path->end());
    return Owned(CFURLCreateFromFileSystemRepresentation(
        nullptr, bytes.data(), static_cast<CFIndex>(bytes.size()), path->ends_with('/') ? 1 : 0));
}

std::optional<Value> valueOf(CFTypeRef object) {
    if (object == nullptr) {
        return std::nullopt;
    }
    const CFTypeID kind = CFGetTypeID(object);
    if (kind == CFStringGetTypeID()) {
        return textOf(as<CFStringRef>(object));
    }
    if (kind == CFBooleanGetTypeID()) {
        return CFBooleanGetValue(as<CFBooleanRef>(object)) != 0;
    }
    if (kind == CFNumberGetTypeID()) {
        return numberOf(as<CFNumberRef>(object));
    }
    if (kind == CFDateGetTypeID()) {
        return Date(CFDateGetAbsoluteTime(as<CFDateRef>(object)));
    }
    if (kind == CFDataGetTypeID()) {
        return bytesOf(as<CFDataRef>(object));
    }
    if (kind == CFArrayGetTypeID()) {
        return arrayOf(as<CFArrayRef>(object));
    }
    if (kind == CFDictionaryGetTypeID()) {
        return dictionaryOf(as<CFDictionaryRef>(object));
    }
    if (kind == CFURLGetTypeID()) {
        return urlValueOf(as<CFURLRef>(object));
    }
    if (kind == CFUUIDGetTypeID()) {
        return UUID{std::bit_cast<std::array<std::byte, 16>>(CFUUIDGetUUIDBytes(as<CFUUIDRef>(object)))};
    }
    return kind == CFNullGetTypeID() ? std::optional<Value>(Null{}) : std::nullopt;
}

Dictionary dictionaryOf(CFDictionaryRef dictionary) {
    const std::size_t count = sizeOf(CFDictionaryGetCount(dictionary));
    std::vector<const void*> keys(count);
    std::vector<const void*> values(count);
    CFDictionaryGetKeysAndValues(dictionary, keys.data(), values.data());
    std::vector<Dictionary::Entry> entries;
    entries.reserve(count);
    for (std::size_t index = 0; index < count; ++index) {
        if (CFGetTypeID(keys[index]) != CFStringGetTypeID()) {
            continue;
        }
        if (auto value = valueOf(values[index])) {
            entries.push_back({textOf(as<CFStringRef>(keys[index])), *std::move(value)});
        }
    }
    return Dictionary::fromEntries(std::move(entries));
}

Error errorOf(const Owned<CFErrorRef>& error) {
    if (!error) {
        return cocoaError(NSFileReadUnknownError, "The system gave no reason.");
    }
    Error result{textOf(CFErrorGetDomain(error.get())), CFErrorGetCode(error.get()), {}};
    if (const Owned<CFStringRef> description(CFErrorCopyDescription(error.get())); description) {
        result.userInfo.set(NSLocalizedDescriptionKey, textOf(description.get()));
    }
    return result;
}

} // namespace tolvane::platform::macos
