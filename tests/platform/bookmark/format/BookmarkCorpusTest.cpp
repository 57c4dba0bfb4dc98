// The bookmarks in tests/data/bookmarks: some as the composer made them, others made or damaged by hand and
// named for what is odd or bad about them. The fuzz targets start from them.
#include "platform/bookmark/description/BookmarkDescription.h"
#include "platform/bookmark/format/AliasBookmark.h"
#include "platform/bookmark/format/BookmarkComposer.h"
#include "platform/bookmark/format/BookmarkWriter.h"
#include "platform/values/Utf8.h"
#include "tests/platform/bookmark/Examples.h"

#include <filesystem>
#include <set>

namespace tolvane::platform {
namespace {

using namespace tests;

/// A file, and the place and words of its one warning, or of its fault.
struct Entry {
    std::string_view file;
    std::size_t offset = 0;
    std::string_view words = {};
};

constexpr Entry readable[] = {
    {"note.bookmark"},
    {"note.alias"},
    {"share.bookmark"},
    {"share.alias"},
    {"root.alias"},
    {"nothing.bookmark"},
    {"every-type.bookmark"},
    {"named-keys.bookmark"},
    {"three-tables.bookmark"},
    {"alias-record.bookmark"},
    {"team.bookmark"},
    {"url.bookmark"},
    {"odd-version-word.bookmark", 8, "the version word is neither 0x10040000 nor 0x10050000"},
    {"odd-short-header-of-version.bookmark", 12,
     "the header of a bookmark of version 0x10050000 has not 64 bytes"},
    {"odd-byte-count-of-table.bookmark", 436, "the byte count of a table of contents is wrong"},
    {"odd-falling-keys.bookmark", 468, "the keys of a table of contents do not rise"},
    {"odd-trailing-bytes.bookmark", 648, "bytes follow the bookmark"},
    {"odd-left-over-memory.alias"},
    {"odd-security-scope-key.bookmark"},
    {"odd-long-header.bookmark"},
    {"odd-lost-record.bookmark", 52, "no offset leads to these bytes"}};

constexpr Entry unreadable[] = {
    {"bad-magic.bookmark", 0, R"(the letters "book" or "alis")"},
    {"bad-short-header.bookmark", 47, "a header of 48 bytes"},
    {"bad-short-header.alias", 55, "a header of 56 bytes"},
    {"bad-total-size-past-end.bookmark", 4, "a total size within the bytes that are there"},
    {"bad-total-size-huge.bookmark", 4, "a total size within the bytes that are there"},
    {"bad-header-size-small.bookmark", 12, "a header size from 48 to the total size"},
    {"bad-header-size-huge.alias", 16, "a header size from 56 to the size of the file"},
    {"bad-section-length-past-end.alias", 24, "a length of the data section within the bytes that are there"},
    {"bad-empty-section.bookmark", 4, "a total size with room for the data section"},
    {"bad-table-offset-past-end.bookmark", 48, "the offset of a table of contents within the data"},
    {"bad-table-type.bookmark", 112, "the type 0xFFFFFFFE of a table of contents"},
    {"bad-table-chain-loops.bookmark", 448, "a chain of tables of contents that does not loop"},
    {"bad-too-many-items.bookmark", 452, "no more items than the data has room for"},
    {"bad-table-within-table.bookmark", 72, "a table of contents that shares no bytes with another"},
    {"bad-offset-past-end.bookmark", 460, "the offset of a record within the data"},
    {"bad-value-is-a-table.bookmark", 460, "the offset of a record, not of a table of contents"},
    {"bad-record-past-end.bookmark", 64, "the length of a record that ends within the data"},
    {"bad-overlapping-records.bookmark", 80, "a record that shares no bytes with another"},
    {"bad-array-holds-itself.bookmark", 116, "an offset that does not lead back to the record holding it"},
    {"bad-dictionary-holds-itself.bookmark", 76,
     "an offset that does not lead back to the record holding it"},
    {"bad-url-is-its-own-base.bookmark", 72, "an offset that does not lead back to the record holding it"},
    {"bad-seventeen-levels.bookmark", 68, "values at most 16 deep"},
    {"bad-shared-too-often.bookmark", 436, "values that are not shared too often to be written out"},
    {"bad-text-not-utf8.bookmark", 72, "text in UTF-8"},
    {"bad-half-offset-in-array.bookmark", 52, "an array of whole offsets"},
    {"bad-half-pair-in-dictionary.bookmark", 52, "a dictionary of whole pairs of offsets"},
    {"bad-number-as-dictionary-key.bookmark", 72, "the offset of a string as the key of a dictionary"},
    {"bad-string-as-url-base.bookmark", 72, "the offset of a URL as the base of another"},
    {"bad-url-as-relative-part.bookmark", 76, "the offset of a string as the relative part of a URL"},
    {"bad-short-relative-url.bookmark", 52, "a relative URL of two offsets"},
    {"bad-number-as-key-name.bookmark", 84, "the offset of a string that names the key"},
    {"bad-empty-file.bookmark", 0, R"(the letters "book" or "alis")"}};

TEST(BookmarkCorpus, isReadAndWrittenWithEqualBytes) {
    for (const Entry& entry : readable) {
        const Data bytes = corpusData(entry.file);
        const BookmarkStructure structure = readWell(bytes);
        EXPECT_EQ(bookmarkBytes(structure), bytes) << entry.file;
        EXPECT_TRUE(isValidUtf8(bookmarkDetailedDescription(structure))) << entry.file;
        if (entry.words.empty()) {
            EXPECT_THAT(structure.warnings, testing::IsEmpty()) << entry.file;
        } else {
            EXPECT_THAT(structure.warnings, testing::ElementsAre(BookmarkWarning{entry.offset, entry.words}))
                << entry.file;
        }
    }
}

TEST(BookmarkCorpus, isRefusedForItsFault) {
    for (const Entry& entry : unreadable) {
        const auto structure = readBookmark(corpusData(entry.file));
        ASSERT_FALSE(structure) << entry.file;
        EXPECT_EQ(structure.error(), (BookmarkFault{entry.offset, entry.words}))
            << entry.file << " at " << structure.error().offset << ": " << structure.error().expected;
    }
}

TEST(BookmarkCorpus, holdsNoFileThatIsNotListed) {
    std::set<std::string> listed;
    for (const Entry& entry : readable) {
        listed.emplace(entry.file);
    }
    for (const Entry& entry : unreadable) {
        listed.emplace(entry.file);
    }
    std::set<std::string> found;
    for (const auto& file : std::filesystem::directory_iterator(corpusPath(""))) {
        found.insert(file.path().filename().string());
    }
    EXPECT_EQ(found, listed);
}

TEST(BookmarkCorpus, isWhatTheComposerMakesWhereItMadeIt) {
    EXPECT_EQ(composeBookmark(noteContents()), corpusData("note.bookmark"));
    EXPECT_EQ(composeAliasFile(noteContents(), Date(700'000'100.0)), corpusData("note.alias"));
    EXPECT_EQ(composeBookmark(shareContents()), corpusData("share.bookmark"));
    EXPECT_EQ(
        composeAliasFile(contentsForAliasFile(shareContents()), Date(700'000'100.0)),
        corpusData("share.alias"));
    EXPECT_EQ(composeBookmark({}), corpusData("nothing.bookmark"));
    BookmarkContents server;
    server.url = "smb://demo@server.example/share";
    EXPECT_EQ(composeBookmark(server), corpusData("url.bookmark"));
}

TEST(BookmarkCorpus, holdsAnOldAliasRecord) {
    const auto alias = aliasRecordIn(readWell(corpusData("alias-record.bookmark")));
    ASSERT_TRUE(alias);
    EXPECT_EQ(alias->version, 2);
    EXPECT_EQ(alias->volumeName, "Test Disk");
}

} // namespace
} // namespace tolvane::platform
