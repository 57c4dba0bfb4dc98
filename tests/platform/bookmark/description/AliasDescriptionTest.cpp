#include "platform/bookmark/description/AliasDescription.h"

#include "platform/bookmark/description/BookmarkDescription.h"
#include "platform/bookmark/description/BookmarkProperties.h"
#include "platform/bookmark/format/AliasBookmark.h"
#include "platform/values/Description.h"
#include "tests/support/AliasRecords.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace tolvane::platform {
namespace {

using namespace tests;
using namespace std::string_literals;
using testing::HasSubstr;

std::string descriptionOf(const WrittenAlias& alias) {
    std::string text;
    appendAliasDescription(text, readAliasRecord(writtenAlias(alias)).value());
    return text;
}

TEST(AliasDescription, hasALineForEachTag) {
    EXPECT_EQ(
        descriptionOf(noteAlias()),
        "\nAlias record: 270 bytes, version 2, file, applicationInfo=0x0"
        "\nvolume:\"Disk\" created:\"1999-01-24 05:20:00 local time\" fileSystem:\"H+\" diskType=0x5 "
        "flags=0xd02"
        "\nitem:\"note.txt\" created:\"2018-01-28 16:00:00 local time\" number:\"30\" parentNumber:\"20\""
        "\n0) tag=0x0 offset=0x96 folderName:\"folder\""
        "\n1) tag=0x1 offset=0xa0 parentNumbers:\"( 20 )\""
        "\n2) tag=0x2 offset=0xa8 carbonPath:\"Disk:folder:note.txt\""
        "\n3) tag=0xe offset=0xc0 unicodeFileName:\"note.txt\""
        "\n4) tag=0xf offset=0xd6 unicodeVolumeName:\"Disk\""
        "\n5) tag=0x12 offset=0xe4 posixPath:\"/folder/note.txt\""
        "\n6) tag=0x13 offset=0xf8 mountPoint:\"/Volumes/Disk\"");
}

TEST(AliasDescription, saysWhichDatesAreLocal) {
    EXPECT_THAT(descriptionOf(noteAlias(3)), HasSubstr("created:\"2018-01-28 16:00:00 +0000\""));
    WrittenAlias both = noteAlias();
    both.tags.emplace_back(17, dateTag(3'600'003'600));
    EXPECT_THAT(
        descriptionOf(both),
        HasSubstr("created:\"2018-01-28 16:00:00 local time, 2018-01-28 17:00:00 +0000\""));
    WrittenAlias none = noteAlias();
    none.time = 0;
    EXPECT_THAT(descriptionOf(none), HasSubstr("item:\"note.txt\" created:\"\""));
}

TEST(AliasDescription, keepsValuesWithinTheirLines) {
    WrittenAlias alias = noteAlias();
    alias.name = "a\rb";
    alias.tags = {{18, "/a\n\"b\xFF"}, {99, "\1\2"}, {9, ""}, {21, "\0\3"s}, {17, "x"}};
    const std::string text = descriptionOf(alias);
    EXPECT_THAT(text, HasSubstr("item:\"a\\rb\""));
    EXPECT_THAT(text, HasSubstr("posixPath:\"/a\\n\\\"b\uFFFD\""));
    EXPECT_THAT(text, HasSubstr("tag=0x63 offset=0xa0 :\"<0102>\""));
    EXPECT_THAT(text, HasSubstr("networkMount:\"<>\""));
    EXPECT_THAT(text, HasSubstr("homeLevels:\"3\""));
    EXPECT_THAT(text, HasSubstr("fileCreationDate:\"<78>\""));
    EXPECT_THAT(text, testing::EndsWith("of the alias record: A date does not have 8 bytes."));
}

TEST(AliasDescription, describesTheDiskImageAsWell) {
    const std::string text = descriptionOf(noteAliasInDiskImage());
    EXPECT_THAT(text, HasSubstr("\nThe volume's disk image:\nAlias record: "));
    EXPECT_THAT(text, HasSubstr("posixPath:\"/Users/demo/Disk.dmg\""));
}

TEST(AliasDescription, followsThatOfTheBookmarkAroundIt) {
    const auto structure = readBookmarkOrAlias(writtenAlias(noteAlias()));
    EXPECT_THAT(
        bookmarkDetailedDescription(structure.value()), testing::EndsWith("mountPoint:\"/Volumes/Disk\""));
}

TEST(AliasDescription, givesThePropertiesOfABookmark) {
    const auto structure = readBookmarkOrAlias(writtenAlias(noteAlias(3)));
    EXPECT_EQ(
        description(bookmarkProperties(structure.value())),
        "{\n"
        "    NSURLBookmarkOriginalRelativePathComponentsArrayKey =     (\n"
        "        Volumes,\n"
        "        Disk,\n"
        "        folder,\n"
        "        \"note.txt\"\n"
        "    );\n"
        "    NSURLBookmarkOriginalRelativePathKey = \"Volumes/Disk/folder/note.txt\";\n"
        "    NSURLBookmarkOriginalVolumeNameKey = Disk;\n"
        "    NSURLCreationDateKey = \"2018-01-28 16:00:00 +0000\";\n"
        "    NSURLIsDirectoryKey = 0;\n"
        "    NSURLIsRegularFileKey = 1;\n"
        "    NSURLIsSymbolicLinkKey = 0;\n"
        "    NSURLNameKey = \"note.txt\";\n"
        "    NSURLVolumeCreationDateKey = \"1999-01-24 05:20:00 +0000\";\n"
        "    NSURLVolumeNameKey = Disk;\n"
        "    NSURLVolumeURLKey = \"file:///Volumes/Disk/\";\n"
        "    \"_NSURLBookmarkURLStringKey\" = \"file:///Volumes/Disk/folder/note.txt\";\n"
        "    \"_NSURLPathKey\" = \"/Volumes/Disk/folder/note.txt\";\n"
        "}");
    const auto local = readBookmarkOrAlias(writtenAlias(noteAlias(2)));
    EXPECT_EQ(bookmarkProperties(local.value()).find("NSURLCreationDateKey"), nullptr) << "it is not in UTC";
}

} // namespace
} // namespace tolvane::platform
