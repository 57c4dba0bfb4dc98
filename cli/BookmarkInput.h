#pragma once

#include "cli/Arguments.h"
#include "cli/ProgramSources.h"
#include "platform/Base64.h"
#include "platform/Error.h"
#include "platform/Value.h"

#include <cstddef>
#include <optional>
#include <string>

namespace tolvane::cli {

/// Longer files and longer standard input are refused. The longest bookmark that is read from an alias file
/// fits in base-64, with line ends.
inline constexpr std::size_t longestBookmarkInput = std::size_t{24} << 20U;

/// A bookmark as the user gave it.
struct BookmarkInput {
    /// For the input box of the resolver window: the text as it is, or the base-64 of the bookmark in bare
    /// form (of all bytes, where they are no sound bookmark).
    std::string text;

    /// The bytes themselves, where they were not given in base-64.
    std::optional<platform::Data> bytes;
};

/// Reads what the user gave. A file or standard input is taken for a bookmark itself when it begins with the
/// letters of one or holds a NUL, and for base-64 otherwise, unless it is a file that holds an alias record
/// from before there were bookmarks.
platform::Result<BookmarkInput> readBookmarkInput(
    const BookmarkOrigin& origin, const ProgramSources& sources);

/// Where a text, from which spaces, line feeds and tabs were taken out, stops being base-64, told by its
/// place in the whole text and by what stands there: "Expected at line 2, character 5: …; there is "!"."
std::string base64Complaint(std::string_view text, const platform::Base64Fault& fault);

} // namespace tolvane::cli
