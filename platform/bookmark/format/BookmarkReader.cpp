#include "platform/bookmark/format/BookmarkReader.h"

#include "platform/bookmark/format/BookmarkHeader.h"
#include "platform/values/ByteCursor.h"
#include "platform/values/Utf8.h"

namespace tolvane::platform {

namespace {

constexpr std::size_t recordHeadLength = 8;
constexpr std::size_t linkLength = 4;
constexpr std::size_t usualRecordCount = 32;

bool isURL(std::uint32_t type) {
    return type == record_type::absoluteURL || type == record_type::relativeURL;
}

bool holdsLinks(std::uint32_t type) {
    return type == record_type::array || type == record_type::dictionary || type == record_type::relativeURL;
}

/// Which bytes of a section belong to which piece (a record or a table). No byte belongs to two, so however
/// often offsets lead to a piece, reading hostile data stays linear. The map takes five eighths of the
/// section's length.
class SectionMap {
public:
    /// Every piece has a type and a length in front, so two of them start at least this far apart.
    static constexpr std::size_t leastPieceLength = 8;

    explicit SectionMap(std::size_t sectionLength)
        : claimed_(sectionLength / bitsInWord + 1)
        , starts_(sectionLength / leastPieceLength + 1) {}

    /// Assigns bytes, at least `leastPieceLength`, to a piece. False if one of them is taken; then the map is
    /// invalid.
    bool claim(std::size_t offset, std::size_t length, std::uint32_t number) {
        const std::size_t end = offset + length;
        for (std::size_t i = offset; i < end;) {
            const std::size_t first = i % bitsInWord;
            const std::size_t count = std::min(bitsInWord - first, end - i);
            const std::uint64_t bits = ~std::uint64_t{0} >> (bitsInWord - count) << first;
            if ((claimed_[i / bitsInWord] & bits) != 0) {
                return false;
            }
            claimed_[i / bitsInWord] |= bits;
            i += count;
        }
        // The place within the stretch in three bits, and the number, of which there are fewer than 2^29.
        starts_[offset / leastPieceLength] = static_cast<std::uint32_t>(
            (std::size_t{number} + 1) * leastPieceLength + offset % leastPieceLength);
        return true;
    }

    /// The number of the piece that starts at an offset within the section.
    std::optional<std::uint32_t> pieceStartingAt(std::size_t offset) const {
        const std::uint32_t start = starts_[offset / leastPieceLength];
        const bool isStart = start != 0 && start % leastPieceLength == offset % leastPieceLength;
        return isStart ? std::optional(start / std::uint32_t{leastPieceLength} - 1) : std::nullopt;
    }

private:
    static constexpr std::size_t bitsInWord = 64;

    std::vector<std::uint64_t> claimed_; ///< One bit for each byte.
    std::vector<std::uint32_t> starts_;  ///< One for each stretch of `leastPieceLength` bytes; 0 without one.
};

/// Reads tables and records into a structure that has its header and section: first the chain of tables, then
/// the values of all items with everything they refer to. Each piece is read once.
class SectionReader {
public:
    explicit SectionReader(BookmarkStructure& structure)
        : structure_(structure)
        , map_(structure.section.size())
        , mostWeight_(mostSharing * structure.section.size() + sharingAllowance) {
        // As many as usual at once, for the many short bookmarks.
        const std::size_t count = std::min(structure.section.size() / recordHeadLength, usualRecordCount);
        structure_.records.reserve(count);
        measures_.reserve(count);
    }

    /// The first fault, counted from the start of the header, or nothing.
    std::optional<BookmarkFault> read() {
        readTables();
        for (const BookmarkTable& table : structure_.tables) {
            if (!failed()) {
                readItems(table);
            }
        }
        if (!failed()) {
            std::ranges::sort(structure_.records, {}, &BookmarkRecord::offset);
            settlePaddings();
        }
        return fault_;
    }

private:
    /// What is known of a record once everything below it was read.
    struct Measure {
        std::uint64_t weight = 0; ///< Bytes when written out in full, held at the limit.
        unsigned height = 0;      ///< Levels from this record down; 0 while it is being read.
    };

    void readTables() {
        std::size_t place = 0;
        std::uint32_t offset = ByteCursor(structure_.section).u32le();
        do {
            readTable(place, offset);
            if (failed()) {
                return;
            }
            place = std::size_t{offset} + 12;
            offset = structure_.tables.back().nextOffset;
        } while (offset != 0);
    }

