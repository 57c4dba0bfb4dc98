#include "platform/propertylist/NextStepCharacter.h"
#include "platform/propertylist/PropertyListReaders.h"
#include "platform/values/Utf16Text.h"
#include "platform/values/Utf8.h"

#include <algorithm>
#include <charconv>

namespace tolvane::platform {

namespace {

constexpr std::string_view gaps = "\t\n\v\f\r ";

bool isDigitOf(char c, int base) {
    int digit = 0;
    return std::from_chars(&c, &c + 1, digit, base).ptr != &c;
}

bool isWordCharacter(char c) {
    constexpr int letters = 36;
    return isDigitOf(c, letters) || std::string_view("_$/:.-").contains(c);
}

/// Reads one list. The first fault is kept, and everything after it returns at once.
class TextReader {
public:
    explicit TextReader(std::string_view text) : text_(text) {}

    std::expected<Value, PropertyListFault> read() {
        skip(text_.starts_with("\xEF\xBB\xBF") ? 3 : 0);
        skipBlanks();
        Value value = top();
        if (!failed() && position_ < text_.size()) {
            fail(position_, "the end of the list");
        }
        if (fault_) {
            return std::unexpected(*std::move(fault_));
        }
        return value;
    }

private:
    Value top() {
        if (!isAtString()) {
            return value(0);
        }
        const std::size_t start = position_;
        const bool isWord = isWordCharacter(text_[start]);
        std::string first = string();
        if (!failed() && (isWord || position_ < text_.size())) {
            if (!isAt("=")) {
                fail(position_, "'=' after a key");
            }
            position_ = start;
            return Dictionary::fromEntries(entries(0));
        }
        return first;
    }

    Value value(unsigned level) {
        if (isAtString()) {
            return string();
        }
        if (isAt("<")) {
            return data();
        }
        if (!isAt("(") && !isAt("{")) {
            fail(position_, "a value");
            return {};
        }
        if (level == deepestPropertyListLevel) {
            fail(position_, "containers at most 512 deep");
            return {};
        }
        return isAt("(") ? array(level + 1) : dictionary(level + 1);
    }

    Value data() {
        Data data;
        skip(1);
        while (true) {
            skipWhite();
            if (isAt(">")) {
                break;
            }
            unsigned byte = 0;
            for (int digits = 0; digits < 2 && !failed(); ++digits) {
                byte = byte << 4U | hexadecimalDigit();
            }
            if (failed()) {
                return {};
            }
            data.push_back(static_cast<std::byte>(byte));
        }
        skip(1);
        skipBlanks();
        return data;
    }

    unsigned hexadecimalDigit() {
        skipWhite();
        unsigned digit = 0;
        const std::string_view next = text_.substr(position_, 1);
        if (std::from_chars(next.data(), next.data() + next.size(), digit, 16).ptr == next.data()) {
            fail(position_, "two hexadecimal digits for each byte");
            return 0;
        }
        skip(1);
        return digit;
    }

    Value array(unsigned level) {
        Array array;
        do {
            skip(1);
            skipBlanks();
            if (isAt(")")) {
                break;
            }
            array.push_back(value(level));
        } while (!failed() && isAt(","));
        expectAfter(')', "',' or ')' after an element");
        return array;
    }

    Value dictionary(unsigned level) {
        skip(1);
        skipBlanks();
        auto read = entries(level);
        expectAfter('}', "a key or '}'");
        return Dictionary::fromEntries(std::move(read));
    }

    /// Entries up to the end of the text, or up to what cannot begin a key.
    std::vector<Dictionary::Entry> entries(unsigned level) {
        std::vector<Dictionary::Entry> entries;
        while (!failed() && isAtString()) {
            std::string key = string();
            expectAfter('=', "'=' after a key");
            entries.push_back({std::move(key), failed() ? Value() : value(level)});
            expectAfter(';', "';' after an entry");
        }
        return entries;
    }

    void expectAfter(char c, std::string_view expected) {
        if (!isAt({&c, 1})) {
            fail(position_, expected);
            return;
        }
        skip(1);
        skipBlanks();
    }

