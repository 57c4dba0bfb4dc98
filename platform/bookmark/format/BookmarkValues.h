#pragma once

#include "platform/bookmark/format/BookmarkStructure.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// What the records of a read bookmark mean.
namespace tolvane::platform {

/// The three words of flags: the flags, which are known, and which were requested by name when the bookmark
/// was made. Unknown flags are neither set nor clear.
struct BookmarkFlags {
    std::uint64_t values = 0;
    std::uint64_t valid = 0;
    std::uint64_t requested = 0;

    friend bool operator==(const BookmarkFlags&, const BookmarkFlags&) = default;
};

/// The value of a record with everything it contains. Numbers have their width, dates eight bytes. A relative
/// URL is the text "part -- base", an invalid URL its text. A record of unknown type or wrong length is a
/// dictionary of "type" and "bytes".
Value bookmarkValue(const BookmarkStructure& structure, const BookmarkRecord& record);

/// The text of a URL record; of a relative one "part -- base".
std::string bookmarkURLText(const BookmarkStructure& structure, const BookmarkRecord& record);

/// Typed access to the items of a table. Values of another type count as absent, as does a missing table.
class BookmarkItems {
public:
    BookmarkItems(const BookmarkStructure& structure, const BookmarkTable* table)
        : structure_(&structure)
        , table_(table) {}

    /// The items of the first table with this identifier.
    BookmarkItems(const BookmarkStructure& structure, std::uint32_t identifier)
        : BookmarkItems(structure, structure.table(identifier)) {}

    const BookmarkRecord* record(std::uint32_t key) const;
    std::optional<std::string> string(std::uint32_t key) const {
        return textOfType(key, record_type::string);
    }
    std::optional<std::int64_t> integer(std::uint32_t key) const;
    std::optional<bool> boolean(std::uint32_t key) const;
    std::optional<Date> date(std::uint32_t key) const;
    std::optional<BookmarkFlags> flags(std::uint32_t key) const;
    std::optional<Value> value(std::uint32_t key) const;

    /// The text of a URL.
    std::optional<std::string> urlText(std::uint32_t key) const {
        return textOfType(key, record_type::absoluteURL);
    }

    /// The text of a URL or a string.
    std::optional<std::string> urlOrString(std::uint32_t key) const {
        std::optional<std::string> text = urlText(key);
        return text ? std::move(text) : string(key);
    }

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
