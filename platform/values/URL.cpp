#include "platform/values/URL.h"

#include "platform/values/FatalError.h"
#include "platform/values/HexDigits.h"
#include "platform/values/Pieces.h"
#include "platform/values/Value.h"

#include <algorithm>
#include <array>

namespace tolvane::platform {

namespace {

constexpr std::string_view fileScheme = "file:";

constexpr bool isAsciiLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

constexpr bool isAsciiDigit(char c) {
    return c >= '0' && c <= '9';
}

/// The bytes that need no escape in the path of a file URL (RFC 3986: pchar and "/", less ";").
bool standsForItself(char c) {
    static constexpr std::array<bool, 256> table = [] {
        std::array<bool, 256> characters{};
        for (std::size_t i = 0; i < characters.size(); ++i) {
            const char character = static_cast<char>(i);
            characters.at(i) = isAsciiLetter(character) || isAsciiDigit(character)
                               || std::string_view("-._~!$&'()*+,=:@/").contains(character);
        }
        return characters;
    }();
    return table[static_cast<unsigned char>(c)];
}

/// The length of "scheme:" at the front, or 0.
std::size_t schemeLength(std::string_view text) {
    if (text.empty() || !isAsciiLetter(text.front())) {
        return 0;
    }
    const auto end = std::ranges::find_if_not(
        text, [](char c) { return isAsciiLetter(c) || isAsciiDigit(c) || c == '+' || c == '-' || c == '.'; });
    if (end == text.end() || *end != ':') {
        return 0;
    }
    return static_cast<std::size_t>(end - text.begin()) + 1;
}

/// The part of a URL's text that is its path, still percent-encoded.
std::string_view encodedPath(std::string_view text) {
    text.remove_prefix(schemeLength(text));
    text = text.substr(0, text.find('?'));
    text = text.substr(0, text.find('#'));
    if (text.starts_with("//")) {
        const std::size_t authorityEnd = text.find('/', 2);
        return authorityEnd == std::string_view::npos ? std::string_view{} : text.substr(authorityEnd);
    }
    return text;
}

} // namespace

std::optional<URL> URL::fromText(std::string_view text) {
    const std::size_t scheme = schemeLength(text);
    if (scheme == 0 || scheme == text.size()) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            continue;
        }
        if (i + 2 >= text.size() || valueOfHexDigit(text[i + 1]) < 0 || valueOfHexDigit(text[i + 2]) < 0) {
            return std::nullopt;
        }
    }
    return URL(std::string(text));
}

URL URL::fileURLWithPath(std::string_view path) {
    if (!path.starts_with('/')) {
        fatalError("a file URL was asked for a path that is not absolute");
    }
    std::string text = "file://";
    text.reserve(text.size() + path.size());
    while (!path.empty()) {
        const auto other = std::ranges::find_if_not(path, standsForItself);
        const auto length = static_cast<std::size_t>(other - path.begin());
        text += path.substr(0, length);
        path.remove_prefix(length);
        if (!path.empty()) {
            appendHex(text += '%', static_cast<unsigned char>(path.front()), 2, HexCase::upper);
            path.remove_prefix(1);
        }
    }
    return URL(std::move(text));
}

bool URL::isFileURL() const {
    return text_.size() >= fileScheme.size()
           && std::ranges::equal(
               std::string_view(text_).substr(0, fileScheme.size()), fileScheme, {},
               [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; });
}

std::string URL::path() const {
    std::string_view encoded = encodedPath(text_);
    std::string decoded;
    decoded.reserve(encoded.size());
    while (!encoded.empty()) {
        const std::string_view plain = encoded.substr(0, encoded.find('%'));
        decoded += plain;
        encoded.remove_prefix(plain.size());
        if (!encoded.empty()) {
            decoded += static_cast<char>(valueOfHexDigit(encoded[1]) * 16 + valueOfHexDigit(encoded[2]));
            encoded.remove_prefix(3);
        }
    }
    return decoded;
}

std::optional<std::string> URL::fileSystemRepresentation() const {
    if (!isFileURL()) {
        return std::nullopt;
    }
    std::string bytes = path();
    if (bytes.empty() || bytes.find('\0') != std::string::npos) {
        return std::nullopt;
    }
    return bytes;
}

std::string URL::lastPathComponent() const {
    std::string bytes = path();
    const std::size_t end = bytes.find_last_not_of('/') + 1;
    if (end == 0) {
        return bytes.substr(0, 1);
    }
    bytes.resize(end);
    return bytes.erase(0, bytes.rfind('/') + 1);
}

void URL::keepResourceValue(std::string_view key, Value value) {
    // Earlier copies keep their own values.
    if (!kept_) {
        kept_ = std::make_shared<Dictionary>();
    } else if (kept_.use_count() > 1) {
        kept_ = std::make_shared<Dictionary>(*kept_);
    }
    kept_->set(key, std::move(value));
}

void URL::keepResourceValues(Dictionary values) {
    if (!kept_) {
        kept_ = std::make_shared<Dictionary>(std::move(values));
        return;
    }
    for (const Dictionary::Entry& entry : values) {
        keepResourceValue(entry.key, entry.value);
    }
}

const Value* URL::keptResourceValue(std::string_view key) const {
    return kept_ ? kept_->find(key) : nullptr;
}

std::optional<URL> localFileURL(std::string_view text) {
    const auto url = URL::fromText(text);
    if (!url || !url->isFileURL()) {
        return std::nullopt;
    }
    constexpr std::string_view authorityMark = "//";
    std::string_view rest = text.substr(fileScheme.size());
    if (rest.starts_with(authorityMark)) {
        rest.remove_prefix(authorityMark.size());
        const std::string_view host = rest.substr(0, rest.find('/'));
        if (!host.empty() && host != "localhost") {
            return std::nullopt;
        }
    }
    const auto path = url->fileSystemRepresentation();
    if (!path || !path->starts_with('/')) {
        return std::nullopt;
    }
    return URL::fileURLWithPath(*path);
}

std::string absolutePath(std::string_view name, std::string_view folder) {
    if (name.empty()) {
        return {};
    }
    std::string path;
    const auto appendComponents = [&path](std::string_view text) {
        for (const std::string_view component : nonEmptyPieces(text, '/')) {
            if (component != ".") {
                path.append("/").append(component);
            }
        }
    };
    if (!name.starts_with('/')) {
        appendComponents(folder);
    }
    appendComponents(name);
    const bool asksForFolder = name.ends_with('/') || name.ends_with("/.");
    if (path.empty() || asksForFolder) {
        path += '/';
    }
    return path;
}

} // namespace tolvane::platform
