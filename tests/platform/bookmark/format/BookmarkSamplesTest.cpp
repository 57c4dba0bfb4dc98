// Bookmarks that Macs made.
#include "platform/bookmark/description/BookmarkDescription.h"
#include "platform/bookmark/description/BookmarkProperties.h"
#include "platform/bookmark/format/BookmarkComposer.h"
#include "platform/bookmark/format/BookmarkContents.h"
#include "platform/bookmark/format/BookmarkReader.h"
#include "platform/bookmark/format/BookmarkWriter.h"
#include "platform/values/Description.h"
#include "platform/values/Utf8.h"
#include "tests/platform/bookmark/Examples.h"
#include "tests/support/SharedSamples.h"

namespace tolvane::platform {
namespace {

using namespace tests;
using testing::ElementsAre;
using testing::IsEmpty;

class BookmarkSamples : public SharedSamples {
protected:
    BookmarkSamples() : SharedSamples("bookmarks") {}

    BookmarkContents contentsOf(const std::string& name) const {
        return bookmarkContents(readWell(bytes(name)));
    }
};

TEST_F(BookmarkSamples, areReadDescribedAndWrittenWithEqualBytes) {
    for (const std::string name :
         {"01-plain-app.bookmark", "07-sandbox-ro-long.bookmark", "22-alias-file-folder.alias",
          "24-alias-file-volume-root.alias", "25-alias-file-2025.alias"}) {
        const BookmarkStructure structure = readWell(bytes(name));
        EXPECT_THAT(structure.warnings, IsEmpty()) << name;
        EXPECT_EQ(bookmarkBytes(structure), bytes(name)) << name;
        const std::string description = bookmarkDetailedDescription(structure);
        EXPECT_TRUE(isValidUtf8(description)) << name;
        EXPECT_THAT(description, testing::HasSubstr("pathComponents:\"(")) << name;
        EXPECT_NE(bookmarkProperties(structure).find("_NSURLPathKey"), nullptr) << name;
        const Data other = structure.header.isAliasFile() ? bareBookmarkBytes(structure)
                                                          : aliasFileBytes(structure, Date(0));
        EXPECT_EQ(readWell(other).section, structure.section) << name;
    }
}

TEST_F(BookmarkSamples, tellTheirTargets) {
    const BookmarkContents app = contentsOf("01-plain-app.bookmark");
    EXPECT_THAT(*app.pathComponents, ElementsAre("Applications", "Bitwarden.app"));
    EXPECT_THAT(*app.fileIDs, ElementsAre(55'637'351, 54'389'243));
    EXPECT_EQ(app.creationDate->description(), "2022-10-20 22:39:28 +0000");
    EXPECT_EQ(app.options, 0x2000'0000U);
    EXPECT_EQ(app.volume.name, "Macintosh HD");
    EXPECT_TRUE(app.volume.wasBoot);

    const BookmarkContents events = contentsOf("07-sandbox-ro-long.bookmark");
    EXPECT_THAT(
        *events.fileIDs, ElementsAre(
                             1'152'921'500'311'879'701, 1'152'921'500'311'993'981, 1'152'921'500'312'123'682,
                             1'152'921'500'312'197'977));
    EXPECT_EQ(events.creationDate->description(), "2020-01-01 08:00:00 +0000");
    EXPECT_EQ(events.volume.uuid, "0A81F3B1-51D9-3335-B3E3-169C3640360D");
    EXPECT_EQ(events.options, 0U);
    EXPECT_EQ(events.displayName, "System Events");

    const BookmarkContents perl = contentsOf("22-alias-file-folder.alias");
    EXPECT_THAT(*perl.pathComponents, ElementsAre("System", "Library", "Perl"));
    EXPECT_EQ(perl.options, 0x400U);
    EXPECT_TRUE(perl.wasFileIDFormat);

    const BookmarkContents root = contentsOf("24-alias-file-volume-root.alias");
    EXPECT_THAT(*root.pathComponents, IsEmpty());
    EXPECT_EQ(root.fileIDs, std::nullopt);
    EXPECT_EQ(root.fileName, "Macintosh HD");

    EXPECT_THAT(*contentsOf("25-alias-file-2025.alias").fileIDs, ElementsAre(496'886'980));
}

TEST_F(BookmarkSamples, comeOutTheSameWhenTheirContentsAreComposed) {
    const std::string name = "01-plain-app.bookmark";
    EXPECT_EQ(composeBookmark(contentsOf(name)), bytes(name));
}

TEST_F(BookmarkSamples, comeOutTheSameUpToTheFirstValueThatContentsDoNotTell) {
    const std::pair<std::string, std::uint32_t> samples[] = {
        {"07-sandbox-ro-long.bookmark", 0xF081},
        {"22-alias-file-folder.alias", 0xF022},
        {"24-alias-file-volume-root.alias", 0xF022},
        {"25-alias-file-2025.alias", 0xF022}};
    for (const auto& [name, key] : samples) {
        const BookmarkStructure original = readWell(bytes(name));
        const BookmarkStructure composed = readWell(composeBookmark(bookmarkContents(original)).value());
        const BookmarkItem* const first = original.table(table_identifier::target)->find(key);
        ASSERT_NE(first, nullptr) << name;
        // The first word is the offset of the first table, which comes earlier where values are left out.
        const auto before = [&](const BookmarkStructure& structure) {
            return Data(structure.section.begin() + 4, structure.section.begin() + first->valueOffset);
        };
        EXPECT_EQ(composed.tables.front().offset, first->valueOffset) << name;
        EXPECT_EQ(before(composed), before(original)) << name;
    }
}

TEST_F(BookmarkSamples, tellWhenTheyWereWritten) {
    const auto writtenDate = [&](const std::string& name) {
        return readWell(bytes(name)).header.writtenDate().description();
    };
    EXPECT_EQ(writtenDate("22-alias-file-folder.alias"), "2022-06-30 14:33:19 +0000");
    EXPECT_EQ(writtenDate("24-alias-file-volume-root.alias"), "2022-07-03 09:29:19 +0000");
    EXPECT_EQ(writtenDate("25-alias-file-2025.alias"), "2025-05-16 21:53:06 +0000");
}

TEST_F(BookmarkSamples, areRefusedWhenDamaged) {
    EXPECT_EQ(
        readBookmark(bytes("90-bad-loop.bookmark")).error(),
        (BookmarkFault{0x74, "an offset that does not lead back to the record holding it"}));
    EXPECT_EQ(
        readBookmark(bytes("92-bad-magic.bookmark")).error(),
        (BookmarkFault{0, R"(the letters "book" or "alis")"}));
}

} // namespace
} // namespace tolvane::platform
