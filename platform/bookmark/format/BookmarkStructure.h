#pragma once

#include "platform/bookmark/format/BookmarkKeys.h"
#include "platform/values/Value.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Parsed bookmark data, down to the last byte of padding.
namespace tolvane::platform {

/// Why bytes are not a readable bookmark: the offset, and what was expected there, for people.
struct BookmarkFault {
    /// What a message begins with before the description.
    static constexpr std::string_view message = "Not a readable bookmark:";

    std::size_t offset = 0;
    std::string_view expected;

    /// "expected a header of 48 bytes at byte 12."
    std::string description() const {
        return "expected " + std::string(expected) + " at byte " + std::to_string(offset) + ".";
    }

    /// The message and the description.
    std::string sentence() const { return std::string(message) + " " + description(); }

    friend bool operator==(const BookmarkFault&, const BookmarkFault&) = default;
};

/// Something unusual that does not keep a bookmark from being read.
struct BookmarkWarning {
    std::size_t offset = 0;
    std::string_view text;

    friend bool operator==(const BookmarkWarning&, const BookmarkWarning&) = default;
};

/// What the data section is wrapped in.
enum class BookmarkContainer {
    bare,      ///< Bookmark data as programs keep it; its first letters are "book".
    bareAlias, ///< The same with the letters "alis": an old alias record made into bookmark data.
    aliasFile, ///< The contents of an alias file.
};

/// Everything in front of the data section but its length.
struct BookmarkHeader {
    BookmarkContainer container = BookmarkContainer::bare;
    std::uint32_t version = bookmarkVersion;
    std::uint32_t size = bareHeaderSize;

    /// In bare containers alone. All zero unless the bookmark has a security scope.
    std::array<std::byte, 32> securityScopeKey{};

    /// In alias files alone.
    std::uint32_t repeatedSize = aliasFileHeaderSize;
    std::array<std::byte, 8> beforeTime{};
    std::uint64_t timeBits = 0;
    std::array<std::byte, 8> afterTime{};

    /// What a header longer than 48 or 56 bytes holds besides.
    Data extra;

    bool isAliasFile() const { return container == BookmarkContainer::aliasFile; }
    bool hasTeamIdentifier() const { return !teamIdentifier().empty(); }
    bool hasSecurityScopeKey() const { return securityScopeKey != std::array<std::byte, 32>{}; }

    /// The ten bytes in a bare header of version 0x10050000 that name the developer team of the program that
    /// made the bookmark, up to the first zero. Empty as a rule, and in other headers.
    std::string_view teamIdentifier() const;

    /// When an alias file says that it was written.
    Date writtenDate() const { return Date(std::bit_cast<double>(timeBits)); }
};

/// One value: its offset, type, length of the payload, and the bytes up to the next piece. Values that are
/// the same record share its offset.
struct BookmarkRecord {
    std::uint32_t offset = 0;
    std::uint32_t type = 0;
    std::uint32_t length = 0;
    std::uint32_t paddingLength = 0;
};

/// One line of a table: a key, the offset of its value, and a third word that is zero as a rule.
struct BookmarkItem {
    std::uint32_t key = 0;
    std::uint32_t valueOffset = 0;
    std::uint32_t flags = 0;

    bool isNamed() const { return (key & bookmark_key::namedBit) != 0; }
    std::uint32_t nameOffset() const { return key & ~bookmark_key::namedBit; }
};

/// One table of contents.
struct BookmarkTable {
    static constexpr std::uint32_t headLength = 20;
    static constexpr std::uint32_t itemLength = 12;

    std::uint32_t offset = 0;
    std::uint32_t byteCount = 0; ///< As written, which may be wrong.
    std::uint32_t identifier = 0;
    std::uint32_t nextOffset = 0; ///< 0 in the last table.
    std::vector<BookmarkItem> items;
    std::uint32_t paddingLength = 0;

    /// The first item with this key, or null.
    const BookmarkItem* find(std::uint32_t key) const;

    std::size_t length() const { return headLength + items.size() * itemLength; }
};

/// A parsed bookmark. Header, records, tables, paddings and trailing bytes cover every byte that was read, so
/// writing them in order gives the same bytes.
///
/// The reader has followed every offset: each leads to a record or table that is here; no record contains
/// itself, is more than 16 deep or overlaps another. Code that reads values relies on that.
struct BookmarkStructure {
    BookmarkHeader header;
    std::uint32_t leadingPadding = 0;    ///< Bytes between the first word of the section and its first piece.
    std::vector<BookmarkRecord> records; ///< In the order of their offsets.
    std::vector<BookmarkTable> tables;   ///< In the order of the chain; never empty.
    Data section;                        ///< The bytes in which payloads and paddings lie.
    Data trailing;                       ///< What follows the container.
    std::vector<BookmarkWarning> warnings;

    /// The first table with this identifier, or null.
    const BookmarkTable* table(std::uint32_t identifier) const;

    /// The record at an offset, or null.
    const BookmarkRecord* record(std::uint32_t offset) const;

    std::span<const std::byte> payload(const BookmarkRecord& record) const;

    /// A number of four bytes in a payload; 0 where there is none.
    std::uint32_t word(const BookmarkRecord& record, std::size_t index) const;

    /// The payload as text, for strings and absolute URLs.
    std::string_view text(const BookmarkRecord& record) const;
};

/// Calls `visit` with every record and every table, in the order of their offsets.
template <typename Visit>
void visitPieces(auto& structure, Visit visit) {
    std::vector<std::size_t> order(structure.tables.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        order[i] = i;
    }
    std::ranges::sort(order, {}, [&](std::size_t i) { return structure.tables[i].offset; });
    auto nextTable = order.begin();
    const auto visitTablesBefore = [&](std::uint64_t offset) {
        for (; nextTable != order.end() && structure.tables[*nextTable].offset < offset; ++nextTable) {
            visit(structure.tables[*nextTable]);
        }
    };
    for (auto& record : structure.records) {
        visitTablesBefore(record.offset);
        visit(record);
    }
    visitTablesBefore(std::uint64_t{1} << 32U);
}

} // namespace tolvane::platform
