// Parses any bytes as a bookmark.
#include "fuzz/Fuzz.h"
#include "platform/bookmark/format/BookmarkHeader.h"
#include "platform/bookmark/format/BookmarkReader.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tolvane;
    const auto bytes = fuzz::bytesOf(data, size);
    const auto structure = platform::readBookmark(bytes);
    if (!structure) {
        fuzz::require(structure.error().offset <= size, "a fault lies within the bytes");
        fuzz::require(!structure.error().expected.empty(), "a fault says what was expected");
    } else {
        for (const platform::BookmarkTable& table : structure->tables) {
            for (const platform::BookmarkItem& item : table.items) {
                fuzz::require(structure->record(item.valueOffset) != nullptr, "every item leads to a record");
            }
        }
    }
    const auto front = bytes.first(std::min(size, platform::bookmarkFrontLength));
    const auto claimed = platform::claimedBookmarkLength(front);
    fuzz::require(claimed == platform::claimedBookmarkLength(bytes), "the front says how long it is");
    if (structure) {
        fuzz::require(claimed && *claimed <= size, "what can be read is as long as it says");
    }
    return 0;
}
