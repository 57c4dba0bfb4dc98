/// The bookmarks in tests/data/bookmarks, and bookmarks put together record by record.
#pragma once

#include "platform/bookmark/format/SectionComposer.h"

#include <string>
#include <string_view>
#include <vector>

namespace tolvane::tests {

std::string corpusPath(std::string_view name);
std::string corpusText(std::string_view name);
platform::Data corpusData(std::string_view name);
std::string base64Of(std::string_view bytes);

/// The bookmark whose only table has these items, for the target.
platform::Data bookmarkWithItems(
    platform::SectionComposer& composer, std::vector<platform::BookmarkItem> items);

/// A Dock, as a binary property list, with a tile "Note" beside each URL; the bookmarks of all lead to
/// /Users/demo/note.txt.
std::string dockWith(const std::vector<std::string>& urls);

} // namespace tolvane::tests
