#include "platform/bookmark/SectionReader.h"

#include "platform/Utf8.h"
#include "platform/bookmark/BookmarkReader.h"
#include "platform/bookmark/ByteCursor.h"
#include "platform/bookmark/TableChain.h"

#include <algorithm>
#include <type_traits>

namespace tolvane::platform {

namespace {

constexpr std::size_t recordHeadLength = 8;
constexpr std::size_t linkLength = 4;

constexpr std::string_view withinData = "the offset of a record within the data";
constexpr std::string_view ownBytes = "a record that shares no bytes with another";

bool isURL(std::uint32_t type) {
    return type == record_type::absoluteURL || type == record_type::relativeURL;
}

bool holdsLinks(std::uint32_t type) {
    return type == record_type::array || type == record_type::dictionary || type == record_type::relativeURL;
}

} // namespace

SectionReader::SectionReader(BookmarkStructure& structure)
    : structure_(structure)
    , map_(structure.section.size())
    , mostWeight_(mostSharing * structure.section.size() + sharingAllowance) {}

std::optional<BookmarkFault> SectionReader::read() {
    fault_ = readTableChain(structure_, map_);
    if (!failed()) {
        readItems();
    }
    if (!failed()) {
        std::ranges::sort(structure_.records, {}, &BookmarkRecord::offset);
        settlePaddings();
    }
    return fault_;
}

void SectionReader::readItems() {
    for (const BookmarkTable& table : structure_.tables) {
        if (failed()) {
            return;
        }
        readItemsOf(table);
    }
}

void SectionReader::readItemsOf(const BookmarkTable& table) {
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

std::optional<std::uint32_t> SectionReader::follow(std::size_t place, std::uint32_t offset, unsigned depth) {
    const std::size_t length = structure_.section.size();
    if (offset < 4 || offset > length || length - offset < recordHeadLength) {
        fail(place, withinData);
        return std::nullopt;
    }
    ByteCursor cursor(structure_.section);
    cursor.seek(std::size_t{offset} + 4);
    if (cursor.u32le() == record_type::table) {
        fail(place, "the offset of a record, not of a table of contents");
        return std::nullopt;
    }
    const std::optional<std::uint32_t> known = map_.pieceStartingAt(offset);
    if (!known) {
        return readRecord(place, offset, depth);
    }
    const unsigned height = measures_[*known].height;
    if (height == 0) {
        fail(place, "an offset that does not lead back to the record holding it");
        return std::nullopt;
    }
    if (depth - 1 + height > deepestBookmarkValue) {
        fail(place, "values at most 16 deep");
        return std::nullopt;
    }
    return known;
}

std::optional<std::uint32_t> SectionReader::readRecord(
    std::size_t place, std::uint32_t offset, unsigned depth) {
    ByteCursor cursor(structure_.section);
    cursor.seek(offset);
    BookmarkRecord record;
    record.offset = offset;
    record.length = cursor.u32le();
    record.type = cursor.u32le();
    if (record.length > cursor.remaining()) {
        fail(offset, "the length of a record that ends within the data");
        return std::nullopt;
    }
    const auto number = static_cast<std::uint32_t>(structure_.records.size());
    if (!map_.claim(offset, recordHeadLength + record.length, number)) {
        fail(offset, ownBytes);
        return std::nullopt;
    }
    if (depth > deepestBookmarkValue) {
        fail(place, "values at most 16 deep");
        return std::nullopt;
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

void SectionReader::checkPayload(const BookmarkRecord& record) {
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

void SectionReader::readLinks(const BookmarkRecord& record, Measure& measure, unsigned depth) {
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

void SectionReader::checkLink(
    const BookmarkRecord& record, std::size_t index, std::uint32_t type, std::size_t place) {
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

/// Gives every piece the bytes up to the next one. Up to three zeros, which make the next piece start on a
/// multiple of four, are what a writer leaves there; of anything else the first place is a warning.
void SectionReader::settlePaddings() {
    std::uint32_t* padding = &structure_.leadingPadding;
    std::size_t end = 4;
    bool warned = false;
    const auto closeGap = [&](std::size_t start) {
        *padding = static_cast<std::uint32_t>(start - end);
        const auto gap = std::span(structure_.section).subspan(end, start - end);
        const bool usual = gap.size() <= (4 - end % 4) % 4
                           && std::ranges::all_of(gap, [](std::byte byte) { return byte == std::byte{0}; });
        if (!usual && !warned) {
            structure_.warnings.push_back({structure_.header.size + end, "no offset leads to these bytes"});
            warned = true;
        }
    };
    const auto pass = [&](auto& piece, std::size_t length) {
        closeGap(piece.offset);
        padding = &piece.paddingLength;
        end = piece.offset + length;
    };
    visitPieces(structure_, [&](auto& piece) {
        if constexpr (std::is_same_v<std::remove_cvref_t<decltype(piece)>, BookmarkTable>) {
            pass(piece, piece.length());
        } else {
            pass(piece, recordHeadLength + piece.length);
        }
    });
    closeGap(structure_.section.size());
}

void SectionReader::fail(std::size_t place, std::string_view expected) {
    if (!failed()) {
        fault_ = BookmarkFault{structure_.header.size + place, expected};
    }
}

} // namespace tolvane::platform
