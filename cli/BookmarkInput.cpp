#include "cli/BookmarkInput.h"

#include "cli/FileBookmarks.h"
#include "cli/Names.h"
#include "platform/bookmark/format/AliasBookmark.h"
#include "platform/bookmark/format/BookmarkWriter.h"
#include "platform/values/HexDigits.h"
#include "platform/values/Utf8.h"
#include "resolver/AnalyseBookmark.h"

namespace tolvane::cli {

using platform::Data;
using platform::Result;

namespace {

bool isLeftOut(char c) {
    return c == ' ' || c == '\n' || c == '\t';
}

bool beginsLikeABookmark(std::string_view text) {
    return text.starts_with("book") || text.starts_with("alis");
}

/// A text has no NUL, so anything with one is not meant to be base-64.
bool isBinary(std::string_view text) {
    return beginsLikeABookmark(text) || text.contains('\0');
}

BookmarkInput inputOf(Data bytes) {
    auto structure = platform::readBookmarkOrAlias(bytes);
    Data bare = structure ? platform::bareBookmarkBytes(*structure) : bytes;
    const bool isRewritten = bare != bytes;
    return {{}, std::move(bare), std::move(structure), isRewritten};
}

BookmarkInput inputOfText(std::string text) {
    auto bookmark = resolver::decodedBookmark(resolver::cleanedBookmarkText(text));
    const std::span<const std::byte> none;
    auto structure = platform::readBookmarkOrAlias(bookmark ? std::span<const std::byte>(*bookmark) : none);
    return {std::move(text), std::move(bookmark), std::move(structure)};
}

BookmarkInput inputOf(std::string contents) {
    if (!isBinary(contents)) {
        return inputOfText(std::move(contents));
    }
    const auto bytes = std::as_bytes(std::span(contents));
    return inputOf(Data(bytes.begin(), bytes.end()));
}

Result<std::string> wholeTextOf(platform::InputStream& stream) {
    std::string text;
    std::array<char, 65'536> buffer{};
    while (true) {
        const Result<std::size_t> count = stream.read(buffer);
        if (!count) {
            return std::unexpected(count.error());
        }
        if (*count == 0) {
            return text;
        }
        if (*count > longestBookmarkInput - text.size()) {
            return std::unexpected(platform::cocoaError(
                platform::NSFileReadUnknownError,
                "more than " + std::to_string(longestBookmarkInput) + " bytes are not read"));
        }
        text.append(buffer.data(), *count);
    }
}

Result<BookmarkInput> readFile(const std::string& file, const ProgramSources& sources) {
    const auto stream = sources.openForReading(file);
    if (!stream) {
        return std::unexpected(stream.error());
    }
    Result<std::string> text = wholeTextOf(**stream);
    if (!text) {
        return std::unexpected(text.error());
    }
    if (!beginsLikeABookmark(*text)) {
        const auto url = urlOfName(file, sources.currentFolder());
        auto stored = url ? sources.bookmarks.bookmarkDataWithContentsOfURL(*url)
                          : Result<Data>(std::unexpected(url.error()));
        if (stored) {
            return inputOf(*std::move(stored));
        }
    }
    return inputOf(*std::move(text));
}

/// The first character in words that look the same on a terminal and elsewhere.
std::string whatIsThere(std::string_view rest) {
    if (rest.empty()) {
        return "there the text ends";
    }
    const platform::DecodedCharacter character = platform::decodeFirstCharacter(rest);
    if (!character.valid) {
        return "there is the byte 0x"
               + platform::hexText(static_cast<unsigned char>(rest.front()), 2, platform::HexCase::upper);
    }
    const bool isPlain = character.codePoint > 0x20 && character.codePoint < 0x7F && rest.front() != '"'
                         && rest.front() != '\\';
    return "there is "
           + (isPlain ? '"' + std::string(1, rest.front()) + '"'
                      : "U+" + platform::hexText(character.codePoint, 4, platform::HexCase::upper));
}

} // namespace

Result<BookmarkInput> readBookmarkInput(const BookmarkOrigin& origin, const ProgramSources& sources) {
    if (origin.text) {
        return inputOfText(*origin.text);
    }
    if (origin.file && origin.at) {
        const auto found = bookmarksInFile(*origin.file, sources);
        Result<Data> bytes = found ? bookmarkNumbered(*found, *origin.at) : std::unexpected(found.error());
        return bytes ? Result<BookmarkInput>(inputOf(*std::move(bytes))) : std::unexpected(bytes.error());
    }
    if (origin.file) {
        return readFile(*origin.file, sources);
    }
    Result<std::string> text = wholeTextOf(sources.standardInput);
    if (!text) {
        return std::unexpected(text.error());
    }
    return inputOf(*std::move(text));
}

std::string base64Complaint(std::string_view text, const platform::Base64Fault& fault) {
    // What comes before the fault is base-64 and what was left out: a character for each byte.
    std::size_t line = 1;
    std::size_t character = 1;
    std::size_t place = 0;
    std::size_t kept = 0;
    for (; place < text.size() && (kept < fault.offset || isLeftOut(text[place])); ++place) {
        kept += isLeftOut(text[place]) ? 0U : 1U;
        const bool endsLine = text[place] == '\n';
        line += endsLine ? 1U : 0U;
        character = endsLine ? 1 : character + 1;
    }
    std::string where = "character " + std::to_string(character);
    if (text.contains('\n')) {
        where = "line " + std::to_string(line) + ", " + where;
    }
    return "Expected at " + where + ": " + std::string(fault.expected) + "; "
           + whatIsThere(text.substr(place)) + ".";
}

} // namespace tolvane::cli
