#include "details/GatherDetails.h"

#include "tests/support/DetailsWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using details::DetailsTexts;
using details::GatheredDetails;
using platform::Dictionary;
using platform::Value;

class GatherDetailsTest : public testing::Test, public ScriptedFile {
protected:
    void setAttribute(std::string_view key, Value value) { fileManager.answer->set(key, std::move(value)); }

    DetailsTexts texts() const { return gather().texts; }
};

using GatherDetailsDeathTest = GatherDetailsTest;

TEST_F(GatherDetailsTest, findsEveryTextInOnePass) {
    const std::map<std::string_view, std::string> expected{
        {"pathTextbox", "/data/notes.txt"},
        {"volfsPathTextbox", "/.vol/2049/131077"},
        {"frURLTextbox", "file:///.file/id=72340172838076673.72340172838076673"},
        {"urlTotalSize", "1300"},
        {"urlDataSize", "1000"},
        {"urlXattrSize", "300"},
        {"xattrSize", "5"},
        {"filemanSize", "1001"},
        {"filemanTotalSize", "1006"},
        {"permsTextbox", "644"},
        {"ownerNameTextbox", "demo"},
        {"ownerIDTextbox", "1000"},
        {"groupNameTextbox", "staff"},
        {"groupIDTextbox", "50"},
        {"createdTextbox", "2001-01-01 00:00:00 +0000"},
        {"modifiedTextbox", "2024-08-09 18:27:02 +0000"},
        {"typeTextbox", "NSFileTypeRegular: public.plain-text"},
        {"refCountTextbox", "2"},
        {"bookmarkPathTextbox", "/data/notes.txt"},
        {"bookmarkTextbox", "Ym9va21hcms="},
        {"inodeText",
         "NSFileExtendedAttributes : {\n    \"user.note\" = <68656c6c 6f>;\n    \"user.x\" = <>;\n}\n"},
    };
    const GatheredDetails details = gather();
    std::map<std::string_view, std::string> found;
    for (const auto& [name, text] : DetailsTexts::all) {
        found[name] = (details.texts.*text).value_or("absent");
    }
    EXPECT_EQ(found, expected);
    EXPECT_EQ(details.typeIdentifier, "public.plain-text");
    EXPECT_EQ(details.bookmark, bytesOf("bookmark"));
    EXPECT_EQ(details.bookmarkURL, url);
    EXPECT_EQ(details.gathered, platform::Date(0));
}

TEST_F(GatherDetailsTest, asksForTypeIdentityAndBookmarkInThatOrder) {
    const inspect::SizeData measured = sizes();
    log.clear();
    details::gatherDetails(measured, {resources, bookmarks, session});
    EXPECT_THAT(
        log, testing::ElementsAre(
                 "resourceValues NSURLTypeIdentifierKey", "resourceValues NSURLFileResourceIdentifierKey",
                 "bookmarkData /data/notes.txt", "resolve"));
}

struct AttributeText {
    std::string key;
    DetailsTexts::Text DetailsTexts::* text;
    Value wrongKind;
};

const std::vector<AttributeText>& attributeTexts() {
    static const std::vector<AttributeText> all{
        {"NSFilePosixPermissions", &DetailsTexts::permsTextbox, "644"},
        {"NSFileSystemNumber", &DetailsTexts::volfsPathTextbox, std::int32_t{-1}},
        {"NSFileSystemFileNumber", &DetailsTexts::volfsPathTextbox, "12"},
        {"NSFileOwnerAccountName", &DetailsTexts::ownerNameTextbox, std::uint32_t{5}},
        {"NSFileOwnerAccountID", &DetailsTexts::ownerIDTextbox, "root"},
        {"NSFileGroupOwnerAccountName", &DetailsTexts::groupNameTextbox, platform::Data{}},
        {"NSFileGroupOwnerAccountID", &DetailsTexts::groupIDTextbox, platform::Date(0)},
        {"NSFileCreationDate", &DetailsTexts::createdTextbox, "today"},
        {"NSFileModificationDate", &DetailsTexts::modifiedTextbox, 0.0},
        {"NSFileType", &DetailsTexts::typeTextbox, std::int32_t{1}},
        {"NSFileReferenceCount", &DetailsTexts::refCountTextbox, Dictionary{}},
    };
    return all;
}

