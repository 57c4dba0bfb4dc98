#include "platform/bookmark/format/BookmarkSalvage.h"

#include "platform/bookmark/format/BookmarkHeader.h"
#include "platform/bookmark/format/BookmarkReader.h"
#include "platform/values/ByteCursor.h"
#include "platform/values/Utf8.h"

#include <algorithm>

namespace tolvane::platform {

namespace {

constexpr std::uint32_t recordHead = 8;

/// The bytes with the length that they have in the place of the one that they state, so that the header can
/// be read.
Data withOwnLength(std::span<const std::byte> bytes) {
    constexpr std::size_t bareLengthOffset = 4;
    constexpr std::size_t headerLengthOffset = 16;
    constexpr std::size_t sectionLengthOffset = 24;
    ByteCursor cursor(bytes);
    cursor.seek(bareLengthOffset);
    std::size_t offset = bareLengthOffset;
    std::size_t length = bytes.size();
    if (cursor.u32le() == 0) { // An alias file.
        cursor.seek(headerLengthOffset);
        length -= std::min<std::size_t>(length, cursor.u32le());
        offset = sectionLengthOffset;
    }
    Data changed(bytes.begin(), bytes.end());
    if (changed.size() >= offset + 4) {
        Data number;
        appendU32le(number, static_cast<std::uint32_t>(length));
        std::ranges::copy(number, changed.begin() + static_cast<std::ptrdiff_t>(offset));
    }
    return changed;
}

bool isLengthOf(std::uint32_t type, std::uint32_t length) {
    switch (type) {
    case record_type::string:
    case record_type::data:
    case record_type::absoluteURL:
        return true;
    case record_type::int8:
        return length == 1;
    case record_type::int16:
        return length == 2;
    case record_type::int32:
    case record_type::float32:
        return length == 4;
    case record_type::int64:
    case record_type::float64:
    case record_type::date:
    case record_type::relativeURL:
        return length == 8;
    case record_type::uuid:
        return length == 16;
    case record_type::array:
        return length % 4 == 0;
    case record_type::dictionary:
        return length % 8 == 0;
    case record_type::booleanFalse:
    case record_type::booleanTrue:
    case record_type::null:
        return length == 0;
    default:
        return false;
    }
}

class Salvage {
public:
    explicit Salvage(SalvagedBookmark& salvaged)
        : salvaged_(salvaged)
        , section_(salvaged.structure.section)
        , checksLeft_(mostSharing * section_.size() + sharingAllowance) {}

    void run() {
        ByteCursor first(section_);
        salvaged_.firstTableOffset = first.u32le();
        std::size_t position = 4;
        while (position < section_.size()) {
            const std::size_t end = pieceAt(position);
            if (end != 0) {
                closeGap(position);
                position = std::min((end + 3) / 4 * 4, section_.size());
                covered_ = isZero(end, position) ? position : end;
            } else if (isCutAt(position)) {
                break;
            } else {
                position += 4;
            }
        }
        closeGap(section_.size());
        if (salvaged_.statedSectionLength > section_.size()) {
            salvaged_.missing.push_back(
                {section_.size(), salvaged_.statedSectionLength - section_.size(), true});
        }
    }

private:
    /// Keeps the piece that begins here and returns where it ends; 0 if there is none.
    std::size_t pieceAt(std::size_t position) {
        ByteCursor cursor(section_);
        cursor.seek(position);
        const std::uint32_t length = cursor.u32le();
        const std::uint32_t type = cursor.u32le();
        if (cursor.failed()) {
            return 0;
        }
        return type == record_type::table ? tableAt(position) : recordAt(position, length, type);
    }

