#include "platform/values/MacRoman.h"

#include "platform/values/Utf8.h"

#include <string_view>

namespace tolvane::platform {

namespace {

/// The characters from 0x80 on, with the euro at 0xDB. 0xF0 is a private-use character.
constexpr std::u32string_view upperHalf =
    U"\u00C4\u00C5\u00C7\u00C9\u00D1\u00D6\u00DC\u00E1\u00E0\u00E2\u00E4\u00E3\u00E5\u00E7\u00E9\u00E8"
    U"\u00EA\u00EB\u00ED\u00EC\u00EE\u00EF\u00F1\u00F3\u00F2\u00F4\u00F6\u00F5\u00FA\u00F9\u00FB\u00FC"
    U"\u2020\u00B0\u00A2\u00A3\u00A7\u2022\u00B6\u00DF\u00AE\u00A9\u2122\u00B4\u00A8\u2260\u00C6\u00D8"
    U"\u221E\u00B1\u2264\u2265\u00A5\u00B5\u2202\u2211\u220F\u03C0\u222B\u00AA\u00BA\u03A9\u00E6\u00F8"
    U"\u00BF\u00A1\u00AC\u221A\u0192\u2248\u2206\u00AB\u00BB\u2026\u00A0\u00C0\u00C3\u00D5\u0152\u0153"
    U"\u2013\u2014\u201C\u201D\u2018\u2019\u00F7\u25CA\u00FF\u0178\u2044\u20AC\u2039\u203A\uFB01\uFB02"
    U"\u2021\u00B7\u201A\u201E\u2030\u00C2\u00CA\u00C1\u00CB\u00C8\u00CD\u00CE\u00CF\u00CC\u00D3\u00D4"
    U"\uF8FF\u00D2\u00DA\u00DB\u00D9\u0131\u02C6\u02DC\u00AF\u02D8\u02D9\u02DA\u00B8\u02DD\u02DB\u02C7";

static_assert(upperHalf.size() == 128);

} // namespace

std::string textOfMacRoman(std::span<const std::byte> bytes) {
    std::string text;
    for (const std::byte byte : bytes) {
        const auto code = std::to_integer<std::size_t>(byte);
        appendUtf8(text, code < 0x80 ? static_cast<char32_t>(code) : upperHalf[code - 0x80]);
    }
    return text;
}

} // namespace tolvane::platform
