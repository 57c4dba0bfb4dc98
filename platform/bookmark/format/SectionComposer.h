#pragma once

#include "platform/bookmark/format/BookmarkValues.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::platform {

/// Builds a data section by appending records and tables. A record equal to an earlier one is not written
/// again: adding it gives the earlier one's offset. Sections must stay below 4 GiB.
class SectionComposer {
public:
    SectionComposer();

    std::uint32_t addString(std::string_view text);
    std::uint32_t addURL(std::string_view text);
    std::uint32_t addData(std::span<const std::byte> bytes) {
        return add(record_type::data, Data(bytes.begin(), bytes.end()));
    }
    std::uint32_t addInt32(std::uint32_t number);
    std::uint32_t addInt64(std::int64_t number);
    std::uint32_t addDate(const Date& date);
    std::uint32_t addTrue() { return add(record_type::booleanTrue, {}); }
    std::uint32_t addFalse() { return add(record_type::booleanFalse, {}); }
    std::uint32_t addNull() { return add(record_type::null, {}); }
    std::uint32_t addFlags(const BookmarkFlags& flags);
    std::uint32_t addArray(std::span<const std::uint32_t> offsets);

    /// Appends a table whose items are put in the order of their keys.
    std::uint32_t addTable(
        std::uint32_t identifier, std::uint32_t nextOffset, std::vector<BookmarkItem> items);

    /// The section, with the table at this offset as its first.
    Data take(std::uint32_t firstTable);

private:
    std::uint32_t add(std::uint32_t type, const Data& payload);
    std::uint32_t append(std::uint32_t type, const Data& payload);

    Data section_;
    std::map<std::pair<std::uint32_t, Data>, std::uint32_t> offsets_;
};

} // namespace tolvane::platform
