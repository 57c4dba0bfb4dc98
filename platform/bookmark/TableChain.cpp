#include "platform/bookmark/TableChain.h"

#include "platform/bookmark/ByteCursor.h"

#include <algorithm>
#include <expected>
#include <string_view>

namespace tolvane::platform {

namespace {

class ChainReader {
public:
    ChainReader(BookmarkStructure& structure, SectionMap& map) : structure_(structure), map_(map) {}

    std::optional<BookmarkFault> read() {
        std::size_t place = 0;
        std::uint32_t offset = ByteCursor(structure_.section).u32le();
        do {
            std::expected<BookmarkTable, BookmarkFault> table = readTable(place, offset);
            if (!table) {
                return table.error();
            }
            noteOddities(*table);
            place = std::size_t{offset} + 12;
            offset = table->nextOffset;
            structure_.tables.push_back(std::move(*table));
        } while (offset != 0);
        return std::nullopt;
    }

private:
    /// Reads the table at an offset that is written at `place`.
    std::expected<BookmarkTable, BookmarkFault> readTable(std::size_t place, std::uint32_t offset) {
        const std::size_t length = structure_.section.size();
        if (offset < 4 || offset > length || length - offset < BookmarkTable::headLength) {
            return fault(place, "the offset of a table of contents within the data");
        }
        ByteCursor cursor(structure_.section);
        cursor.seek(offset);
        BookmarkTable table;
        table.offset = offset;
        table.byteCount = cursor.u32le();
        if (cursor.u32le() != record_type::table) {
            return fault(std::size_t{offset} + 4, "the type 0xFFFFFFFE of a table of contents");
        }
        if (map_.pieceStartingAt(offset)) {
            return fault(place, "a chain of tables of contents that does not loop");
        }
        table.identifier = cursor.u32le();
        table.nextOffset = cursor.u32le();
        const std::uint32_t count = cursor.u32le();
        if (count > cursor.remaining() / BookmarkTable::itemLength) {
            return fault(std::size_t{offset} + 16, "no more items than the data has room for");
        }
        // Memory is taken for bytes that are there, and those no other table has.
        const std::size_t tableLength =
            BookmarkTable::headLength + std::size_t{count} * BookmarkTable::itemLength;
        if (!map_.claim(offset, tableLength, 0)) {
            return fault(offset, "a table of contents that shares no bytes with another");
        }
        table.items.resize(count);
        for (BookmarkItem& item : table.items) {
            item.key = cursor.u32le();
            item.valueOffset = cursor.u32le();
            item.flags = cursor.u32le();
        }
        return table;
    }

    void noteOddities(const BookmarkTable& table) {
        const std::size_t start = structure_.header.size + std::size_t{table.offset};
        if (table.byteCount != table.length() - SectionMap::leastPieceLength) {
            structure_.warnings.push_back({start, "the byte count of a table of contents is wrong"});
        }
        const auto place = std::ranges::adjacent_find(
            table.items, [](std::uint32_t a, std::uint32_t b) { return a >= b; }, &BookmarkItem::key);
        if (place != table.items.end()) {
            const auto index = static_cast<std::size_t>(place - table.items.begin()) + 1;
            structure_.warnings.push_back(
                {start + BookmarkTable::headLength + index * BookmarkTable::itemLength,
                 "the keys of a table of contents do not rise"});
        }
    }

    std::unexpected<BookmarkFault> fault(std::size_t place, std::string_view expected) const {
        return std::unexpected(BookmarkFault{structure_.header.size + place, expected});
    }

    BookmarkStructure& structure_;
    SectionMap& map_;
};

} // namespace

std::optional<BookmarkFault> readTableChain(BookmarkStructure& structure, SectionMap& map) {
    return ChainReader(structure, map).read();
}

} // namespace tolvane::platform
