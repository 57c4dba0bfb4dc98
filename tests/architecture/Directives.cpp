#include "tests/architecture/Directives.h"

#include <algorithm>
#include <utility>

namespace tolvane::architecture {
namespace {

constexpr std::string_view identifierCharacters =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_";
constexpr std::string_view blanks = " \t\r\f\v";

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// Copies a source without its comments and raw strings. Line ends stay, so that lines keep their numbers.
class Stripper {
public:
    explicit Stripper(std::string_view text) : text_(text) {}

    std::string strip() {
        while (position_ < text_.size()) {
            if (rest().starts_with("//")) {
                blankUntil(endOfLineComment());
            } else if (rest().starts_with("/*")) {
                blankUntil(endAfter("*/", position_ + 2));
            } else if (startsRawString()) {
                blankUntil(endOfRawString());
            } else if (text_[position_] == '"' || startsCharacter()) {
                copyLiteral(text_[position_]);
            } else {
                copy();
            }
        }
        return std::move(result_);
    }

private:
    std::string_view rest() const { return text_.substr(position_); }

    void copy() { result_ += text_[position_++]; }

    void blankUntil(std::size_t end) {
        result_ += ' ';
        for (; position_ < end; ++position_) {
            if (text_[position_] == '\n') {
                result_ += '\n';
            }
        }
    }

    std::size_t endAfter(std::string_view mark, std::size_t from) const {
        const std::size_t found = text_.find(mark, from);
        return found == std::string_view::npos ? text_.size() : found + mark.size();
    }

    // A comment whose line ends in a backslash goes on in the next line.
    std::size_t endOfLineComment() const {
        std::size_t end = position_;
        do {
            end = text_.find('\n', end + 1);
        } while (end != std::string_view::npos && text_[end - 1] == '\\');
        return std::min(end, text_.size());
    }

    bool followsIdentifierCharacter() const {
        return position_ > 0 && identifierCharacters.contains(text_[position_ - 1]);
    }

    bool startsRawString() const {
        if (followsIdentifierCharacter()) {
            return false;
        }
        return std::ranges::any_of(
            std::initializer_list<std::string_view>{"R\"", "u8R\"", "uR\"", "UR\"", "LR\""},
            [this](std::string_view start) { return rest().starts_with(start); });
    }

    std::size_t endOfRawString() const {
        const std::size_t quote = text_.find('"', position_);
        const std::size_t parenthesis = text_.find('(', quote);
        if (parenthesis == std::string_view::npos) {
            return text_.size();
        }
        const std::string_view delimiter = text_.substr(quote + 1, parenthesis - quote - 1);
        return endAfter(")" + std::string(delimiter) + "\"", parenthesis);
    }

    // In 1'000 the quote parts digits and starts no literal.
    bool startsCharacter() const { return text_[position_] == '\'' && !followsIdentifierCharacter(); }

    void copyLiteral(char quote) {
        copy();
        while (position_ < text_.size() && text_[position_] != quote && text_[position_] != '\n') {
            if (text_[position_] == '\\' && position_ + 1 < text_.size()) {
                copy();
            }
            copy();
        }
        if (position_ < text_.size()) {
            copy();
        }
    }

    std::string_view text_;
    std::size_t position_ = 0;
    std::string result_;
};

} // namespace

std::vector<Directive> directivesOf(std::string_view text) {
    const std::string stripped = Stripper(text).strip();
    std::vector<Directive> directives;
    std::string joined;
    std::size_t number = 0;
    std::size_t start = 0;
    for (std::string_view remaining = stripped; !remaining.empty();) {
        const std::size_t end = remaining.find('\n');
        std::string_view line = remaining.substr(0, end);
        remaining.remove_prefix(end == std::string_view::npos ? remaining.size() : end + 1);
        ++number;
        if (joined.empty()) {
            start = number;
        }
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        if (line.ends_with('\\') && !remaining.empty()) {
            line.remove_suffix(1);
            joined += line;
            continue;
        }
        joined += line;
        std::string_view content = trimmed(joined);
        if (content.starts_with('#')) {
            content = trimmed(content.substr(1));
            const std::size_t nameEnd =
                std::min(content.find_first_not_of(identifierCharacters), content.size());
            directives.push_back(
                {start, std::string(content.substr(0, nameEnd)),
                 std::string(trimmed(content.substr(nameEnd)))});
        }
        joined.clear();
    }
    return directives;
}

std::vector<std::string_view> identifiersOf(std::string_view rest) {
    std::vector<std::string_view> identifiers;
    while (true) {
        const std::size_t first = rest.find_first_of(identifierCharacters);
        if (first == std::string_view::npos) {
            return identifiers;
        }
        rest.remove_prefix(first);
        const std::size_t length = std::min(rest.find_first_not_of(identifierCharacters), rest.size());
        identifiers.push_back(rest.substr(0, length));
        rest.remove_prefix(length);
    }
}

} // namespace tolvane::architecture
