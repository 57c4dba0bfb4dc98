// Describes any value, and parses the description again.
#include "fuzz/AnyValue.h"
#include "fuzz/Fuzz.h"
#include "platform/values/Description.h"
#include "platform/values/Utf8.h"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>

namespace {

using namespace tolvane;

constexpr std::size_t blanksPerLevel = 4;

/// Parses a description alongside its value. Every deviation is a finding.
class Reader {
public:
    explicit Reader(std::string_view description) : rest_(description) {}

    void read(const platform::Value& value) {
        read(value, 0);
        fuzz::require(rest_.empty(), "a description ends with its value");
    }

private:
    void take(std::string_view expected) {
        fuzz::require(rest_.starts_with(expected), "brackets and signs stand where they have to");
        rest_.remove_prefix(expected.size());
    }

    void indent(std::size_t level) { take(std::string(level * blanksPerLevel, ' ')); }

    char takeOne() {
        fuzz::require(!rest_.empty(), "nothing breaks off");
        const char one = rest_.front();
        rest_.remove_prefix(1);
        return one;
    }

    unsigned number(std::size_t digits, unsigned base) {
        unsigned value = 0;
        for (; digits > 0; --digits) {
            const char digit = takeOne();
            const std::size_t place = std::string_view("0123456789abcdef").find(digit);
            fuzz::require(place < base, "escapes have their digits");
            value = value * base + static_cast<unsigned>(place);
        }
        return value;
    }

    char32_t escaped() {
        constexpr std::string_view letters = "\"\\abfnrtv";
        constexpr std::string_view meanings = "\"\\\a\b\f\n\r\t\v";
        if (rest_.starts_with('U')) {
            take("U");
            return number(4, 16);
        }
        const std::size_t letter = letters.find(rest_.empty() ? 'x' : rest_.front());
        if (letter != std::string_view::npos) {
            takeOne();
            return static_cast<unsigned char>(meanings[letter]);
        }
        return number(3, 8);
    }

    /// The text of a leaf inside a collection.
    std::string leaf() {
        const std::string_view plain = rest_.substr(0, rest_.find_first_of(" ;,\n\""));
        std::string text(plain);
        rest_.remove_prefix(plain.size());
        if (!plain.empty()) {
            return text;
        }
        take("\"");
        for (char one = takeOne(); one != '"'; one = takeOne()) {
            fuzz::require(one >= ' ' && one < '\x7F', "only printable ASCII stands in quotes");
            char32_t character = one == '\\' ? escaped() : static_cast<unsigned char>(one);
            if (character >= 0xD800 && character < 0xDC00) {
                take("\\U");
                character = 0x10000 + ((character - 0xD800) << 10U) + (number(4, 16) - 0xDC00);
            }
            platform::appendUtf8(text, character);
        }
        return text;
    }

    void read(const platform::Value& value, std::size_t level) {
        std::visit([&](const auto& kind) { readKind(kind, level); }, value.storage());
    }

    void readKind(const platform::Dictionary& dictionary, std::size_t level) {
        indent(level);
        take("{\n");
        for (const auto& [key, value] : dictionary) {
            indent(level + 1);
            fuzz::require(leaf() == key, "a key is told as it is");
            take(" = ");
            read(value, level + 1);
            take(";\n");
        }
        indent(level);
        take("}");
    }

    void readKind(const platform::Array& array, std::size_t level) {
        indent(level);
        take("(\n");
        for (std::size_t i = 0; i < array.size(); ++i) {
            indent(level + 1);
            read(array[i], level + 1);
            take(i + 1 < array.size() ? ",\n" : "\n");
        }
        indent(level);
        take(")");
    }

    void readKind(const platform::Data& data, std::size_t /*level*/) {
        take("<");
        for (std::size_t i = 0; i < data.size(); ++i) {
            take(i > 0 && i % 4 == 0 ? " " : "");
            fuzz::require(number(2, 16) == std::to_integer<unsigned>(data[i]), "every byte is told");
        }
        take(">");
    }

    template <typename Kind>
    void readKind(const Kind& kind, std::size_t level) {
        const std::string text = level > 0 ? leaf() : std::string(rest_);
        if (level == 0) {
            rest_ = {};
        }
        fuzz::require(platform::isValidUtf8(text), "a leaf is UTF-8");
        if constexpr (std::is_same_v<Kind, std::string>) {
            fuzz::require(text == platform::shownText(kind), "a text is told as it is");
        } else if constexpr (std::is_same_v<Kind, platform::URL>) {
            fuzz::require(text == kind.absoluteString(), "a URL is told as it is");
        } else if constexpr (std::is_same_v<Kind, platform::UUID>) {
            fuzz::require(text == kind.text(), "an identifier is told as it is");
        } else if constexpr (std::is_same_v<Kind, platform::Date>) {
            fuzz::require(text == kind.description(), "a date is told as it is");
        } else if constexpr (std::is_same_v<Kind, bool>) {
            fuzz::require(text == (kind ? "1" : "0"), "a truth is 1 or 0");
        } else if constexpr (std::is_integral_v<Kind>) {
            fuzz::require(text == std::to_string(kind), "an integer has its digits");
        } else if constexpr (std::is_floating_point_v<Kind>) {
            checkFraction(kind, text);
        } else {
            fuzz::require(text == "<null>", "nothing is told as that");
        }
    }

    template <typename Number>
    static void checkFraction(Number number, const std::string& text) {
        if (std::isnan(number)) {
            fuzz::require(text == "nan", "no number is told as that");
        } else if (text.ends_with("infinity")) {
            fuzz::require(
                text == (number < 0 ? "-infinity" : "+infinity") && std::isinf(number),
                "what has no end is told as that");
        } else {
            Number again = 0;
            std::from_chars(text.data(), text.data() + text.size(), again);
            fuzz::require(again == number, "a fraction reads back as the same number");
        }
    }

    std::string_view rest_;
};

std::size_t elementsOf(const platform::Value& value) {
    std::size_t count = 1;
    if (const auto* const array = value.as<platform::Array>()) {
        for (const platform::Value& element : *array) {
            count += elementsOf(element);
        }
    } else if (const auto* const dictionary = value.as<platform::Dictionary>()) {
        for (const auto& [key, element] : *dictionary) {
            count += elementsOf(element);
        }
    }
    return count;
}

/// The maximum length of a description. Each element adds its indent and, for collections, its brackets'
/// indent, its key's quotes, punctuation, and at most the length of an identifier in quotes. A byte of a text
/// becomes at most six characters.
std::size_t mostSigns(const platform::Value& value, std::size_t bytes) {
    constexpr std::size_t blanks = 3 * blanksPerLevel * fuzz::AnyValue::deepest;
    constexpr std::size_t signsAround = std::string_view("\"\" = ;\n").size();
    constexpr std::size_t signsOfIdentifier = 36 + 2;
    return elementsOf(value) * (blanks + signsAround + signsOfIdentifier) + 6 * bytes;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const platform::Value value = fuzz::AnyValue(fuzz::textOf(data, size)).value();
    const std::string description = platform::description(value);
    fuzz::require(description.size() <= mostSigns(value, size), "a description has its limit");
    Reader(description).read(value);
    if (const auto* const dictionary = value.as<platform::Dictionary>()) {
        fuzz::require(platform::description(*dictionary) == description, "a dictionary is a value");
    }
    return 0;
}
