// Reads any bytes as a bookmark, and as what old alias files hold.
#include "fuzz/Fuzz.h"
#include "platform/bookmark/BookmarkReader.h"
#include "platform/bookmark/OldAliasRecord.h"

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
    static_cast<void>(platform::oldAliasRecord(bytes));
    static_cast<void>(platform::oldAliasRecordInResourceFork(bytes));
    return 0;
}
