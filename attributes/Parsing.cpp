#include "attributes/Parsing.h"

#include "platform/values/HexDigits.h"
#include "platform/values/Utf8.h"

#include <algorithm>

namespace tolvane::attributes {

std::vector<std::string_view> piecesOf(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    while (true) {
        const std::size_t end = text.find(separator);
        pieces.push_back(text.substr(0, end));
        if (end == std::string_view::npos) {
            return pieces;
        }
        text.remove_prefix(end + 1);
    }
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string shortened(std::string_view text, std::size_t longest) {
    if (text.size() <= longest) {
        return std::string(text);
    }
    const auto continues = [&](std::size_t place) {
        return (static_cast<unsigned char>(text[place]) & 0xC0U) == 0x80U;
    };
    while (longest > 0 && continues(longest)) {
        --longest;
    }
    return std::string(text.substr(0, longest)) + "…";
}

std::string textOfUtf16(std::span<const std::byte> bytes, bool bigEndian) {
    std::string text;
    const auto unitAt = [&](std::size_t place) {
        const auto first = std::to_integer<char32_t>(bytes[place]);
        const auto second = std::to_integer<char32_t>(bytes[place + 1]);
        return bigEndian ? first << 8U | second : second << 8U | first;
    };
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const char32_t unit = unitAt(i);
        const bool isHigh = unit >= 0xD800 && unit < 0xDC00;
        const char32_t next = isHigh && i + 3 < bytes.size() ? unitAt(i + 2) : 0;
        if (next >= 0xDC00 && next < 0xE000) {
            platform::appendUtf8(text, 0x10000 + ((unit - 0xD800) << 10U) + (next - 0xDC00));
            i += 2;
        } else {
            platform::appendUtf8(text, unit >= 0xD800 && unit < 0xE000 ? 0xFFFD : unit);
        }
    }
    return text;
}

bool isText(std::string_view bytes) {
    return !bytes.contains('\0') && platform::isValidUtf8(bytes);
}

bool isHexText(std::string_view text) {
    return !text.empty()
           && std::ranges::all_of(text, [](char c) { return platform::valueOfHexDigit(c) >= 0; });
}

bool isUUIDText(std::string_view text) {
    constexpr std::size_t length = 36;
    if (text.size() != length) {
        return false;
    }
    for (std::size_t i = 0; i < length; ++i) {
        const bool isHyphen = i == 8 || i == 13 || i == 18 || i == 23;
        if (isHyphen ? text[i] != '-' : platform::valueOfHexDigit(text[i]) < 0) {
            return false;
        }
    }
    return true;
}

platform::Date windowsDate(std::uint64_t ticks) {
    constexpr std::uint64_t ticksPerSecond = 10'000'000;
    constexpr std::int64_t secondsTo1970 = 11'644'473'600;
    return platform::Date::fromUnixTime(
        static_cast<std::int64_t>(ticks / ticksPerSecond) - secondsTo1970,
        static_cast<std::uint32_t>(ticks % ticksPerSecond) * 100);
}

std::optional<platform::Date> dateInSecondsText(std::string_view text) {
    constexpr std::size_t fractionDigits = 9;
    const std::size_t point = text.find('.');
    const auto seconds = parsedNumber<std::int64_t>(text.substr(0, point));
    std::string fraction(point == std::string_view::npos ? "0" : text.substr(point + 1));
    // Writers that pad with blanks or not at all are seen for nanoseconds, so fewer digits count from the
    // right.
    const auto nanoseconds = parsedNumber<std::uint32_t>(fraction);
    if (!seconds || !nanoseconds || fraction.size() > fractionDigits) {
        return std::nullopt;
    }
    return platform::Date::fromUnixTime(*seconds, *nanoseconds);
}

platform::Date dateOfMicroseconds(std::uint64_t microseconds) {
    constexpr std::uint64_t perSecond = 1'000'000;
    return platform::Date::fromUnixTime(
        static_cast<std::int64_t>(microseconds / perSecond),
        static_cast<std::uint32_t>(microseconds % perSecond) * 1000);
}

std::array<std::byte, 16> guidInWrittenOrder(std::span<const std::byte> sixteenBytes) {
    std::array<std::byte, 16> written{};
    std::ranges::copy(sixteenBytes.first(written.size()), written.begin());
    std::reverse(written.begin(), written.begin() + 4);
    std::reverse(written.begin() + 4, written.begin() + 6);
    std::reverse(written.begin() + 6, written.begin() + 8);
    return written;
}

std::string permissionLetters(std::uint32_t mode) {
    std::string letters = "rwxrwxrwx";
    for (std::size_t i = 0; i < letters.size(); ++i) {
        if ((mode >> (letters.size() - 1 - i) & 1U) == 0) {
            letters[i] = '-';
        }
    }
    const auto mark = [&](std::uint32_t bit, std::size_t place, char executable, char other) {
        if ((mode & bit) != 0) {
            letters[place] = letters[place] == 'x' ? executable : other;
        }
    };
    mark(04000, 2, 's', 'S');
    mark(02000, 5, 's', 'S');
    mark(01000, 8, 't', 'T');
    return letters;
}

std::string_view kindOfMode(std::uint32_t mode) {
    switch (mode & 0170000U) {
    case 0100000:
        return "regular file";
    case 0040000:
        return "folder";
    case 0120000:
        return "symbolic link";
    case 0020000:
        return "character device";
    case 0060000:
        return "block device";
    case 0010000:
        return "FIFO";
    case 0140000:
        return "socket";
    default:
        return {};
    }
}

} // namespace tolvane::attributes
