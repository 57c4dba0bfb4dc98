// Parses any bytes as an alias record from before bookmarks, and as a resource fork with one.
#include "fuzz/Fuzz.h"
#include "platform/bookmark/format/BookmarkReader.h"
#include "platform/bookmark/format/OldAliasRecord.h"

#include <algorithm>

namespace {

using namespace tolvane;

void checkRecord(std::span<const std::byte> bytes) {
    const auto record = platform::oldAliasRecord(bytes);
    if (record) {
        fuzz::require(record->version == 2 || record->version == 3, "a record has a known version");
        fuzz::require(record->description().starts_with("old alias record"), "a record can be told of");
    }
    const platform::Data bookmark = platform::bookmarkOfAliasRecord(bytes);
    const auto structure = platform::readBookmark(bookmark);
    fuzz::require(structure && structure->warnings.empty(), "any record makes a bookmark");
    fuzz::require(
        structure->tables.size() == 1 && structure->tables.front().items.size() == 1, "of one item");
    const auto* const value = structure->record(structure->tables.front().items.front().valueOffset);
    fuzz::require(
        value != nullptr && std::ranges::equal(structure->payload(*value), bytes), "that is the record");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto bytes = fuzz::bytesOf(data, size);
    checkRecord(bytes);
    const auto resource = platform::aliasResourceInFork(bytes);
    if (resource) {
        const bool liesWithin = resource->empty()
                                || (resource->data() >= bytes.data()
                                    && resource->data() + resource->size() <= bytes.data() + bytes.size());
        fuzz::require(liesWithin, "a resource lies within its fork");
        checkRecord(*resource);
    }
    fuzz::require(
        platform::oldAliasRecordInResourceFork(bytes)
            == (resource ? platform::oldAliasRecord(*resource) : std::nullopt),
        "the record in a fork is that of its resource");
    return 0;
}
