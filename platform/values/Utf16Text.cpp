#include "platform/values/Utf16Text.h"

#include "platform/values/ByteCursor.h"
#include "platform/values/Utf8.h"

#include <utility>

namespace tolvane::platform {

namespace {

constexpr char32_t replacement = 0xFFFD;
constexpr unsigned halfMask = 0xFC00;
constexpr unsigned firstHalf = 0xD800;
constexpr unsigned secondHalf = 0xDC00;

} // namespace

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

std::string textOfBigEndianUtf16(std::span<const std::byte> bytes) {
    ByteCursor cursor(bytes);
    Utf16Text text;
    while (cursor.remaining() > 1) {
        text.append(static_cast<char16_t>(cursor.u16be()));
    }
    return text.take();
}

} // namespace tolvane::platform
