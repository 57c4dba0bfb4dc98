// Reads any text as a script that reveals a path, and puts any path into one.
#include "fuzz/Fuzz.h"
#include "platform/freedesktop/RevealScriptReader.h"
#include "resolver/ResolveBookmark.h"

#include <optional>
#include <string>

namespace {

using namespace tolvane;

/// What the script language makes of a path between quotation marks; nothing where the script breaks.
std::optional<std::string> readBetweenQuotes(std::string_view path) {
    std::string read;
    for (std::size_t i = 0; i < path.size(); ++i) {
        if (path[i] == '"') {
            return std::nullopt;
        }
        if (path[i] != '\\') {
            read += path[i];
            continue;
        }
        constexpr std::string_view letters = "\"\\nrt";
        constexpr std::string_view meanings = "\"\\\n\r\t";
        const std::size_t meaning = ++i < path.size() ? letters.find(path[i]) : std::string_view::npos;
        if (meaning == std::string_view::npos) {
            return std::nullopt;
        }
        read += meanings[meaning];
    }
    return read;
}

bool standsForItself(std::string_view path) {
    return path.find_first_of("\"\\") == std::string_view::npos;
}

void checkPath(std::string_view path) {
    const std::string script = resolver::revealScript(path);
    fuzz::require(script.size() == path.size() + resolver::revealScript("").size(), "a path goes in whole");
    const auto read = platform::pathOfRevealScript(script);
    if (standsForItself(path)) {
        fuzz::require(read == path, "a path comes back to the byte");
    }
    if (const auto meant = readBetweenQuotes(path)) {
        fuzz::require(read == meant, "escapes mean what they mean");
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = fuzz::textOf(data, size);
    checkPath(text);
    if (const auto path = platform::pathOfRevealScript(text)) {
        fuzz::require(path->size() < text.size(), "a path is part of its script");
        checkPath(*path);
    }
    return 0;
}
