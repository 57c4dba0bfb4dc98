#pragma once

#include "cli/JsonWriter.h"
#include "platform/Bookmarks.h"
#include "platform/bookmark/BookmarkStructure.h"

namespace tolvane::cli {

/// Writes a bookmark that was taken apart as one JSON object:
///
/// - "properties": every property under its name, values as JsonWriter writes them;
/// - "header": container, lengths, version and key, and what only an alias file has;
/// - "tables": in the order of the chain, each with its items; the value of an item is told by its offset;
/// - "records": every value once, by offset. Arrays hold the offsets of their elements, dictionaries pairs of
///   offsets of key and value, relative URLs the offsets of base and part. Data is hexadecimal, and a record
///   of unknown type, or of a length that its type does not have, is {"bytes": hexadecimal};
/// - "trailingLength", "warnings".
///
/// Offsets of tables and records count from the start of the data section, those of warnings from the first
/// byte. Integers are exact, all 64 bits of them. The length of the text is linear in that of the bookmark
/// and what sharing adds, which the reader limits.
void writeBookmarkJson(JsonWriter& json, const platform::BookmarkStructure& structure);

/// Writes where an item was found, and how, as one JSON object. "pathBytes" holds the path's bytes in
/// hexadecimal where the path is no UTF-8, and is null elsewhere.
void writeResolutionJson(
    JsonWriter& json, const platform::ResolvedBookmark& resolved, std::string_view volumePath);

} // namespace tolvane::cli
