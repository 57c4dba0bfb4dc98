#include "platform/freedesktop/RevealScriptReader.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace tolvane::platform {

namespace {

enum class Kind : std::uint8_t { word, literal, lineEnd, end, fault };

struct Token {
    Kind kind = Kind::fault;
    /// A word in small letters, or what a literal stands for.
    std::string text = {};
};

bool isCapital(char c) {
    return c >= 'A' && c <= 'Z';
}

bool startsWord(char c) {
    return (c >= 'a' && c <= 'z') || isCapital(c) || c == '_';
}

bool continuesWord(char c) {
    return startsWord(c) || (c >= '0' && c <= '9');
}

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

bool endsLine(char c) {
    return c == '\n' || c == '\r';
}

/// What the letter after a backslash stands for.
std::optional<char> escaped(char letter) {
    switch (letter) {
    case '"':
    case '\\':
        return letter;
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    default:
        return std::nullopt;
    }
}

/// Takes the script apart.
class Scanner {
public:
    explicit Scanner(std::string_view script) : rest_(script) {}

    Token next() {
        if (!skipBlanksAndComments()) {
            return {};
        }
        if (rest_.empty()) {
            return {Kind::end};
        }
        if (endsLine(rest_.front())) {
            rest_.remove_prefix(1);
            return {Kind::lineEnd};
        }
        if (rest_.front() == '"') {
            rest_.remove_prefix(1);
            return literal();
        }
        return word();
    }

private:
    /// False when a comment does not end.
    bool skipBlanksAndComments() {
        while (!rest_.empty()) {
            if (isBlank(rest_.front())) {
                rest_.remove_prefix(1);
            } else if (rest_.starts_with("--") || rest_.starts_with('#')) {
                rest_.remove_prefix(std::min(rest_.find_first_of("\r\n"), rest_.size()));
            } else if (!rest_.starts_with("(*")) {
                return true;
            } else if (!skipComment()) {
                return false;
            }
        }
        return true;
    }

    /// Comments in parentheses hold others.
    bool skipComment() {
        std::size_t depth = 0;
        do {
            const std::size_t next = rest_.find('*');
            if (next == std::string_view::npos) {
                return false;
            }
            if (next > 0 && rest_[next - 1] == '(') {
                ++depth;
                rest_.remove_prefix(next + 1);
            } else if (rest_.substr(next).starts_with("*)")) {
                --depth;
                rest_.remove_prefix(next + 2);
            } else {
                rest_.remove_prefix(next + 1);
            }
        } while (depth > 0);
        return true;
    }

    Token literal() {
        Token token{Kind::literal};
        for (;;) {
            const std::size_t plain = rest_.find_first_of("\"\\");
            if (plain == std::string_view::npos) {
                return {};
            }
            token.text += rest_.substr(0, plain);
            const bool ends = rest_[plain] == '"';
            rest_.remove_prefix(plain + 1);
            if (ends) {
                return token;
            }
            const auto byte = rest_.empty() ? std::nullopt : escaped(rest_.front());
            if (!byte) {
                return {};
            }
            token.text += *byte;
            rest_.remove_prefix(1);
        }
    }

    Token word() {
        if (!startsWord(rest_.front())) {
            return {};
        }
        const auto end = std::ranges::find_if_not(rest_, continuesWord);
        Token token{Kind::word, std::string(rest_.begin(), end)};
        for (char& c : token.text) {
            c = isCapital(c) ? static_cast<char>(c + ('a' - 'A')) : c;
        }
        rest_.remove_prefix(token.text.size());
        return token;
    }

    std::string_view rest_;
};

/// Reads from the front what is asked for. What is not stays in front, so that nothing gets past it.
class Reader {
public:
    explicit Reader(std::string_view script) : scanner_(script), token_(scanner_.next()) {}

    bool words(const auto& expected) {
        return std::ranges::all_of(expected, [this](std::string_view word) {
            return token_.kind == Kind::word && token_.text == word && advance();
        });
    }

    std::optional<std::string> literal() {
        if (token_.kind != Kind::literal) {
            return std::nullopt;
        }
        std::string text = std::move(token_.text);
        advance();
        return text;
    }

    bool lineEnds() {
        const bool some = token_.kind == Kind::lineEnd;
        while (token_.kind == Kind::lineEnd) {
            advance();
        }
        return some;
    }

    bool atEnd() const { return token_.kind == Kind::end; }

private:
    bool advance() {
        token_ = scanner_.next();
        return true;
    }

    Scanner scanner_;
    Token token_;
};

} // namespace

std::optional<std::string> pathOfRevealScript(std::string_view script) {
    constexpr std::array<std::string_view, 5> beforePath{"set", "thepath", "to", "posix", "file"};
    constexpr std::array<std::string_view, 2> beforeApplication{"tell", "application"};
    constexpr std::array<std::string_view, 3> afterApplication{"to", "reveal", "thepath"};

    Reader reader(script);
    reader.lineEnds();
    if (!reader.words(beforePath)) {
        return std::nullopt;
    }
    auto path = reader.literal();
    if (!path || !reader.lineEnds() || !reader.words(beforeApplication) || reader.literal() != "Finder"
        || !reader.words(afterApplication)) {
        return std::nullopt;
    }
    reader.lineEnds();
    return reader.atEnd() ? path : std::nullopt;
}

} // namespace tolvane::platform