    /// Reads the table at an offset that is written at `place`.
    void readTable(std::size_t place, std::uint32_t offset) {
        const std::size_t length = structure_.section.size();
        if (offset < 4 || offset > length || length - offset < BookmarkTable::headLength) {
            return fail(place, "the offset of a table of contents within the data");
        }
        ByteCursor cursor(structure_.section);
        cursor.seek(offset);
        BookmarkTable table;
        table.offset = offset;
        table.byteCount = cursor.u32le();
        if (cursor.u32le() != record_type::table) {
            return fail(std::size_t{offset} + 4, "the type 0xFFFFFFFE of a table of contents");
        }
        if (map_.pieceStartingAt(offset)) {
            return fail(place, "a chain of tables of contents that does not loop");
        }
        table.identifier = cursor.u32le();
        table.nextOffset = cursor.u32le();
        const std::uint32_t count = cursor.u32le();
        if (count > cursor.remaining() / BookmarkTable::itemLength) {
            return fail(std::size_t{offset} + 16, "no more items than the data has room for");
        }
        // Memory is taken for bytes that are there and belong to no other table.
        const std::size_t tableLength =
            BookmarkTable::headLength + std::size_t{count} * BookmarkTable::itemLength;
        if (!map_.claim(offset, tableLength, 0)) {
            return fail(offset, "a table of contents that shares no bytes with another");
        }
        table.items.resize(count);
        for (BookmarkItem& item : table.items) {
            item.key = cursor.u32le();
            item.valueOffset = cursor.u32le();
            item.flags = cursor.u32le();
        }
        warnOf(table);
        structure_.tables.push_back(std::move(table));
    }

    void warnOf(const BookmarkTable& table) {
        if (table.byteCount != table.length() - SectionMap::leastPieceLength) {
            warn(table.offset, "the byte count of a table of contents is wrong");
        }
        const auto place = std::ranges::adjacent_find(
            table.items, [](std::uint32_t a, std::uint32_t b) { return a >= b; }, &BookmarkItem::key);
        if (place != table.items.end()) {
            const auto index = static_cast<std::size_t>(place - table.items.begin()) + 1;
            warn(
                table.offset + BookmarkTable::headLength + index * BookmarkTable::itemLength,
                "the keys of a table of contents do not rise");
        }
    }

    void readItems(const BookmarkTable& table) {
        std::size_t place = std::size_t{table.offset} + BookmarkTable::headLength;
        for (const BookmarkItem& item : table.items) {
            if (item.isNamed()) {
                const auto name = follow(place, item.nameOffset(), 1);
                if (!name) {
                    return;
                }
                if (structure_.records[*name].type != record_type::string) {
                    return fail(place, "the offset of a string that names the key");
                }
                weight_ += measures_[*name].weight;
            }
            const auto value = follow(place + linkLength, item.valueOffset, 1);
            if (!value) {
                return;
            }
            weight_ += measures_[*value].weight;
            if (weight_ > mostWeight_) {
                return fail(place + linkLength, "values that are not shared too often to be written out");
            }
            place += BookmarkTable::itemLength;
        }
    }

    /// Follows an offset, written at `place`, to a record, reads that if it is new, and returns its number.
    std::optional<std::uint32_t> follow(std::size_t place, std::uint32_t offset, unsigned depth) {
        const std::size_t length = structure_.section.size();
        if (offset < 4 || offset > length || length - offset < recordHeadLength) {
            return noRecord(place, "the offset of a record within the data");
        }
        ByteCursor cursor(structure_.section);
        cursor.seek(std::size_t{offset} + 4);
        if (cursor.u32le() == record_type::table) {
            return noRecord(place, "the offset of a record, not of a table of contents");
        }
        const std::optional<std::uint32_t> known = map_.pieceStartingAt(offset);
        if (!known) {
            return readRecord(place, offset, depth);
        }
        const unsigned height = measures_[*known].height;
        if (height == 0) {
            return noRecord(place, "an offset that does not lead back to the record holding it");
        }
        if (depth - 1 + height > deepestBookmarkValue) {
            return noRecord(place, "values at most 16 deep");
        }
        return known;
    }

    std::optional<std::uint32_t> readRecord(std::size_t place, std::uint32_t offset, unsigned depth) {
        ByteCursor cursor(structure_.section);
        cursor.seek(offset);
        BookmarkRecord record;
        record.offset = offset;
        record.length = cursor.u32le();
        record.type = cursor.u32le();
        if (record.length > cursor.remaining()) {
            return noRecord(offset, "the length of a record that ends within the data");
        }
        const auto number = static_cast<std::uint32_t>(structure_.records.size());
        if (!map_.claim(offset, recordHeadLength + record.length, number)) {
            return noRecord(offset, "a record that shares no bytes with another");
        }
        if (depth > deepestBookmarkValue) {
            return noRecord(place, "values at most 16 deep");
        }
        checkPayload(record);
        structure_.records.push_back(record);
        measures_.emplace_back();
        Measure measure{recordHeadLength + record.length, 1};
        if (!failed() && holdsLinks(record.type)) {
            readLinks(record, measure, depth);
        }
        measures_[number] = measure;
        return failed() ? std::nullopt : std::optional(number);
    }

