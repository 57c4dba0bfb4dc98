#include "platform/bookmark/description/BookmarkProperties.h"

#include "platform/bookmark/description/BookmarkDescription.h"
#include "platform/bookmark/format/BookmarkComposer.h"
#include "platform/values/Description.h"
#include "tests/platform/bookmark/Examples.h"

namespace tolvane::platform {
namespace {

using namespace tests;
using testing::ElementsAre;
using testing::IsEmpty;

Dictionary propertiesOf(const BookmarkContents& contents) {
    return bookmarkProperties(readWell(composeBookmark(contents).value()));
}

std::vector<std::string> namesIn(const Dictionary& dictionary) {
    std::vector<std::string> names;
    for (const Dictionary::Entry& entry : dictionary) {
        names.push_back(entry.key);
    }
    return names;
}

Value valueIn(const Dictionary& dictionary, std::string_view key) {
    const Value* const value = dictionary.find(key);
    return value == nullptr ? "absent" : *value;
}

TEST(BookmarkProperties, readAsThePlatformPrintsThem) {
    EXPECT_EQ(
        description(bookmarkProperties(readWell(noteBookmark()))),
        R"({
    NSURLBookmarkOriginalRelativePathComponentsArrayKey =     (
        Users,
        demo,
        "note.txt"
    );
    NSURLBookmarkOriginalRelativePathKey = "Users/demo/note.txt";
    NSURLBookmarkOriginalVolumeNameKey = "Test Disk";
    NSURLCreationDateKey = "2023-03-08 20:26:40 +0000";
    NSURLIsDirectoryKey = 0;
    NSURLIsRegularFileKey = 1;
    NSURLIsSymbolicLinkKey = 0;
    NSURLIsVolumeKey = 0;
    NSURLNameKey = "note.txt";
    NSURLVolumeCreationDateKey = "2021-08-07 03:33:20 +0000";
    NSURLVolumeIsAutomountedKey = 0;
    NSURLVolumeIsBrowsableKey = 1;
    NSURLVolumeIsEjectableKey = 0;
    NSURLVolumeIsInternalKey = 1;
    NSURLVolumeIsLocalKey = 1;
    NSURLVolumeIsReadOnlyKey = 0;
    NSURLVolumeIsRemovableKey = 0;
    NSURLVolumeNameKey = "Test Disk";
    NSURLVolumeSupportsPersistentIDsKey = 1;
    NSURLVolumeTotalCapacityKey = 494384795648;
    NSURLVolumeURLKey = "file:///";
    NSURLVolumeUUIDStringKey = "11111111-2222-3333-4444-555555555555";
    "_NSURLBookmarkIsRevocableKey" = 0;
    "_NSURLBookmarkURLStringKey" = "file:///Users/demo/note.txt";
    "_NSURLPathKey" = "/Users/demo/note.txt";
})");
}

TEST(BookmarkProperties, areTheSameInAnAliasFile) {
    EXPECT_EQ(bookmarkProperties(readWell(noteAliasFile())), bookmarkProperties(readWell(noteBookmark())));
}

TEST(BookmarkProperties, areAbsentWhereTheBookmarkHasNone) {
    EXPECT_THAT(namesIn(propertiesOf({})), IsEmpty());

    HandmadeSection section;
    const std::uint32_t name = section.addText(record_type::string, "Disk");
    const std::uint32_t table = section.addTable(0xF000, 0, {{bookmark_key::volumeName, name}});
    EXPECT_THAT(namesIn(bookmarkProperties(readWell(section.bookmarkWithTable(table)))), IsEmpty())
        << "no table for the target";
}

TEST(BookmarkProperties, includeOnlyKnownFlags) {
    BookmarkContents contents;
    contents.fileFlags = {0xFFFF'FFFF'FFFF'FFFF, 0x210, 0};
    contents.volume.flags = {0, 0x4, 0xFFFF'FFFF'FFFF'FFFF};
    const Dictionary properties = propertiesOf(contents);
    EXPECT_THAT(
        namesIn(properties),
        ElementsAre("NSURLIsApplicationKey", "NSURLIsPackageKey", "NSURLVolumeIsBrowsableKey"));
    EXPECT_EQ(valueIn(properties, "NSURLIsApplicationKey"), Value(true));
    EXPECT_EQ(valueIn(properties, "NSURLVolumeIsBrowsableKey"), Value(true)) << "the bit says the opposite";
}

TEST(BookmarkProperties, nameEveryKnownFlagOfAFile) {
    BookmarkContents contents;
    contents.fileFlags = {0, 0xFFFF'FFFF'FFFF'FFFF, 0};
    EXPECT_THAT(
        namesIn(propertiesOf(contents)),
        ElementsAre(
            "NSURLHasHiddenExtensionKey", "NSURLIsAliasFileKey", "NSURLIsApplicationKey",
            "NSURLIsDirectoryKey", "NSURLIsExecutableKey", "NSURLIsHiddenKey", "NSURLIsMountTriggerKey",
            "NSURLIsPackageKey", "NSURLIsReadableKey", "NSURLIsRegularFileKey", "NSURLIsSymbolicLinkKey",
            "NSURLIsSystemImmutableKey", "NSURLIsUserImmutableKey", "NSURLIsVolumeKey", "NSURLIsWritableKey",
            "_NSURLCanSetHiddenExtensionKey", "_NSURLIsCompressedKey"));
}

TEST(BookmarkProperties, ofTheRootAreItsPathAndTheVolumesName) {
    BookmarkContents contents;
    contents.pathComponents.emplace();
    contents.fileName = "Test Disk";
    const Dictionary properties = propertiesOf(contents);
    EXPECT_EQ(valueIn(properties, "NSURLBookmarkOriginalRelativePathComponentsArrayKey"), Value(Array()));
    EXPECT_EQ(valueIn(properties, "NSURLBookmarkOriginalRelativePathKey"), Value(""));
    EXPECT_EQ(valueIn(properties, "NSURLNameKey"), Value("Test Disk"));
    EXPECT_EQ(valueIn(properties, "_NSURLPathKey"), Value("/"));
    EXPECT_EQ(valueIn(properties, "_NSURLBookmarkURLStringKey"), Value("file:///"));
}

TEST(BookmarkProperties, escapeThePathInItsURL) {
    const Dictionary properties = propertiesOf(shareContents());
    EXPECT_EQ(valueIn(properties, "_NSURLPathKey"), Value("/Volumes/Share/d\u00E9j\u00E0 vu.txt"));
    EXPECT_EQ(
        valueIn(properties, "_NSURLBookmarkURLStringKey"),
        Value("file:///Volumes/Share/d%C3%A9j%C3%A0%20vu.txt"));
    EXPECT_EQ(
        valueIn(properties, "NSURLVolumeURLForRemountingKey"),
        Value(*URL::fromText("smb://demo@server/Share")));
    EXPECT_EQ(valueIn(properties, "NSURLLocalizedNameKey"), Value("d\u00E9j\u00E0 vu"));
}

TEST(BookmarkProperties, includeTheSecurityScope) {
    const Data scoped = withByte(withByte(noteBookmark(), 0x10, 0xAA), 0x2F, 0xBB);
    const Dictionary properties = bookmarkProperties(readWell(withU32(scoped, 0x3C, 0x0200'0800)));
    Data key(32);
    key.front() = std::byte{0xAA};
    key.back() = std::byte{0xBB};
    EXPECT_EQ(valueIn(properties, "_NSURLBookmarkSecurityScopeCryptoKeyKey"), Value(key));
    EXPECT_EQ(valueIn(properties, "_NSURLBookmarkIsRevocableKey"), Value(true));
}

TEST(BookmarkProperties, includeRequestedValuesUnderTheirNames) {
    HandmadeSection section;
    const std::uint32_t type = section.addText(record_type::string, "public.folder");
    const std::uint32_t yes = section.add(record_type::booleanTrue, {});
    const std::uint32_t path = section.addText(record_type::string, "/full/path");
    const std::uint32_t name = section.addText(record_type::string, "NSURLDocumentIdentifierKey");
    const std::uint32_t typeName = section.addText(record_type::string, "NSURLTypeIdentifierKey");
    const std::uint32_t number = section.addWords(record_type::int32, {77});
    const std::vector<BookmarkItem> items{
        {0xFF00, path, 0}, {0xF'0004, type, 0}, {0xF'000F, yes, 0}, {0x8000'0000U | name, number, 0}};
    EXPECT_EQ(
        bookmarkProperties(readWell(HandmadeSection(section).bookmark(items))),
        (Dictionary{
            {"_NSURLPathKey", "/full/path"},
            {"NSURLTypeIdentifierKey", "public.folder"},
            {"NSURLIsExecutableKey", true},
            {"NSURLDocumentIdentifierKey", std::int32_t{77}}}));

    std::vector<BookmarkItem> both = items;
    both.push_back({0x8000'0000U | typeName, number, 0});
    EXPECT_EQ(
        valueIn(bookmarkProperties(readWell(section.bookmark(both))), "NSURLTypeIdentifierKey"),
        Value(std::int32_t{77}))
        << "a value stored under the very name counts";
}

TEST(BookmarkProperties, haveTheURLOfABookmarkWithoutAPath) {
    const Value url = "smb://demo@server.example/share";
    EXPECT_EQ(
        bookmarkProperties(readWell(corpusData("url.bookmark"))),
        (Dictionary{{"_NSURLBookmarkURLStringKey", url}}));
    BookmarkContents contents;
    contents.url = "smb://demo@server.example/share";
    contents.pathComponents = {"note.txt"};
    EXPECT_EQ(valueIn(propertiesOf(contents), "_NSURLBookmarkURLStringKey"), Value("file:///note.txt"));
}

TEST(StoredProperties, answerTheTwoKeysOfTheAnalysisOnly) {
    for (const Data& bookmark : {noteBookmark(), noteAliasFile()}) {
        const BookmarkStructure structure = readWell(bookmark);
        const auto [properties, failure] = readStoredProperties(bookmark);
        EXPECT_EQ(
            properties(NSURLBookmarkAllPropertiesKey),
            (Dictionary{{"NSURLBookmarkAllPropertiesKey", bookmarkProperties(structure)}}));
        EXPECT_EQ(
            properties(NSURLBookmarkDetailedDescription),
            (Dictionary{{"NSURLBookmarkDetailedDescription", bookmarkDetailedDescription(structure)}}));
        EXPECT_EQ(properties("NSURLNameKey"), Dictionary{});
        EXPECT_FALSE(failure);
    }
}

TEST(StoredProperties, haveNoAnswerForOtherBytes) {
    for (const Data& bytes : {Data(), dataOfHex("00"), front(noteBookmark(), 647)}) {
        for (const std::string_view key :
             {NSURLBookmarkAllPropertiesKey, NSURLBookmarkDetailedDescription, std::string_view()}) {
            EXPECT_EQ(readStoredProperties(bytes).properties(key), std::nullopt) << key;
        }
    }
}

TEST(StoredProperties, sayWhyBytesAreNotABookmark) {
    const auto failureOf = [](const Data& bytes) {
        return readStoredProperties(bytes).failure.value_or(Error()).localizedDescription();
    };
    EXPECT_EQ(failureOf({}), "Not a readable bookmark: expected the letters \"book\" or \"alis\" at byte 0.");
    EXPECT_EQ(
        failureOf(front(noteBookmark(), 647)),
        "Not a readable bookmark: expected a total size within the bytes that are there at byte 4.");
}

} // namespace
} // namespace tolvane::platform