TEST_F(GatherDetailsTest, leavesOutEveryTextWhoseAttributeIsMissing) {
    auto texts = attributeTexts();
    texts.push_back({"NSFileExtendedAttributes", &DetailsTexts::inodeText, {}});
    const Dictionary all = *fileManager.answer;
    for (const auto& [key, text, wrongKind] : texts) {
        fileManager.answer = Dictionary{};
        for (const auto& entry : all) {
            if (entry.key != key) {
                setAttribute(entry.key, entry.value);
            }
        }
        const DetailsTexts gathered = gather().texts;
        for (const auto& [name, other] : DetailsTexts::all) {
            EXPECT_EQ((gathered.*other).has_value(), other != text) << key << ", " << name;
        }
    }
}

TEST_F(GatherDetailsTest, formatsEachAttribute) {
    struct Row {
        std::string key;
        Value value;
        DetailsTexts::Text DetailsTexts::* text;
        DetailsTexts::Text expected;
    };
    const Dictionary all = *fileManager.answer;
    for (const auto& [key, value, text, expected] : std::vector<Row>{
             {"NSFileExtendedAttributes", "a text", &DetailsTexts::inodeText,
              "NSFileExtendedAttributes : a text\n"},
             // Permissions are octal without a prefix, of the lowest 32 bits.
             {"NSFilePosixPermissions", 420, &DetailsTexts::permsTextbox, "644"},
             {"NSFilePosixPermissions", 493, &DetailsTexts::permsTextbox, "755"},
             {"NSFilePosixPermissions", 0, &DetailsTexts::permsTextbox, "0"},
             {"NSFilePosixPermissions", 1, &DetailsTexts::permsTextbox, "1"},
             {"NSFilePosixPermissions", 8, &DetailsTexts::permsTextbox, "10"},
             {"NSFilePosixPermissions", 07777, &DetailsTexts::permsTextbox, "7777"},
             {"NSFilePosixPermissions", -1, &DetailsTexts::permsTextbox, "37777777777"},
             {"NSFilePosixPermissions", std::int64_t{0x1'0000'01A4}, &DetailsTexts::permsTextbox, "644"},
             // Identifiers and counts are unsigned numbers of 32 bits.
             {"NSFileOwnerAccountID", std::int32_t{-2}, &DetailsTexts::ownerIDTextbox, "4294967294"},
             {"NSFileGroupOwnerAccountID", std::int64_t{0x1'0000'0005}, &DetailsTexts::groupIDTextbox, "5"},
             {"NSFileReferenceCount", 3.9, &DetailsTexts::refCountTextbox, "3"},
             // The volume path needs both numbers.
             {"NSFileSystemNumber", std::uint64_t{0}, &DetailsTexts::volfsPathTextbox, std::nullopt},
             {"NSFileSystemFileNumber", std::uint64_t{0}, &DetailsTexts::volfsPathTextbox, std::nullopt},
             {"NSFileSystemFileNumber", UINT64_MAX, &DetailsTexts::volfsPathTextbox,
              "/.vol/2049/18446744073709551615"},
             {"NSFileSystemNumber", UINT64_MAX, &DetailsTexts::volfsPathTextbox,
              "/.vol/18446744073709551615/131077"},
             // Other attributes change nothing.
             {"NSFileImmutable", true, &DetailsTexts::typeTextbox, "NSFileTypeRegular: public.plain-text"},
             {"NSfileType", "other", &DetailsTexts::typeTextbox, "NSFileTypeRegular: public.plain-text"}}) {
        fileManager.answer = all;
        setAttribute(key, value);
        EXPECT_EQ(texts().*text, expected) << key;
    }
}

TEST_F(GatherDetailsTest, writesANegativeUrlMetadataSize) {
    resources.values.set("NSURLTotalFileSizeKey", std::int64_t{1});
    EXPECT_EQ(texts().urlXattrSize, "-999");
}