    void checkPayload(const BookmarkRecord& record) {
        const bool isText = record.type == record_type::string || record.type == record_type::absoluteURL;
        if (isText && !isValidUtf8(structure_.text(record))) {
            return fail(record.offset + recordHeadLength, "text in UTF-8");
        }
        if (record.type == record_type::array && record.length % linkLength != 0) {
            return fail(record.offset, "an array of whole offsets");
        }
        if (record.type == record_type::dictionary && record.length % (2 * linkLength) != 0) {
            return fail(record.offset, "a dictionary of whole pairs of offsets");
        }
        if (record.type == record_type::relativeURL && record.length != 2 * linkLength) {
            return fail(record.offset, "a relative URL of two offsets");
        }
    }

    void readLinks(const BookmarkRecord& record, Measure& measure, unsigned depth) {
        for (std::size_t i = 0; i < record.length / linkLength; ++i) {
            const std::size_t place = record.offset + recordHeadLength + i * linkLength;
            const auto child = follow(place, structure_.word(record, i), depth + 1);
            if (!child) {
                return;
            }
            checkLink(record, i, structure_.records[*child].type, place);
            // Held at one past the limit, which is where reading ends, so that no sum can overflow.
            measure.weight = std::min(measure.weight + measures_[*child].weight, mostWeight_ + 1);
            measure.height = std::max(measure.height, measures_[*child].height + 1);
        }
    }

    void checkLink(const BookmarkRecord& record, std::size_t index, std::uint32_t type, std::size_t place) {
        const bool isFirst = index % 2 == 0;
        if (record.type == record_type::dictionary && isFirst && type != record_type::string) {
            return fail(place, "the offset of a string as the key of a dictionary");
        }
        if (record.type == record_type::relativeURL) {
            if (isFirst && !isURL(type)) {
                return fail(place, "the offset of a URL as the base of another");
            }
            if (!isFirst && type != record_type::string) {
                return fail(place, "the offset of a string as the relative part of a URL");
            }
        }
    }

    /// Assigns to every piece the bytes up to the next one. Writers leave up to three zeros there, for
    /// alignment to four; the first other place is a warning.
    void settlePaddings() {
        std::uint32_t* padding = &structure_.leadingPadding;
        std::size_t end = 4;
        bool warned = false;
        const auto closeGap = [&](std::size_t start) {
            *padding = static_cast<std::uint32_t>(start - end);
            const auto gap = std::span(structure_.section).subspan(end, start - end);
            const bool usual =
                gap.size() <= (4 - end % 4) % 4
                && std::ranges::all_of(gap, [](std::byte byte) { return byte == std::byte{0}; });
            if (!usual && !warned) {
                warn(end, "no offset leads to these bytes");
                warned = true;
            }
        };
        visitPieces(structure_, [&](auto& piece) {
            closeGap(piece.offset);
            padding = &piece.paddingLength;
            if constexpr (std::is_same_v<std::remove_cvref_t<decltype(piece)>, BookmarkTable>) {
                end = piece.offset + piece.length();
            } else {
                end = piece.offset + recordHeadLength + piece.length;
            }
        });
        closeGap(structure_.section.size());
    }

    void warn(std::size_t place, std::string_view text) {
        structure_.warnings.push_back({structure_.header.size + place, text});
    }

    /// Notes the first fault.
    void fail(std::size_t place, std::string_view expected) {
        if (!failed()) {
            fault_ = BookmarkFault{structure_.header.size + place, expected};
        }
    }

    std::nullopt_t noRecord(std::size_t place, std::string_view expected) {
        fail(place, expected);
        return std::nullopt;
    }

    bool failed() const { return fault_.has_value(); }

    BookmarkStructure& structure_;
    SectionMap map_;
    std::vector<Measure> measures_; ///< One for each record, by its number.
    std::uint64_t weight_ = 0;
    std::uint64_t mostWeight_;
    std::optional<BookmarkFault> fault_;
};

} // namespace

std::expected<BookmarkStructure, BookmarkFault> readBookmark(std::span<const std::byte> bytes) {
    std::expected<ReadHeader, BookmarkFault> read = readBookmarkHeader(bytes);
    if (!read) {
        return std::unexpected(read.error());
    }
    BookmarkStructure structure;
    structure.header = std::move(read->header);
    structure.warnings = std::move(read->warnings);
    const std::span<const std::byte> rest = bytes.subspan(structure.header.size);
    const auto section = rest.first(read->sectionLength);
    const auto trailing = rest.subspan(read->sectionLength);
    structure.section.assign(section.begin(), section.end());
    structure.trailing.assign(trailing.begin(), trailing.end());
    if (!trailing.empty()) {
        structure.warnings.push_back({bytes.size() - trailing.size(), "bytes follow the bookmark"});
    }
    if (const auto fault = SectionReader(structure).read()) {
        return std::unexpected(*fault);
    }
    return structure;
}

} // namespace tolvane::platform
