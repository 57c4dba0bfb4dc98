#pragma once

#include "platform/bookmark/format/BookmarkStructure.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What the records of a read bookmark mean.
namespace tolvane::platform {

/// The three words that flags are stored as: the flags, which of them are known, and which were asked for by
/// name when the bookmark was made. A flag that is not known is neither set nor clear.
struct BookmarkFlags {
    std::uint64_t values = 0;
    std::uint64_t valid = 0;
    std::uint64_t requested = 0;

    friend bool operator==(const BookmarkFlags&, const BookmarkFlags&) = default;
};

/// The value of a record with all that it holds. Numbers are told by their width, and a date is one with
/// eight bytes. A relative URL becomes the text "part -- base", and a URL that cannot be one stays its text.
/// A record of unknown type, or of a length that its type does not have, becomes a dictionary of "type" and
/// "bytes".
Value bookmarkValue(const BookmarkStructure& structure, const BookmarkRecord& record);

/// The text of a URL record; of a relative one "part -- base".
std::string bookmarkURLText(const BookmarkStructure& structure, const BookmarkRecord& record);

/// Typed reading of the items of one table. A value of another kind than asked for counts as absent, and so
/// does everything when there is no table.
class BookmarkItems {
public:
    BookmarkItems(const BookmarkStructure& structure, const BookmarkTable* table)
        : structure_(&structure)
        , table_(table) {}

    /// The items of the first table with this identifier.
    BookmarkItems(const BookmarkStructure& structure, std::uint32_t identifier)
        : BookmarkItems(structure, structure.table(identifier)) {}

    const BookmarkRecord* record(std::uint32_t key) const;
    std::optional<std::string> string(std::uint32_t key) const;
    std::optional<std::int64_t> integer(std::uint32_t key) const;
    std::optional<bool> boolean(std::uint32_t key) const;
    std::optional<Date> date(std::uint32_t key) const;
    std::optional<BookmarkFlags> flags(std::uint32_t key) const;
    std::optional<Value> value(std::uint32_t key) const;

    /// The text of a URL.
    std::optional<std::string> urlText(std::uint32_t key) const;

    /// An array of strings alone.
    std::optional<std::vector<std::string>> strings(std::uint32_t key) const;

    /// An array of integers and nulls alone.
    std::optional<std::vector<std::optional<std::int64_t>>> integers(std::uint32_t key) const;

private:
    template <typename Kind>
    std::optional<Kind> valueOf(std::uint32_t key) const;
    std::optional<std::string> textOfType(std::uint32_t key, std::uint32_t type) const;

    const BookmarkStructure* structure_;
    const BookmarkTable* table_;
};

/// The three words, if the record is data of exactly that length.
std::optional<BookmarkFlags> bookmarkFlags(const BookmarkStructure& structure, const BookmarkRecord& record);

} // namespace tolvane::platform
