#pragma once

#include "platform/values/Value.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace tolvane::platform {

/// Writes JSON on one line, piece by piece, so that large texts are never in memory as a whole. It adds
/// commas; the caller matches brackets and writes keys before values. docs/json.md describes the dialect.
class JsonWriter {
public:
    /// Takes the next piece of the text.
    using Sink = std::function<void(std::string_view piece)>;

    /// With `ascii` everything past ASCII is escaped.
    JsonWriter(Sink sink, bool ascii) : sink_(std::move(sink)), ascii_(ascii) {}

    JsonWriter& beginObject() { return open('{'); }
    JsonWriter& endObject() { return close('}'); }
    JsonWriter& beginArray() { return open('['); }
    JsonWriter& endArray() { return close(']'); }

    JsonWriter& key(std::string_view name);

    JsonWriter& null() { return add("null"); }
    JsonWriter& boolean(bool value) { return add(value ? "true" : "false"); }
    JsonWriter& integer(std::int64_t number) { return add(std::to_string(number)); }
    JsonWriter& unsignedInteger(std::uint64_t number) { return add(std::to_string(number)); }

    /// The shortest digits that read back as the same number, with a point or an exponent. What is no finite
    /// number becomes the text "nan", "inf" or "-inf".
    JsonWriter& fraction(double number);

    /// The digits of the double that is the same number, since that is what readers of JSON take them for.
    JsonWriter& fraction(float number) { return fraction(static_cast<double>(number)); }

    /// Bytes that are not UTF-8 become U+FFFD.
    JsonWriter& text(std::string_view text);

    /// Lower-case hexadecimal digits.
    JsonWriter& hex(std::span<const std::byte> bytes);

    /// "0x1a", with at least this many digits.
    JsonWriter& hexNumber(std::uint32_t number, std::size_t digits);

    /// A value of any kind with all that it holds. Texts, booleans, integers, fractions, arrays and the null
    /// object are what they are in JSON; anything else is an object of its own kind:
    /// {"data": hexadecimal digits}, {"date": ISO 8601 or null, "seconds": since 1 January 2001},
    /// {"uuid": text}, {"url": text}, {"dictionary": {…}}, and {"number": "nan"} and the like.
    JsonWriter& value(const Value& value);

    /// A dictionary as an object, its values as above.
    JsonWriter& dictionary(const Dictionary& dictionary);

    /// The object that stands for a date.
    JsonWriter& date(const Date& date);

    /// Hands what is still here to the sink.
    void finish();

private:
    JsonWriter& open(char bracket);
    JsonWriter& close(char bracket);
    JsonWriter& add(std::string_view token);
    /// The text in quotes; the last of them is in what comes after it.
    void quote(std::string_view text, std::string_view after);
    void appendCharacter(char32_t character);
    void appendEscape(std::uint32_t unit);
    void append(std::string_view piece);

    Sink sink_;
    bool ascii_;
    bool needsComma_ = false;
    std::string gathered_;
};

} // namespace tolvane::platform
