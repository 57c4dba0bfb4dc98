#pragma once

#include "cli/Arguments.h"
#include "cli/Program.h"
#include "platform/bookmark/format/BookmarkStructure.h"
#include "platform/values/Base64.h"
#include "platform/values/Error.h"
#include "platform/values/Value.h"

#include <cstddef>
#include <expected>
#include <string>
#include <string_view>

namespace tolvane::cli {

/// Longer input is refused. The longest bookmark in an alias file fits in base-64, with line ends.
inline constexpr std::size_t longestBookmarkInput = std::size_t{24} << 20U;

/// A bookmark as the user gave it: in base-64, or as the bytes themselves.
struct BookmarkInput {
    /// The base-64 as it was given; empty where bytes were given.
    std::string text;

    /// What is analysed and resolved: the decoded text, or why it is not base-64; of bytes the bookmark in
    /// bare form (all of them, where they are not a readable bookmark).
    std::expected<platform::Data, platform::Base64Fault> bookmark;

    /// The bookmark that was read from the decoded text, or from the bytes as they were given.
    std::expected<platform::BookmarkStructure, platform::BookmarkFault> structure;

    /// Whether the bare form is not what was given.
    bool isRewritten = false;
};

/// Reads the input. A file or standard input is bytes if it begins like a bookmark or contains a NUL,
/// otherwise base-64, except for a file with an alias record from before there were bookmarks. With a number
/// it is a file of any kind that contains bookmarks.
platform::Result<BookmarkInput> readBookmarkInput(
    const BookmarkOrigin& origin, const ProgramSources& sources);

/// Where a text, from which spaces, line feeds and tabs were removed, stops being base-64: the place in the
/// whole text, and the character found there: "Expected at line 2, character 5: …; there is "!"."
std::string base64Complaint(std::string_view text, const platform::Base64Fault& fault);

} // namespace tolvane::cli
