#pragma once

#include "platform/bookmark/BookmarkStructure.h"
#include "platform/bookmark/SectionMap.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace tolvane::platform {

/// Finds the tables and records of a data section: the inner half of `readBookmark`, with its promises.
///
/// First comes the chain of tables, then the value of every item with all that it leads to. Each piece is
/// read once; what is shared afterwards costs one look at the map of the section.
class SectionReader {
public:
    /// The structure has its header and section; the reader fills in the rest.
    explicit SectionReader(BookmarkStructure& structure);

    /// The first fault, counted from the start of the header, or nothing.
    std::optional<BookmarkFault> read();

private:
    /// What is known of a record once everything below it was read.
    struct Measure {
        std::uint64_t weight = 0; ///< Bytes when written out in full, held at the limit.
        unsigned height = 0;      ///< Levels from this record down; 0 while it is being read.
    };

    void readItems();
    void readItemsOf(const BookmarkTable& table);
    void settlePaddings();

    /// Follows an offset, written at `place`, to a record at a depth, and reads that if it is new.
    std::optional<std::uint32_t> follow(std::size_t place, std::uint32_t offset, unsigned depth);
    std::optional<std::uint32_t> readRecord(std::size_t place, std::uint32_t offset, unsigned depth);
    void checkPayload(const BookmarkRecord& record);
    void readLinks(const BookmarkRecord& record, Measure& measure, unsigned depth);
    void checkLink(const BookmarkRecord& record, std::size_t index, std::uint32_t type, std::size_t place);

    void fail(std::size_t place, std::string_view expected);
    bool failed() const { return fault_.has_value(); }

    BookmarkStructure& structure_;
    SectionMap map_;
    std::vector<Measure> measures_; ///< One for each record, by its number.
    std::uint64_t weight_ = 0;
    std::uint64_t mostWeight_;
    std::optional<BookmarkFault> fault_;
};

} // namespace tolvane::platform
