#include "cli/JsonWriter.h"

#include <nlohmann/json.hpp>

#include <array>
#include <charconv>
#include <cmath>
#include <type_traits>
#include <variant>

namespace tolvane::cli {

namespace {

constexpr std::size_t largePiece = 65'536;
constexpr std::string_view hexDigits = "0123456789abcdef";

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

} // namespace

JsonWriter& JsonWriter::key(std::string_view name) {
    text(name);
    append(":");
    needsComma_ = false;
    return *this;
}

JsonWriter& JsonWriter::fraction(double number) {
    return std::isfinite(number) ? add(shortestDigits(number)) : text(wordForNoNumber(number));
}

JsonWriter& JsonWriter::text(std::string_view text) {
    using Json = nlohmann::json;
    return add(Json(text).dump(-1, ' ', ascii_, Json::error_handler_t::replace));
}

JsonWriter& JsonWriter::hex(std::span<const std::byte> bytes) {
    add("\"");
    for (const std::byte byte : bytes) {
        gathered_ += hexDigits[std::to_integer<std::size_t>(byte) >> 4U];
        gathered_ += hexDigits[std::to_integer<std::size_t>(byte) & 0xFU];
    }
    append("\"");
    return *this;
}

JsonWriter& JsonWriter::hexNumber(std::uint32_t number, std::size_t digits) {
    std::string shown;
    for (; number != 0 || shown.size() < digits; number >>= 4U) {
        shown.insert(shown.begin(), hexDigits[number & 0xFU]);
    }
    return text("0x" + shown);
}

JsonWriter& JsonWriter::value(const platform::Value& value) {
    const auto writeKind = [this](const auto& kind) {
        using Kind = std::remove_cvref_t<decltype(kind)>;
        if constexpr (std::is_same_v<Kind, platform::Null>) {
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
        } else if constexpr (std::is_same_v<Kind, platform::Date>) {
            date(kind);
        } else if constexpr (std::is_same_v<Kind, platform::Data>) {
            beginObject().key("data").hex(kind).endObject();
        } else if constexpr (std::is_same_v<Kind, platform::Array>) {
            beginArray();
            for (const platform::Value& element : kind) {
                this->value(element);
            }
            endArray();
        } else if constexpr (std::is_same_v<Kind, platform::Dictionary>) {
            beginObject().key("dictionary").dictionary(kind).endObject();
        } else if constexpr (std::is_same_v<Kind, platform::URL>) {
            beginObject().key("url").text(kind.absoluteString()).endObject();
        } else {
            static_assert(std::is_same_v<Kind, platform::UUID>);
            beginObject().key("uuid").text(kind.text()).endObject();
        }
    };
    std::visit(writeKind, value.storage());
    return *this;
}

JsonWriter& JsonWriter::dictionary(const platform::Dictionary& dictionary) {
    beginObject();
    for (const platform::Dictionary::Entry& entry : dictionary) {
        key(entry.key).value(entry.value);
    }
    return endObject();
}

JsonWriter& JsonWriter::date(const platform::Date& date) {
    beginObject().key("date");
    if (date.hasCalendarDate()) {
        text(date.iso8601());
    } else {
        null();
    }
    return key("seconds").fraction(date.timeIntervalSinceReferenceDate()).endObject();
}

void JsonWriter::finish() {
    output_.write(gathered_);
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

} // namespace tolvane::cli
