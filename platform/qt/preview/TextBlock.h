#pragma once

#include "platform/FileContents.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

/// A stretch of a text file, cut into the lines that are shown.
namespace tolvane::platform {

enum class TextEncoding { utf8, utf16LittleEndian, utf16BigEndian };

/// How a file's text is stored, judged by its front; nothing when that does not look like text. A mark of the
/// byte order decides; without one it is UTF-8, damaged in places perhaps.
std::optional<TextEncoding> textEncodingOf(std::span<const std::byte> front);

struct TextLine {
    std::uint64_t offset = 0; ///< Of its first byte in the file.
    QString text;             ///< Without its end; tabs written out, hidden characters made visible.

    friend bool operator==(const TextLine&, const TextLine&) = default;
};

struct TextBlock {
    std::vector<TextLine> lines; ///< Without gaps. A line too long to be shown in one is cut into several.
    std::uint64_t fileSize = 0;
    bool reachesEnd = false; ///< Whether nothing follows the last line.

    bool reachesBegin() const { return lines.empty() || lines.front().offset == 0; }

    /// The index of the line that this byte of the file belongs to, or of the nearest one.
    std::size_t lineAt(std::uint64_t offset) const;
};

/// How far a block reaches before and behind the offset it is asked for, in bytes; and where lines without
/// an end are cut.
inline constexpr std::uint64_t textBlockReach = 131'072;
inline constexpr std::uint64_t longestTextLine = 4096;

/// The lines around this offset, or the last ones when the file has become shorter. Two calls cut a line that
/// is longer than a block in different places, perhaps.
FileAnswer<TextBlock> readTextBlock(const OpenedFile& file, TextEncoding encoding, std::uint64_t offset);

/// The whole text as the file has it, but for a mark of the byte order in front and for U+FFFD in place of
/// what cannot be read. Of a file that is longer than so many bytes it is the beginning, perhaps with half a
/// character at its end.
FileAnswer<QString> readWholeText(const OpenedFile& file, TextEncoding encoding, std::uint64_t longest);

} // namespace tolvane::platform
