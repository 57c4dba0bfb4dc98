#include "platform/propertylist/Utf16Text.h"

#include "platform/values/Utf8.h"

#include <iterator>
#include <utility>

namespace tolvane::platform {

constexpr char32_t replacement = 0xFFFD;
constexpr unsigned halfMask = 0xFC00;
constexpr unsigned firstHalf = 0xD800;
constexpr unsigned secondHalf = 0xDC00;

void Utf16Text::append(char16_t unit) {
    const unsigned half = unit & halfMask;
    if (half == secondHalf && first_ != 0) {
        const auto first = static_cast<unsigned>(std::exchange(first_, char16_t{0}));
        appendUtf8(text_, 0x1'0000U + ((first - firstHalf) << 10U) + (unit - secondHalf));
        return;
    }
    end();
    if (half == firstHalf) {
        first_ = unit;
    } else {
        appendUtf8(text_, half == secondHalf ? replacement : unit);
    }
}

void Utf16Text::append(std::string_view text) {
    end();
    text_ += text;
}

std::string Utf16Text::take() {
    end();
    return std::exchange(text_, {});
}

void Utf16Text::end() {
    if (std::exchange(first_, char16_t{0}) != 0) {
        appendUtf8(text_, replacement);
    }
}

constexpr unsigned firstBeyondAscii = 0x80;

/// The characters of the bytes 80 to FD.
constexpr char16_t charactersBeyondAscii[] = {
    0x00A0, 0x00C0, 0x00C1, 0x00C2, 0x00C3, 0x00C4, 0x00C5, 0x00C7, 0x00C8, 0x00C9, 0x00CA, 0x00CB, 0x00CC,
    0x00CD, 0x00CE, 0x00CF, 0x00D0, 0x00D1, 0x00D2, 0x00D3, 0x00D4, 0x00D5, 0x00D6, 0x00D9, 0x00DA, 0x00DB,
    0x00DC, 0x00DD, 0x00DE, 0x00B5, 0x00D7, 0x00F7, 0x00A9, 0x00A1, 0x00A2, 0x00A3, 0x2044, 0x00A5, 0x0192,
    0x00A7, 0x00A4, 0x2019, 0x201C, 0x00AB, 0x2039, 0x203A, 0xFB01, 0xFB02, 0x00AE, 0x2013, 0x2020, 0x2021,
    0x00B7, 0x00A6, 0x00B6, 0x2022, 0x201A, 0x201E, 0x201D, 0x00BB, 0x2026, 0x2030, 0x00AC, 0x00BF, 0x00B9,
    0x02CB, 0x00B4, 0x02C6, 0x02DC, 0x00AF, 0x02D8, 0x02D9, 0x00A8, 0x00B2, 0x02DA, 0x00B8, 0x00B3, 0x02DD,
    0x02DB, 0x02C7, 0x2014, 0x00B1, 0x00BC, 0x00BD, 0x00BE, 0x00E0, 0x00E1, 0x00E2, 0x00E3, 0x00E4, 0x00E5,
    0x00E7, 0x00E8, 0x00E9, 0x00EA, 0x00EB, 0x00EC, 0x00C6, 0x00ED, 0x00AA, 0x00EE, 0x00EF, 0x00F0, 0x00F1,
    0x0141, 0x00D8, 0x0152, 0x00BA, 0x00F2, 0x00F3, 0x00F4, 0x00F5, 0x00F6, 0x00E6, 0x00F9, 0x00FA, 0x00FB,
    0x0131, 0x00FC, 0x00FD, 0x0142, 0x00F8, 0x0153, 0x00DF, 0x00FE, 0x00FF};

std::optional<char16_t> nextStepCharacter(unsigned char byte) {
    if (byte < firstBeyondAscii) {
        return byte;
    }
    const unsigned index = byte - firstBeyondAscii;
    return index < std::size(charactersBeyondAscii) ? std::optional(charactersBeyondAscii[index])
                                                    : std::nullopt;
}

} // namespace tolvane::platform
