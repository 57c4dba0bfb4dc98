#include "platform/linux/session/LinuxProcessInfo.h"

#include "platform/values/Pieces.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <fstream>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>

namespace tolvane::platform {

namespace {

constexpr std::string_view blanks = " \t\r";

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// Decodes a value as a shell would: quotes of both kinds, and backslashes except in single quotes.
std::string unquoted(std::string_view value) {
    std::string text;
    char quote = '\0';
    for (std::size_t i = 0; i < value.size(); ++i) {
        const char c = value[i];
        if (quote == '\0' && (c == '"' || c == '\'')) {
            quote = c;
        } else if (c == quote && quote != '\0') {
            quote = '\0';
        } else if (c == '\\' && quote != '\'' && i + 1 < value.size()) {
            text += value[++i];
        } else {
            text += c;
        }
    }
    return text;
}

OperatingSystemVersion versionOf(std::string_view text) {
    std::array<int, 3> numbers{};
    for (int& number : numbers) {
        const char* const end = std::to_address(text.end());
        const auto [rest, fault] = std::from_chars(std::to_address(text.begin()), end, number);
        if (fault != std::errc() || number < 0) {
            number = 0;
            break;
        }
        if (rest == end || *rest != '.') {
            break;
        }
        text.remove_prefix(text.size() - static_cast<std::size_t>(end - rest) + 1);
    }
    return {numbers[0], numbers[1], numbers[2]};
}

/// The front of a file, nothing if it cannot be read. These files are short; of a long one the beginning is
/// enough.
std::optional<std::string> contentsOf(const std::string& path) {
    constexpr std::streamsize most = 65'536;
    std::ifstream file(path, std::ios::binary);
    std::string text(most, '\0');
    file.read(text.data(), most);
    if (file.bad() || (file.fail() && !file.eof())) {
        return std::nullopt;
    }
    text.resize(static_cast<std::size_t>(file.gcount()));
    return text;
}

} // namespace

OperatingSystemVersion versionInOsRelease(std::string_view text) {
    constexpr std::string_view key = "VERSION_ID=";
    OperatingSystemVersion version;
    for (const std::string_view piece : nonEmptyPieces(text, '\n')) {
        const std::string_view line = trimmed(piece);
        if (line.starts_with(key)) {
            // As in a shell, a later value replaces an earlier one.
            version = versionOf(unquoted(line.substr(key.size())));
        }
    }
    return version;
}

OperatingSystemVersion LinuxProcessInfo::operatingSystemVersion() const {
    for (const std::string& file : files_) {
        if (const auto text = contentsOf(file)) {
            return versionInOsRelease(*text);
        }
    }
    return {};
}

} // namespace tolvane::platform
