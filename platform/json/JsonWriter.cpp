#include "platform/json/JsonWriter.h"

#include "platform/values/HexBytes.h"
#include "platform/values/HexDigits.h"
#include "platform/values/Utf8.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>

namespace tolvane::platform {

namespace {

constexpr std::size_t largePiece = 65'536;
constexpr std::size_t charactersAtOnce = sizeof(std::uint64_t);

std::string_view wordForNoNumber(double number) {
    return std::isnan(number) ? "nan" : number > 0 ? "inf" : "-inf";
}

template <typename Number>
std::string shortestDigits(Number number) {
    std::array<char, 64> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    std::string text(digits.data(), result.ptr);
    if (text.find_first_of(".e") == std::string::npos) {
        text += ".0";
    }
    return text;
}

/// Whether eight characters stand in a JSON text as they are. A character that does not sets its highest bit
/// in one of the terms; what a borrow or carry does to those above it makes no difference then.
bool arePlain(std::uint64_t characters) {
    constexpr std::uint64_t each = 0x0101010101010101;
    const std::uint64_t quotes = characters ^ each * '"';
    const std::uint64_t backslashes = characters ^ each * '\\';
    const std::uint64_t controls = characters - each * 0x20;
    const std::uint64_t deleted = characters + each;
    return ((characters | controls | deleted | (quotes - each) | (backslashes - each)) & each * 0x80) == 0;
}

/// True for what stands in a JSON text as it is, in ASCII.
bool isPlain(char c) {
    static constexpr std::array<bool, 256> table = [] {
        std::array<bool, 256> characters{};
        for (std::size_t i = 0x20; i < 0x7F; ++i) {
            characters.at(i) = i != '"' && i != '\\';
        }
        return characters;
    }();
    return table[static_cast<unsigned char>(c)];
}

/// Whether the eight characters from a place on stand in a JSON text as they are.
bool arePlainAt(std::string_view text, std::size_t place) {
    std::uint64_t characters = 0;
    std::memcpy(&characters, text.data() + place, charactersAtOnce);
    return arePlain(characters);
}

/// The length of the front that stands in a JSON text as it is.
std::size_t plainLength(std::string_view text) {
    std::size_t length = 0;
    while (text.size() - length >= charactersAtOnce && arePlainAt(text, length)) {
        length += charactersAtOnce;
    }
    // The last eight may overlap those before.
    const bool areFewLeft = length != 0 && text.size() - length < charactersAtOnce;
    if (areFewLeft && arePlainAt(text, text.size() - charactersAtOnce)) {
        return text.size();
    }
    while (length < text.size() && isPlain(text[length])) {
        ++length;
    }
    return length;
}

} // namespace

JsonWriter& JsonWriter::key(std::string_view name) {
    quote(name, "\":");
    needsComma_ = false;
    return *this;
}

JsonWriter& JsonWriter::fraction(double number) {
    return std::isfinite(number) ? add(shortestDigits(number)) : text(wordForNoNumber(number));
}

JsonWriter& JsonWriter::text(std::string_view text) {
    quote(text, "\"");
    return *this;
}

void JsonWriter::quote(std::string_view text, std::string_view after) {
    const bool followsValue = std::exchange(needsComma_, true);
    gathered_ += followsValue ? std::string_view(",\"") : std::string_view("\"");
    while (!text.empty()) {
        const std::size_t plain = plainLength(text);
        append(text.substr(0, plain));
        text.remove_prefix(plain);
        if (!text.empty()) {
            const DecodedCharacter character = decodeFirstCharacter(text);
            appendCharacter(character.codePoint);
            text.remove_prefix(character.length);
        }
    }
    append(after);
}

void JsonWriter::appendCharacter(char32_t c) {
    static constexpr std::string_view shortened = "\"\\\b\f\n\r\t";
    static constexpr std::string_view letters = "\"\\bfnrt";
    const std::size_t index = c < 0x80 ? shortened.find(static_cast<char>(c)) : std::string_view::npos;
    if (index != std::string_view::npos) {
        append(std::string{'\\', letters[index]});
    } else if (c >= 0x20 && !(ascii_ && c >= 0x7F)) {
        appendUtf8(gathered_, c);
    } else if (c < 0x10000) {
        appendEscape(c);
    } else {
        appendEscape(0xD800 + ((c - 0x10000) >> 10U));
        appendEscape(0xDC00 + (c & 0x3FFU));
    }
}

void JsonWriter::appendEscape(std::uint32_t unit) {
    append("\\u");
    appendHex(gathered_, unit, 4);
}

JsonWriter& JsonWriter::hex(std::span<const std::byte> bytes) {
    add("\"");
    platform::appendHexBytes(gathered_, bytes);
    append("\"");
    return *this;
}

JsonWriter& JsonWriter::hexNumber(std::uint32_t number, std::size_t digits) {
    add("\"0x");
    appendHex(gathered_, number, digits);
    append("\"");
    return *this;
}

JsonWriter& JsonWriter::value(const Value& value) {
    const auto writeKind = [this](const auto& kind) {
        using Kind = std::remove_cvref_t<decltype(kind)>;
        if constexpr (std::is_same_v<Kind, Null>) {
            null();
        } else if constexpr (std::is_same_v<Kind, bool>) {
            boolean(kind);
        } else if constexpr (std::is_integral_v<Kind> && std::is_signed_v<Kind>) {
            integer(kind);
        } else if constexpr (std::is_integral_v<Kind>) {
            unsignedInteger(kind);
        } else if constexpr (std::is_floating_point_v<Kind>) {
            if (std::isfinite(kind)) {
                fraction(kind);
            } else {
                beginObject().key("number").fraction(kind).endObject();
            }
        } else if constexpr (std::is_same_v<Kind, std::string>) {
            text(kind);
        } else if constexpr (std::is_same_v<Kind, Date>) {
            date(kind);
        } else if constexpr (std::is_same_v<Kind, Data>) {
            beginObject().key("data").hex(kind).endObject();
        } else if constexpr (std::is_same_v<Kind, Array>) {
            beginArray();
            for (const Value& element : kind) {
                this->value(element);
            }
            endArray();
        } else if constexpr (std::is_same_v<Kind, Dictionary>) {
            beginObject().key("dictionary").dictionary(kind).endObject();
        } else if constexpr (std::is_same_v<Kind, URL>) {
            beginObject().key("url").text(kind.absoluteString()).endObject();
        } else {
            static_assert(std::is_same_v<Kind, UUID>);
            beginObject().key("uuid").text(kind.text()).endObject();
        }
    };
    std::visit(writeKind, value.storage());
    return *this;
}

JsonWriter& JsonWriter::dictionary(const Dictionary& dictionary) {
    beginObject();
    for (const Dictionary::Entry& entry : dictionary) {
        key(entry.key).value(entry.value);
    }
    return endObject();
}

JsonWriter& JsonWriter::date(const Date& date) {
    beginObject().key("date");
    date.hasCalendarDate() ? text(date.iso8601()) : null();
    return key("seconds").fraction(date.timeIntervalSinceReferenceDate()).endObject();
}

void JsonWriter::finish() {
    sink_(gathered_);
    gathered_.clear();
}

JsonWriter& JsonWriter::open(char bracket) {
    add({&bracket, 1});
    needsComma_ = false;
    return *this;
}

JsonWriter& JsonWriter::close(char bracket) {
    append({&bracket, 1});
    needsComma_ = true;
    return *this;
}

JsonWriter& JsonWriter::add(std::string_view token) {
    if (needsComma_) {
        append(",");
    }
    needsComma_ = true;
    append(token);
    return *this;
}

void JsonWriter::append(std::string_view piece) {
    gathered_ += piece;
    if (gathered_.size() >= largePiece) {
        finish();
    }
}

} // namespace tolvane::platform
