#include "platform/qt/preview/TextBlock.h"

#include "platform/HiddenCharacters.h"
#include "platform/Utf8.h"
#include "platform/qt/text/VisibleText.h"

#include <algorithm>
#include <string_view>
#include <utility>

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

/// Cuts bytes into lines, each when its end is reached.
class LineCutter {
public:
    LineCutter(TextEncoding encoding, std::uint64_t offset) : encoding_(encoding), lineOffset_(offset) {}

    /// Takes all bytes. Where the file goes on behind them, the last line is left out, for it may go on too.
    std::vector<TextLine> linesOf(std::string_view bytes, bool isAll) {
        const std::uint64_t begin = lineOffset_;
        std::string_view rest = bytes;
        while (!rest.empty()) {
            const auto character = decodeFirst(rest, encoding_);
            const std::uint64_t offset = begin + (bytes.size() - rest.size());
            rest.remove_prefix(character.length);
            if (character.codePoint == U'\n' || character.codePoint == U'\r') {
                if (character.codePoint == U'\r' && decodeFirst(rest, encoding_).codePoint == U'\n') {
                    rest.remove_prefix(decodeFirst(rest, encoding_).length);
                }
                endLine(begin + (bytes.size() - rest.size()));
                endsWithLineEnd_ = true;
                continue;
            }
            if (offset + character.length - lineOffset_ > longestTextLine) {
                endLine(offset);
            }
            endsWithLineEnd_ = false;
            append(character.codePoint, offset);
        }
        if (isAll && (!endsWithLineEnd_ || lines_.empty())) {
            lines_.push_back({lineOffset_, std::move(text_)});
        }
        return std::move(lines_);
    }

private:
    void endLine(std::uint64_t nextOffset) {
        lines_.push_back({lineOffset_, std::move(text_)});
        text_.clear();
        lineOffset_ = nextOffset;
    }

    void append(char32_t character, std::uint64_t offset) {
        constexpr qsizetype tabWidth = 8;
        if (character == U'\t') {
            text_ += QString(tabWidth - text_.size() % tabWidth, u' ');
        } else if (character != byteOrderMark || offset != 0) {
            if (isHiddenCharacter(character)) {
                text_ += writtenOut(character);
            } else {
                text_ += QChar::fromUcs4(character);
            }
        }
    }

    TextEncoding encoding_;
    std::uint64_t lineOffset_;
    QString text_;
    bool endsWithLineEnd_ = true;
    std::vector<TextLine> lines_;
};

/// How many of these bytes to leave out so that a line begins behind them: those up to the first end of a
/// line before the wanted byte, or else the rest of a character that began earlier.
std::size_t bytesBeforeALine(std::string_view bytes, TextEncoding encoding, std::size_t wanted) {
    std::string_view rest = bytes.substr(0, wanted);
    while (!rest.empty()) {
        const auto character = decodeFirst(rest, encoding);
        rest.remove_prefix(character.length);
        const bool isReturn =
            character.codePoint == U'\r' && !rest.empty() && decodeFirst(rest, encoding).codePoint != U'\n';
        if (character.codePoint == U'\n' || isReturn) {
            return wanted - rest.size();
        }
    }
    if (encoding != TextEncoding::utf8) {
        return 0;
    }
    constexpr std::size_t longestCharacter = 4;
    std::size_t count = 0;
    while (count < std::min(bytes.size(), longestCharacter - 1)
           && (static_cast<unsigned char>(bytes[count]) & 0xC0U) == 0x80U) {
        ++count;
    }
    return count;
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
    // Text in an older encoding of one byte for each letter has single damaged spots, data is full of them.
    constexpr std::size_t invalidShare = 4;
    constexpr std::size_t controlShare = 50;
    if (invalid > length / invalidShare || controls > length / controlShare) {
        return std::nullopt;
    }
    return TextEncoding::utf8;
}

std::size_t TextBlock::lineAt(std::uint64_t offset) const {
    const auto next = std::ranges::upper_bound(lines, offset, {}, &TextLine::offset);
    return next == lines.begin() ? 0 : static_cast<std::size_t>(next - lines.begin()) - 1;
}

FileAnswer<TextBlock> readTextBlock(const OpenedFile& file, TextEncoding encoding, std::uint64_t offset) {
    const auto size = file.size();
    if (!size) {
        return std::unexpected(size.error());
    }
    const std::uint64_t wanted = std::min(offset, *size);
    std::uint64_t begin = wanted - std::min(wanted, textBlockReach);
    begin -= encoding == TextEncoding::utf8 ? 0 : begin % 2;
    std::vector<std::byte> bytes(
        static_cast<std::size_t>(std::min(*size - begin, wanted - begin + textBlockReach)));
    const auto length = file.read(begin, bytes);
    if (!length) {
        return std::unexpected(length.error());
    }
    std::string_view text = charactersOf(std::span(bytes).first(*length));
    if (begin > 0) {
        const auto wantedInText = std::min(static_cast<std::size_t>(wanted - begin), text.size());
        const std::size_t before = bytesBeforeALine(text, encoding, wantedInText);
        text.remove_prefix(before);
        begin += before;
    }
    TextBlock block;
    block.fileSize = *size;
    block.reachesEnd = begin + text.size() >= *size || *length < bytes.size();
    block.lines = LineCutter(encoding, begin).linesOf(text, block.reachesEnd);
    return block;
}

FileAnswer<QString> readWholeText(const OpenedFile& file, TextEncoding encoding, std::uint64_t longest) {
    const auto size = file.size();
    if (!size) {
        return std::unexpected(size.error());
    }
    std::vector<std::byte> bytes(static_cast<std::size_t>(std::min(*size, longest)));
    const auto length = file.read(0, bytes);
    if (!length) {
        return std::unexpected(length.error());
    }
    std::string_view rest = charactersOf(std::span(bytes).first(*length));
    QString text;
    text.reserve(static_cast<qsizetype>(rest.size()));
    bool isFront = true;
    while (!rest.empty()) {
        const auto character = decodeFirst(rest, encoding);
        if (!std::exchange(isFront, false) || character.codePoint != byteOrderMark) {
            text += QChar::fromUcs4(character.codePoint);
        }
        rest.remove_prefix(character.length);
    }
    return text;
}

} // namespace tolvane::platform