TEST_F(GatherDetailsTest, saysNotAvailableForATypeThatCannotBeFound) {
    resources.failingKey = "NSURLTypeIdentifierKey";
    EXPECT_EQ(texts().typeTextbox, "NSFileTypeRegular: N/A");
    EXPECT_EQ(gather().typeIdentifier, std::nullopt);

    resources.failingKey.reset();
    resources.values.set("NSURLTypeIdentifierKey", std::int64_t{5});
    EXPECT_EQ(texts().typeTextbox, "NSFileTypeRegular: N/A");
}

TEST_F(GatherDetailsTest, goesOnWithoutABookmark) {
    bookmarks.made = std::unexpected(platform::posixError(EIO));
    const GatheredDetails details = gather();
    EXPECT_EQ(details.texts.bookmarkTextbox, std::nullopt);
    EXPECT_EQ(details.texts.bookmarkPathTextbox, "(couldn't get bookmark)");
    EXPECT_EQ(details.bookmark, std::nullopt);
    EXPECT_EQ(session.time, 1) << "the pass goes on to its end";
    EXPECT_EQ(log.back(), "bookmarkData /data/notes.txt") << "nothing is resolved";
}

TEST_F(GatherDetailsTest, resolvesTheBookmarkItHasJustMade) {
    bookmarks.made = bytesOf("fresh");
    bookmarks.resolveTo("/moved/here", true);
    EXPECT_EQ(texts().bookmarkPathTextbox, "/moved/here");
    EXPECT_EQ(bookmarks.resolvedFrom, bytesOf("fresh"));
}

TEST_F(GatherDetailsTest, saysWhyTheBookmarkLeadsToNoItem) {
    bookmarks.resolved = std::unexpected(platform::posixError(ENOENT));
    EXPECT_EQ(texts().bookmarkTextbox, "Ym9va21hcms=");
    EXPECT_EQ(texts().bookmarkPathTextbox, "(couldn't get bookmark)");
    bookmarks.resolved = platform::ResolvedBookmark{};
    EXPECT_EQ(texts().bookmarkPathTextbox, "(couldn't resolve)");
}

TEST_F(GatherDetailsTest, keepsTheIdentityOfAFileThatIsGone) {
    url.keepResourceValue("NSURLFileResourceIdentifierKey", platform::Data(16, std::byte{2}));
    resources.values = {};
    EXPECT_EQ(texts().frURLTextbox, "file:///.file/id=144680345676153346.144680345676153346");
}

TEST_F(GatherDetailsTest, writesPathsThatAreNotUtf8WithReplacementCharacters) {
    url = platform::URL::fileURLWithPath("/data/a\xFF\nb");
    bookmarks.resolved = platform::ResolvedBookmark{url, false};
    EXPECT_EQ(texts().pathTextbox, "/data/a\xEF\xBF\xBD\nb");
    EXPECT_EQ(texts().bookmarkPathTextbox, "/data/a\xEF\xBF\xBD\nb");
}

TEST_F(GatherDetailsDeathTest, stopsWithoutAFileReferenceURL) {
    resources.failingKey = "NSURLFileResourceIdentifierKey";
    EXPECT_DEATH(gather(), "^tolvane: fatal: .*file reference URL");
}

TEST_F(GatherDetailsDeathTest, stopsWhenTheUrlMetadataOverflows) {
    resources.values.set("NSURLTotalFileSizeKey", INT64_MIN);
    resources.values.set("NSURLFileSizeKey", std::int64_t{1});
    EXPECT_DEATH(gather(), "^tolvane: fatal: the URL metadata size overflows");
}

TEST_F(GatherDetailsDeathTest, stopsWhenTheFileSystemTotalOverflows) {
    setAttribute("NSFileSize", INT64_MAX);
    EXPECT_DEATH(gather(), "^tolvane: fatal: the file system's total size overflows");
}

TEST_F(GatherDetailsDeathTest, stopsAtAnAttributeOfTheWrongKind) {
    for (const auto& [key, text, wrongKind] : attributeTexts()) {
        ScriptedFile broken;
        broken.fileManager.answer->set(key, wrongKind);
        EXPECT_DEATH(broken.gather(), "^tolvane: fatal: attribute " + key + " is of the wrong kind") << key;
    }
}

} // namespace
} // namespace tolvane::tests
