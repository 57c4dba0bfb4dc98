#include "platform/freedesktop/RevealScriptReader.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace tolvane::platform {

namespace {

/// Whether there are only blanks, line ends and comments. Comments in parentheses hold others.
bool statesNothing(std::string_view text) {
    std::size_t depth = 0;
    while (!text.empty()) {
        std::size_t length = 1;
        if (text.starts_with("(*")) {
            ++depth;
            length = 2;
        } else if (depth > 0) {
            const bool ends = text.starts_with("*)");
            depth -= ends ? 1 : 0;
            length = ends ? 2 : 1;
        } else if (text.starts_with("--") || text.starts_with('#')) {
            length = std::min(text.find_first_of("\r\n"), text.size());
        } else if (!std::string_view(" \t\r\n").contains(text.front())) {
            return false;
        }
        text.remove_prefix(length);
    }
    return depth == 0;
}

} // namespace

std::optional<std::string> pathOfRevealScript(std::string_view script) {
    constexpr std::string_view beforePath = "set thePath to POSIX file \"";
    constexpr std::string_view lastLine = "\ntell application \"Finder\" to reveal thePath";
    constexpr std::string_view escapeLetters = "\"\\nrt";
    constexpr std::string_view escapedBytes = "\"\\\n\r\t";

    if (!script.starts_with(beforePath) || !script.ends_with(lastLine)) {
        return std::nullopt;
    }
    script.remove_prefix(beforePath.size());
    script.remove_suffix(lastLine.size());
    std::string path;
    while (true) {
        const std::size_t mark = script.find_first_of("\"\\");
        if (mark == std::string_view::npos) {
            return std::nullopt;
        }
        path += script.substr(0, mark);
        const bool isEnd = script[mark] == '"';
        script.remove_prefix(mark + 1);
        if (isEnd) {
            return statesNothing(script) ? std::optional(std::move(path)) : std::nullopt;
        }
        const std::size_t escape =
            script.empty() ? std::string_view::npos : escapeLetters.find(script.front());
        if (escape == std::string_view::npos) {
            return std::nullopt;
        }
        path += escapedBytes[escape];
        script.remove_prefix(1);
    }
}

} // namespace tolvane::platform
