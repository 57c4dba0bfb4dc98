#pragma once

#include "platform/bookmark/format/BookmarkValues.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace tolvane::platform {

/// Builds a data section by appending records and tables. A record equal to an earlier one is not written
/// again: adding it gives the earlier one's offset. Sections must stay below 4 GiB.
///
/// Everything is written in one run of bytes, with room for a header in front. Offsets count from the
/// section.
class SectionComposer {
public:
    /// Leaves `headerLength` zeros in front. The expected length of the section only saves moving it.
    explicit SectionComposer(std::size_t headerLength = 0, std::size_t expectedLength = 0);

    std::uint32_t addString(std::string_view text);
    std::uint32_t addURL(std::string_view text);
    std::uint32_t addData(std::span<const std::byte> bytes);
    std::uint32_t addInt32(std::uint32_t number);
    std::uint32_t addInt64(std::int64_t number);
    std::uint32_t addDate(const Date& date);
    std::uint32_t addTrue() { return addRecord(record_type::booleanTrue, {}); }
    std::uint32_t addFalse() { return addRecord(record_type::booleanFalse, {}); }
    std::uint32_t addNull() { return addRecord(record_type::null, {}); }
    std::uint32_t addFlags(const BookmarkFlags& flags);
    std::uint32_t addArray(std::span<const std::uint32_t> offsets);

    /// Appends a table whose items are put in the order of their keys.
    std::uint32_t addTable(
        std::uint32_t identifier, std::uint32_t nextOffset, std::vector<BookmarkItem> items);

    /// The room in front and the section, with the table at this offset as its first.
    Data take(std::uint32_t firstTable);

private:
    /// Appends a record or table with zeros for its payload, and returns its offset.
    std::uint32_t begin(std::uint32_t type, std::size_t length);

    /// Valid until the next is begun.
    std::byte* payloadAt(std::uint32_t offset);

    std::uint32_t addRecord(std::uint32_t type, std::span<const std::byte> payload);

    /// Removes the last record if an equal one is there; returns the offset of the one that stays.
    std::uint32_t shared(std::uint32_t offset);

    /// The place in `slots_` of an equal record, or the free one for this.
    std::size_t slotOf(std::uint32_t offset) const;
    /// With its padding.
    std::span<const std::byte> recordAt(std::uint32_t offset) const;
    void doubleSlots();

    std::size_t headerLength_;
    Data bytes_;
    std::vector<std::uint32_t> slots_; ///< A hash table of records' offsets, 0 where free; a power of two.
    std::size_t recordCount_ = 0;
};

} // namespace tolvane::platform
