// Bookmarks that the tests share, and ways to make damaged ones by hand.
#pragma once

#include "platform/bookmark/format/BookmarkContents.h"
#include "platform/bookmark/format/BookmarkReader.h"
#include "tests/support/BookmarkCorpus.h"
#include "tests/support/Bytes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::tests {

/// A bookmark to /Users/demo/note.txt, byte for byte as the platform would write it, the same as an alias
/// file, and what both contain.
platform::Data noteBookmark();
platform::Data noteAliasFile();
platform::BookmarkContents noteContents();

/// A file on a volume below /Volumes that has no lasting file numbers, with every other fact there can be.
platform::BookmarkContents shareContents();

/// Bytes from hexadecimal digits; blanks are passed over.
platform::Data dataOfHex(std::string_view digits);

/// The bytes with a number of four bytes replaced.
platform::Data withU32(platform::Data bytes, std::size_t offset, std::uint32_t value);

/// Parses a bookmark; the test fails with the fault if it is not one.
platform::BookmarkStructure readWell(const platform::Data& bytes);

/// A data section made record by record. Offsets count from its start.
class HandmadeSection {
public:
    HandmadeSection();

    std::uint32_t end() const { return static_cast<std::uint32_t>(bytes_.size()); }

    std::uint32_t add(std::uint32_t type, const platform::Data& payload);
    std::uint32_t addText(std::uint32_t type, std::string_view text);
    std::uint32_t addWords(std::uint32_t type, const std::vector<std::uint32_t>& words);
    std::uint32_t addTable(
        std::uint32_t identifier, std::uint32_t next, const std::vector<platform::BookmarkItem>& items);

    /// Replaces a number of four bytes.
    void setWord(std::uint32_t offset, std::uint32_t word) {
        bytes_ = withU32(std::move(bytes_), offset, word);
    }

    /// Adds the only table, with these items, and returns the whole bookmark.
    platform::Data bookmark(const std::vector<platform::BookmarkItem>& items);

    /// The whole bookmark with this first table.
    platform::Data bookmarkWithTable(std::uint32_t table) const;

private:
    platform::Data bytes_;
};

} // namespace tolvane::tests
