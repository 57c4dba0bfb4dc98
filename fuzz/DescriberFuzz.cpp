// Describes readable bookmarks.
#include "fuzz/Fuzz.h"
#include "platform/bookmark/description/AliasDescription.h"
#include "platform/bookmark/description/BookmarkDescription.h"
#include "platform/bookmark/description/BookmarkProperties.h"
#include "platform/bookmark/format/AliasBookmark.h"
#include "platform/bookmark/format/BookmarkReader.h"
#include "platform/values/Description.h"
#include "platform/values/Utf8.h"

#include <algorithm>
#include <string>

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tolvane;
    const auto structure = platform::readBookmark(fuzz::bytesOf(data, size));
    if (!structure) {
        return 0;
    }
    const std::string detailed = platform::bookmarkDetailedDescription(*structure);
    fuzz::require(platform::isValidUtf8(detailed), "a description is UTF-8");
    fuzz::require(detailed.size() <= 64 * size + (8U << 20U), "a description has its limit");
    std::size_t lines = structure->warnings.size() + (structure->header.hasSecurityScopeKey() ? 1U : 0U)
                        + (structure->header.hasTeamIdentifier() ? 1U : 0U);
    for (const platform::BookmarkTable& table : structure->tables) {
        lines += 1 + table.items.size();
    }
    if (const auto record = platform::aliasRecordIn(*structure)) {
        std::string text;
        platform::appendAliasDescription(text, *record);
        lines += static_cast<std::size_t>(std::ranges::count(text, '\n'));
    }
    const auto lineFeeds = static_cast<std::size_t>(std::ranges::count(detailed, '\n'));
    fuzz::require(lineFeeds == lines, "no value begins a line");
    const std::string properties = platform::description(platform::bookmarkProperties(*structure));
    fuzz::require(platform::isValidUtf8(properties), "described properties are UTF-8");
    return 0;
}
