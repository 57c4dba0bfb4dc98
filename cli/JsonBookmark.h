#pragma once

#include "cli/JsonWriter.h"
#include "platform/bookmark/format/BookmarkSalvage.h"
#include "platform/bookmark/format/BookmarkStructure.h"
#include "platform/services/Bookmarks.h"

#include <span>
#include <string_view>

namespace tolvane::cli {

/// Writes a parsed bookmark as one JSON object, every record once; docs/json.md lists its keys. The length of
/// the text is linear in that of the bookmark and what sharing adds, which the reader limits.
void writeBookmarkJson(JsonWriter& json, const platform::BookmarkStructure& structure);

/// Writes what is left of a broken bookmark as one JSON object.
void writeSalvageJson(JsonWriter& json, const platform::SalvagedBookmark& salvaged);

/// Writes where an item was found, and how, as one JSON object, with what is compared of it.
void writeResolutionJson(
    JsonWriter& json,
    const platform::ResolvedBookmark& resolved,
    std::string_view volumePath,
    std::span<const platform::ComparedFact> compared);

} // namespace tolvane::cli