    std::size_t tableAt(std::size_t position) {
        ByteCursor cursor(section_);
        cursor.seek(position);
        BookmarkTable table;
        table.offset = static_cast<std::uint32_t>(position);
        table.byteCount = cursor.u32le();
        cursor.take(4);
        table.identifier = cursor.u32le();
        table.nextOffset = cursor.u32le();
        const std::uint32_t count = cursor.u32le();
        if (cursor.failed()) {
            return 0;
        }
        const std::size_t there =
            std::min<std::size_t>(count, cursor.remaining() / BookmarkTable::itemLength);
        for (std::size_t i = 0; i < there; ++i) {
            const std::uint32_t key = cursor.u32le();
            const std::uint32_t valueOffset = cursor.u32le();
            table.items.push_back({key, valueOffset, cursor.u32le()});
        }
        const std::size_t end = cursor.position();
        salvaged_.structure.tables.push_back(std::move(table));
        return end;
    }

    std::size_t recordAt(std::size_t position, std::uint32_t length, std::uint32_t type) {
        const std::size_t start = position + recordHead;
        if (!isLengthOf(type, length) || length > section_.size() - start) {
            return 0;
        }
        BookmarkRecord record;
        record.offset = static_cast<std::uint32_t>(position);
        record.length = length;
        record.type = type;
        const bool isText = type == record_type::string || type == record_type::absoluteURL;
        if (isText && !isValidText(record)) {
            return 0;
        }
        salvaged_.structure.records.push_back(record);
        return start + length;
    }

    /// Lengths that overlap could have the same bytes looked at again and again.
    bool isValidText(const BookmarkRecord& record) {
        if (record.length > checksLeft_) {
            return false;
        }
        checksLeft_ -= record.length;
        return isValidUtf8(salvaged_.structure.text(record));
    }

    /// Whether a record begins here that ends within what the header states, but not within what is there.
    bool isCutAt(std::size_t position) const {
        ByteCursor cursor(section_);
        cursor.seek(position);
        const std::uint32_t length = cursor.u32le();
        const std::uint32_t type = cursor.u32le();
        const std::uint64_t end = std::uint64_t{position} + recordHead + length;
        return !cursor.failed() && isLengthOf(type, length) && end > section_.size()
               && end <= salvaged_.statedSectionLength;
    }

    bool isZero(std::size_t start, std::size_t end) const {
        return std::ranges::all_of(std::span(section_).subspan(start, end - start), [](std::byte byte) {
            return byte == std::byte{0};
        });
    }

    /// Notes what lies between the last piece, with its padding, and this place.
    void closeGap(std::size_t end) {
        if (end > covered_) {
            salvaged_.missing.push_back({covered_, end - covered_, false});
        }
    }

    SalvagedBookmark& salvaged_;
    const Data& section_;
    std::uint64_t checksLeft_;
    std::size_t covered_ = 4;
};

} // namespace

std::expected<SalvagedBookmark, BookmarkFault> salvageBookmark(std::span<const std::byte> bytes) {
    const auto whole = readBookmark(bytes);
    if (whole) {
        return std::unexpected(BookmarkFault{0, "a bookmark that is cut short or damaged"});
    }
    const Data changed = withOwnLength(bytes);
    auto read = readBookmarkHeader(changed);
    if (!read) {
        return std::unexpected(read.error());
    }
    SalvagedBookmark salvaged;
    salvaged.fault = whole.error();
    salvaged.structure.header = std::move(read->header);
    salvaged.structure.warnings = std::move(read->warnings);
    const std::uint64_t header = salvaged.structure.header.size;
    const std::uint64_t stated = claimedBookmarkLength(bytes).value_or(0);
    salvaged.statedSectionLength = stated > header ? stated - header : 0;
    // What follows a bookmark that is damaged, but not cut short, is none of its own.
    const std::uint64_t there = bytes.size() - header;
    const auto section = bytes.subspan(
        header,
        static_cast<std::size_t>(
            salvaged.statedSectionLength >= 4 ? std::min(there, salvaged.statedSectionLength) : there));
    salvaged.structure.section.assign(section.begin(), section.end());
    Salvage(salvaged).run();
    return salvaged;
}

} // namespace tolvane::platform
