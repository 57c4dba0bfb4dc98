#pragma once

#include "platform/services/FileContents.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

/// The text at the front of a file, which is what a preview shows of it.
namespace tolvane::platform {

enum class TextEncoding { utf8, utf16LittleEndian, utf16BigEndian };

/// A file's text encoding, judged by its first bytes; nothing if they do not look like text. A byte order
/// mark decides; without one it is UTF-8, possibly with invalid bytes.
std::optional<TextEncoding> textEncodingOf(std::span<const std::byte> front);

struct FileText {
    std::string text; ///< Valid UTF-8 without a byte order mark in front. Every line end is a line feed.
    std::uint64_t length = 0; ///< How many bytes of the file the text was read from.
    std::uint64_t fileSize = 0;

    bool isWhole() const { return length >= fileSize; }
};

/// How many bytes of a file are read as text.
inline constexpr std::uint64_t longestFileText = 1'048'576;
/// The most hidden characters in a text, since each is a piece of its own in a text widget.
inline constexpr std::size_t mostHiddenCharacters = 50'000;

/// Reads text up to these limits, ending with a whole character. Invalid parts become U+FFFD.
FileAnswer<FileText> readFileText(const OpenedFile& file, TextEncoding encoding);

} // namespace tolvane::platform