    std::string string() {
        if (isAt("\"") || isAt("'")) {
            return quotedText();
        }
        const std::size_t start = position_;
        while (position_ < text_.size() && isWordCharacter(text_[position_])) {
            skip(1);
        }
        const std::string_view word = text_.substr(start, position_ - start);
        skipBlanks();
        return std::string(word);
    }

    std::string quotedText() {
        const std::size_t start = position_;
        const char quote = text_[start];
        Utf16Text text;
        skip(1);
        while (!failed() && position_ < text_.size() && text_[position_] != quote) {
            if (isAt("\\")) {
                addEscape(text);
            } else {
                addCharacter(text);
            }
        }
        if (position_ == text_.size()) {
            fail(start, "a text whose quotes are closed");
            return {};
        }
        skip(1);
        skipBlanks();
        return text.take();
    }

    void addEscape(Utf16Text& text) {
        static constexpr std::string_view letters = "abfnrtv\"'\\\n";
        static constexpr std::string_view meanings = "\a\b\f\n\r\t\v\"'\\\n";
        constexpr std::size_t mostHexDigits = 4;
        constexpr std::size_t mostOctalDigits = 3;
        skip(1);
        if (isAt("U")) {
            skip(1);
            addNumber(text, 16, mostHexDigits);
            return;
        }
        if (position_ < text_.size() && isDigitOf(text_[position_], 8)) {
            addNumber(text, 8, mostOctalDigits);
            return;
        }
        const std::size_t letter =
            position_ < text_.size() ? letters.find(text_[position_]) : std::string_view::npos;
        if (letter == std::string_view::npos) {
            fail(position_ - 1, "an escape");
            return;
        }
        text.append(meanings.substr(letter, 1));
        skip(1);
    }

    void addNumber(Utf16Text& text, int base, std::size_t mostDigits) {
        const std::string_view digits = text_.substr(position_, mostDigits);
        unsigned number = 0;
        const auto end = std::from_chars(digits.data(), digits.data() + digits.size(), number, base).ptr;
        constexpr unsigned lastByte = 0xFF;
        const auto unit = base == 16          ? std::optional(static_cast<char16_t>(number))
                          : number > lastByte ? std::nullopt
                                              : nextStepCharacter(static_cast<unsigned char>(number));
        if (end == digits.data() || !unit) {
            fail(position_, base == 16 ? "a hexadecimal digit after \\U" : "a character of NextStep");
            return;
        }
        text.append(*unit);
        skip(static_cast<std::size_t>(end - digits.data()));
    }

    void addCharacter(Utf16Text& text) {
        const DecodedCharacter character = decodeFirstCharacter(text_.substr(position_));
        if (!character.valid) {
            fail(position_, "text in UTF-8");
            return;
        }
        text.append(text_.substr(position_, character.length));
        skip(character.length);
    }

    /// Goes past gaps and comments.
    void skipBlanks() {
        while (!failed()) {
            skipWhite();
            if (isAt("//")) {
                position_ = std::min(text_.find_first_of("\n\r", position_), text_.size());
            } else if (isAt("/*")) {
                const std::size_t end = text_.find("*/", position_ + 2);
                if (end == std::string_view::npos) {
                    fail(position_, "a comment that is closed");
                    return;
                }
                position_ = end + 2;
            } else {
                return;
            }
        }
    }

    void skipWhite() { position_ = std::min(text_.find_first_not_of(gaps, position_), text_.size()); }
    void skip(std::size_t count) { position_ += count; }
    bool isAt(std::string_view start) const { return text_.substr(position_).starts_with(start); }
    bool isAtString() const {
        return position_ < text_.size() && (isAt("\"") || isAt("'") || isWordCharacter(text_[position_]));
    }

    void fail(std::size_t place, std::string_view expected) {
        if (!fault_) {
            fault_ = PropertyListFault{place, std::string(expected)};
        }
    }
    bool failed() const { return fault_.has_value(); }

    std::string_view text_;
    std::size_t position_ = 0;
    std::optional<PropertyListFault> fault_;
};

} // namespace

std::expected<Value, PropertyListFault> readTextPropertyList(std::string_view text) {
    return TextReader(text).read();
}

} // namespace tolvane::platform
