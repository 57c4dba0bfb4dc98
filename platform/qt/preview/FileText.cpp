#include "platform/qt/preview/FileText.h"

#include "platform/values/HiddenCharacters.h"
#include "platform/values/Utf8.h"

#include <QChar>

#include <algorithm>
#include <vector>

namespace tolvane::platform {

namespace {

constexpr char32_t byteOrderMark = 0xFEFF;

std::string_view charactersOf(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

DecodedCharacter decodeFirstUnits(std::string_view bytes, TextEncoding encoding) {
    constexpr std::size_t unitLength = 2;
    const auto unitAt = [&](std::size_t offset) -> char32_t {
        const char32_t first = static_cast<unsigned char>(bytes[offset]);
        const char32_t second = static_cast<unsigned char>(bytes[offset + 1]);
        return encoding == TextEncoding::utf16BigEndian ? (first << 8U) | second : (second << 8U) | first;
    };
    constexpr char32_t replacement = 0xFFFD;
    if (bytes.size() < unitLength) {
        return {replacement, bytes.size(), false};
    }
    const char32_t unit = unitAt(0);
    if (!QChar::isSurrogate(unit)) {
        return {unit, unitLength, true};
    }
    if (QChar::isHighSurrogate(unit) && bytes.size() >= 2 * unitLength
        && QChar::isLowSurrogate(unitAt(unitLength))) {
        return {
            QChar::surrogateToUcs4(static_cast<char16_t>(unit), static_cast<char16_t>(unitAt(unitLength))),
            2 * unitLength, true};
    }
    return {replacement, unitLength, false};
}

DecodedCharacter decodeFirst(std::string_view bytes, TextEncoding encoding) {
    return encoding == TextEncoding::utf8 ? decodeFirstCharacter(bytes) : decodeFirstUnits(bytes, encoding);
}

} // namespace

std::optional<TextEncoding> textEncodingOf(std::span<const std::byte> front) {
    std::string_view bytes = charactersOf(front);
    if (bytes.starts_with("\xFF\xFE")) {
        return TextEncoding::utf16LittleEndian;
    }
    if (bytes.starts_with("\xFE\xFF")) {
        return TextEncoding::utf16BigEndian;
    }
    std::size_t invalid = 0;
    std::size_t controls = 0;
    const std::size_t length = bytes.size();
    while (!bytes.empty()) {
        const auto character = decodeFirstCharacter(bytes);
        if (character.codePoint == 0) {
            return std::nullopt;
        }
        const bool isUsual = character.codePoint == U'\n' || character.codePoint == U'\r'
                             || character.codePoint == U'\t' || character.codePoint == U'\f'
                             || character.codePoint == U'\x1B';
        controls += character.codePoint < 0x20 && !isUsual ? 1 : 0;
        invalid += character.valid ? 0 : 1;
        bytes.remove_prefix(character.length);
    }
    // Text in an older single-byte encoding has a few invalid bytes, other data has many.
    constexpr std::size_t invalidShare = 4;
    constexpr std::size_t controlShare = 50;
    if (invalid > length / invalidShare || controls > length / controlShare) {
        return std::nullopt;
    }
    return TextEncoding::utf8;
}

FileAnswer<FileText> readFileText(const OpenedFile& file, TextEncoding encoding) {
    const auto size = file.size();
    if (!size) {
        return std::unexpected(size.error());
    }
    std::vector<std::byte> bytes(longestFileText);
    const auto length = file.read(0, bytes);
    if (!length) {
        return std::unexpected(length.error());
    }
    FileText read;
    // The file may have become shorter or longer since, and some files have no size at all.
    read.fileSize = *length < bytes.size() ? *length : std::max<std::uint64_t>(*size, *length);
    const bool goesOn = read.fileSize > *length;
    std::string_view rest = charactersOf(std::span(bytes).first(*length));
    read.text.reserve(rest.size());
    std::size_t hidden = 0;
    while (!rest.empty() && hidden < mostHiddenCharacters) {
        const auto character = decodeFirst(rest, encoding);
        const bool isCut = goesOn && !character.valid && character.length == rest.size();
        if (isCut) {
            break;
        }
        const bool isFront = rest.size() == *length;
        rest.remove_prefix(character.length);
        if (character.codePoint == U'\r') {
            const auto next = decodeFirst(rest, encoding);
            rest.remove_prefix(next.codePoint == U'\n' ? next.length : 0);
            read.text += '\n';
        } else if (!isFront || character.codePoint != byteOrderMark) {
            appendUtf8(read.text, character.codePoint);
            const bool isPlain = character.codePoint == U'\n' || character.codePoint == U'\t';
            hidden += isHiddenCharacter(character.codePoint) && !isPlain ? 1U : 0U;
        }
    }
    read.length = *length - rest.size();
    return read;
}

} // namespace tolvane::platform
