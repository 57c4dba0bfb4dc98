#include "platform/values/Description.h"

#include "platform/values/HexBytes.h"
#include "platform/values/HexDigits.h"
#include "platform/values/Utf8.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace tolvane::platform {

namespace {

constexpr std::size_t blanksPerLevel = 4;

bool standsWithoutQuotes(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
    });
}

/// Whether a character in quotes is written as it is.
bool standsInQuotes(char c) {
    return c >= 0x20 && c < 0x7F && c != '"' && c != '\\';
}

void appendUtf16Escape(std::string& out, unsigned unit) {
    appendHex(out += "\\U", unit, 4);
}

void appendEscapedAscii(std::string& out, char c) {
    static constexpr std::string_view escaped = "\"\\\a\b\f\n\r\t\v";
    static constexpr std::string_view letters = "\"\\abfnrtv";
    if (const std::size_t index = escaped.find(c); index != std::string_view::npos) {
        out += {'\\', letters[index]};
        return;
    }
    const auto byte = static_cast<unsigned char>(c);
    out += '\\';
    for (const unsigned shift : {6U, 3U, 0U}) {
        out += static_cast<char>('0' + ((byte >> shift) & 7U));
    }
}

void appendLeaf(std::string& out, std::string_view text) {
    if (standsWithoutQuotes(text)) {
        out += text;
        return;
    }
    out += '"';
    while (!text.empty()) {
        const auto other = std::ranges::find_if_not(text, standsInQuotes);
        const auto length = static_cast<std::size_t>(other - text.begin());
        out += text.substr(0, length);
        text.remove_prefix(length);
        if (text.empty()) {
            break;
        }
        const DecodedCharacter character = decodeFirstCharacter(text);
        if (character.codePoint < 0x80) {
            appendEscapedAscii(out, text.front());
        } else if (character.codePoint < 0x10000) {
            appendUtf16Escape(out, character.codePoint);
        } else {
            const char32_t offset = character.codePoint - 0x10000;
            appendUtf16Escape(out, 0xD800U + (offset >> 10U));
            appendUtf16Escape(out, 0xDC00U + (offset & 0x3FFU));
        }
        text.remove_prefix(character.length);
    }
    out += '"';
}

template <typename Number>
std::string numberText(Number number) {
    if constexpr (std::is_floating_point_v<Number>) {
        if (std::isnan(number)) {
            return "nan";
        }
        if (std::isinf(number)) {
            return number < 0 ? "-infinity" : "+infinity";
        }
    }
    std::array<char, 64> buffer{};
    char* const begin = buffer.data();
    char* const limit = begin + buffer.size();
    if constexpr (std::is_floating_point_v<Number>) {
        // The shortest digits that restore the number; an exponent only instead of many zeros.
        const Number size = std::abs(number);
        const bool plain =
            size == 0 || (size >= static_cast<Number>(1e-4) && size < static_cast<Number>(1e16));
        const auto format = plain ? std::chars_format::fixed : std::chars_format::scientific;
        return {begin, std::to_chars(begin, limit, number, format).ptr};
    } else {
        return {begin, std::to_chars(begin, limit, number).ptr};
    }
}

class Writer {
public:
    /// Writes a value at a collection's `level`; leaves are quoted if `inside` a collection.
    void append(const Value& value, std::size_t level, bool inside) {
        std::visit([&](const auto& kind) { appendKind(kind, level, inside); }, value.storage());
    }

    void append(const Dictionary& dictionary, std::size_t level) {
        indent(level);
        text_ += "{\n";
        for (const Dictionary::Entry& entry : dictionary) {
            indent(level + 1);
            appendLeaf(text_, entry.key);
            text_ += " = ";
            append(entry.value, level + 1, true);
            text_ += ";\n";
        }
        indent(level);
        text_ += '}';
    }

    std::string take() { return std::move(text_); }

private:
    void indent(std::size_t level) { text_.append(level * blanksPerLevel, ' '); }

    void append(const Array& array, std::size_t level) {
        indent(level);
        text_ += "(\n";
        for (std::size_t i = 0; i < array.size(); ++i) {
            indent(level + 1);
            append(array[i], level + 1, true);
            text_ += i + 1 < array.size() ? ",\n" : "\n";
        }
        indent(level);
        text_ += ')';
    }

    template <typename Kind>
    void appendKind(const Kind& kind, std::size_t level, bool inside) {
        if constexpr (std::is_same_v<Kind, Dictionary> || std::is_same_v<Kind, Array>) {
            append(kind, level);
        } else if constexpr (std::is_same_v<Kind, Data>) {
            appendAngleBytes(text_, kind);
        } else if constexpr (std::is_same_v<Kind, std::string>) {
            inside ? appendLeaf(text_, kind) : static_cast<void>(text_ += shownText(kind));
        } else if (inside) {
            appendLeaf(text_, leafText(kind));
        } else {
            text_ += shownText(leafText(kind));
        }
    }

    static std::string leafText(const Null&) { return "<null>"; }
    static std::string leafText(bool flag) { return flag ? "1" : "0"; }
    static std::string leafText(const Date& date) { return date.description(); }
    static std::string leafText(const URL& url) { return url.absoluteString(); }
    static std::string leafText(const UUID& uuid) { return uuid.text(); }
    template <typename Number>
        requires std::is_arithmetic_v<Number>
    static std::string leafText(Number number) {
        return numberText(number);
    }

    std::string text_;
};

} // namespace

void appendAngleBytes(std::string& out, std::span<const std::byte> bytes) {
    constexpr std::size_t groupSize = 4;
    const std::size_t start = out.size();
    const std::size_t blanks = bytes.empty() ? 0 : (bytes.size() - 1) / groupSize;
    out.resize(start + 2 * bytes.size() + blanks + 2);
    char* place = out.data() + start;
    *place++ = '<';
    while (bytes.size() > groupSize) {
        place = writeHexBytes(place, bytes.first(groupSize));
        *place++ = ' ';
        bytes = bytes.subspan(groupSize);
    }
    *writeHexBytes(place, bytes) = '>';
}

std::string description(const Value& value) {
    Writer writer;
    writer.append(value, 0, false);
    return writer.take();
}

std::string description(const Dictionary& dictionary) {
    Writer writer;
    writer.append(dictionary, 0);
    return writer.take();
}

} // namespace tolvane::platform
