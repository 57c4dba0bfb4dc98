#include "platform/values/Base64.h"

#include <algorithm>
#include <cstring>

namespace tolvane::platform {

namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::size_t groupLength = 4;
constexpr std::uint8_t noDigit = 64;

constexpr std::array<std::uint8_t, 256> digitValues = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(noDigit);
    for (std::uint8_t digit = 0; digit < noDigit; ++digit) {
        values.at(static_cast<unsigned char>(alphabet[digit])) = digit;
    }
    return values;
}();

std::uint8_t digitValue(char c) {
    return digitValues.at(static_cast<unsigned char>(c));
}

std::uint32_t bitsOf(std::byte first, std::byte second, std::byte third) {
    return std::to_integer<std::uint32_t>(first) << 16U | std::to_integer<std::uint32_t>(second) << 8U
           | std::to_integer<std::uint32_t>(third);
}

using DigitPair = std::array<char, 2>;

/// The digits of each twelve bits.
constexpr std::array<DigitPair, 4096> digitPairs = [] {
    std::array<DigitPair, 4096> pairs{};
    for (std::size_t bits = 0; bits < pairs.size(); ++bits) {
        pairs.at(bits) = {alphabet[bits >> 6U], alphabet[bits & 63U]};
    }
    return pairs;
}();

/// Writes the digits of three bytes.
void writeGroup(char* place, std::uint32_t bits) {
    const DigitPair first = digitPairs[bits >> 12U];
    const DigitPair second = digitPairs[bits & 4095U];
    std::memcpy(place, first.data(), first.size());
    std::memcpy(place + first.size(), second.data(), second.size());
}

} // namespace

std::string base64EncodedString(std::span<const std::byte> bytes) {
    std::string text((bytes.size() + 2) / 3 * groupLength, '=');
    char* place = text.data();
    for (; bytes.size() >= 3; bytes = bytes.subspan(3)) {
        writeGroup(place, bitsOf(bytes[0], bytes[1], bytes[2]));
        place += groupLength;
    }
    if (!bytes.empty()) {
        const bool areTwo = bytes.size() > 1;
        std::array<char, groupLength> group{};
        writeGroup(group.data(), bitsOf(bytes[0], areTwo ? bytes[1] : std::byte{0}, std::byte{0}));
        std::copy_n(group.data(), areTwo ? 3 : 2, place);
    }
    return text;
}

std::optional<Base64Fault> base64Fault(std::string_view text) {
    const auto firstOther = std::ranges::find(text, noDigit, digitValue);
    const auto digits = static_cast<std::size_t>(firstOther - text.begin());
    const std::string_view rest = text.substr(digits);
    if (!rest.empty()) {
        const std::size_t due = (groupLength - digits % groupLength) % groupLength;
        if (rest.front() != '=') {
            return Base64Fault{digits, "a letter, a digit, '+', '/' or the padding '='"};
        }
        if (due != 1 && due != 2) {
            return Base64Fault{digits, "a letter, a digit, '+' or '/'"};
        }
        const std::size_t padding = std::min(rest.find_first_not_of('='), rest.size());
        if (padding < due) {
            return Base64Fault{digits + padding, "another '=' of the padding"};
        }
        if (rest.size() > due) {
            return Base64Fault{digits + due, "the end of the text after the padding"};
        }
    } else if (digits % groupLength != 0) {
        return Base64Fault{digits, "another character: they come in groups of four"};
    }
    const std::size_t unusedBits = 2 * rest.size();
    if (unusedBits != 0 && (digitValue(text[digits - 1]) & ((1U << unusedBits) - 1U)) != 0) {
        return Base64Fault{digits - 1, "a character that leaves no bits over"};
    }
    return std::nullopt;
}

std::optional<Data> base64DecodedData(std::string_view text) {
    if (base64Fault(text)) {
        return std::nullopt;
    }
    Data bytes;
    bytes.reserve(text.size() / groupLength * 3);
    for (; !text.empty(); text.remove_prefix(groupLength)) {
        const std::string_view group = text.substr(0, groupLength);
        const std::size_t digits = std::min(group.find('='), groupLength);
        std::uint32_t bits = 0;
        for (const char c : group.substr(0, digits)) {
            bits = (bits << 6U) | digitValue(c);
        }
        bits <<= 6U * (groupLength - digits);
        for (std::size_t i = 0; i + 1 < digits; ++i) {
            bytes.push_back(static_cast<std::byte>(bits >> (16U - 8U * i)));
        }
    }
    return bytes;
}

} // namespace tolvane::platform
