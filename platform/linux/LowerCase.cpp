#include "platform/linux/LowerCase.h"

#include <unicode/ustring.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace tolvane::platform {

namespace {

// ICU counts in 32 bits, and the way back may need three bytes for each unit of a text that has grown.
constexpr std::size_t longestText = std::numeric_limits<std::int32_t>::max() / 12;

constexpr const char* rootLocale = "";

bool isAscii(std::string_view text) {
    return std::ranges::all_of(
        text, [](char character) { return static_cast<unsigned char>(character) < 0x80; });
}

std::int32_t lengthOf(const auto& text) {
    return static_cast<std::int32_t>(text.size());
}

std::optional<std::u16string> utf16FromUtf8(std::string_view text) {
    if (text.size() > longestText) {
        return std::nullopt;
    }
    // No character takes more units in UTF-16 than it takes bytes in UTF-8.
    std::u16string units(text.size(), u'\0');
    std::int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    const char* bytes = text.data();
    u_strFromUTF8(units.data(), lengthOf(units), &length, bytes, lengthOf(text), &status);
    if (U_FAILURE(status)) {
        return std::nullopt;
    }
    units.resize(static_cast<std::size_t>(length));
    return units;
}

std::optional<std::string> utf8FromUtf16(const std::u16string& units) {
    std::string text(units.size() * 3, '\0');
    std::int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strToUTF8(text.data(), lengthOf(text), &length, units.data(), lengthOf(units), &status);
    if (U_FAILURE(status)) {
        return std::nullopt;
    }
    text.resize(static_cast<std::size_t>(length));
    return text;
}

std::optional<std::u16string> lowerCaseUnits(const std::u16string& units) {
    std::u16string lower(units.size(), u'\0');
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t length =
        u_strToLower(lower.data(), lengthOf(lower), units.data(), lengthOf(units), rootLocale, &status);
    if (status == U_BUFFER_OVERFLOW_ERROR) {
        // A few capitals become two characters; ICU has told how much room the whole text takes.
        status = U_ZERO_ERROR;
        lower.resize(static_cast<std::size_t>(length));
        length =
            u_strToLower(lower.data(), lengthOf(lower), units.data(), lengthOf(units), rootLocale, &status);
    }
    if (U_FAILURE(status)) {
        return std::nullopt;
    }
    lower.resize(static_cast<std::size_t>(length));
    return lower;
}

} // namespace

bool equalIgnoringAsciiCase(std::string_view left, std::string_view right) {
    return std::ranges::equal(left, right, {}, asciiLowerCase, asciiLowerCase);
}

std::optional<std::string> lowerCase(std::string_view utf8) {
    if (isAscii(utf8)) {
        std::string lower(utf8);
        std::ranges::transform(lower, lower.begin(), asciiLowerCase);
        return lower;
    }
    const auto units = utf16FromUtf8(utf8);
    if (!units) {
        return std::nullopt;
    }
    const auto lower = lowerCaseUnits(*units);
    return lower ? utf8FromUtf16(*lower) : std::nullopt;
}

} // namespace tolvane::platform
