#include "tests/attributes/Explaining.h"
#include "tests/support/AttributeValues.h"

namespace tolvane::tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(PlainText, isShownWithItsMeaningAndWithoutOneNul) {
    EXPECT_THAT(
        explainedLines("user.xdg.origin.url", "https://example.org/a"),
        ElementsAre("Address: https://example.org/a"));
    EXPECT_THAT(
        explainedLines("user.document-portal.host-path", std::string("/a\0", 3)), ElementsAre("Path: /a"));
    EXPECT_THAT(explainedLines("user.mime_type", ""), ElementsAre("Media type: "));
}

TEST(PlainText, isBytesWhereItHoldsNulOrIsNotUtf8) {
    EXPECT_THAT(
        complaintAbout("user.xdg.comment", std::string("a\0b", 3)),
        HasSubstr("at byte 1 of 3, a text without NUL"));
    EXPECT_THAT(complaintAbout("user.xdg.comment", std::string("a\0\0", 3)), HasSubstr("at byte 1 of 3"));
    EXPECT_THAT(complaintAbout("user.xdg.comment", "a\xFF"), HasSubstr("text in UTF-8"));
}

TEST(Tags, areDividedByCommasWithOrWithoutBlanks) {
    EXPECT_THAT(
        explainedLines("user.xdg.tags", "red, two words,,last"),
        ElementsAre("Tag: red", "Tag: two words", "Tag: last"));
    EXPECT_EQ(explainedSummary("user.xdg.tags", "a,b"), "Tags given in a file manager: a; b.");
    EXPECT_EQ(explainedSummary("user.xdg.tags", ""), "Tags given in a file manager: none.");
}

TEST(Rating, isInStars) {
    EXPECT_THAT(
        explainedLines("user.baloo.rating", "7"), ElementsAre("Rating: 7 of 10", "Stars: 3 and a half of 5"));
    EXPECT_EQ(explained("user.baloo.rating", "10").fields[1].value, platform::Value(5.0));
    EXPECT_NE(complaintAbout("user.baloo.rating", "11"), "");
    EXPECT_NE(complaintAbout("user.baloo.rating", "-1"), "");
    EXPECT_NE(complaintAbout("user.baloo.rating", ""), "");
}

TEST(Truth, isYesOrNo) {
    EXPECT_THAT(explainedLines("user.xdg.robots.backup", "false"), ElementsAre("Back up: no"));
    EXPECT_THAT(explainedLines("trusted.delegate", "1"), ElementsAre("Delegated: yes"));
    EXPECT_THAT(
        explainedLines("user.cephos.spill_out", std::string("0\0", 2)), ElementsAre("Kept elsewhere: no"));
    EXPECT_NE(complaintAbout("user.xdg.robots.index", "maybe"), "");
}

TEST(Decimal, isANumberOfEitherSign) {
    EXPECT_THAT(explainedLines("user.journald_log_level", "6"), ElementsAre("Level: 6"));
    EXPECT_EQ(explained("user.journald_log_level", "-6").fields[0].value, platform::Value(std::int64_t{-6}));
    EXPECT_NE(complaintAbout("user.journald_log_level", "6 "), "");
    EXPECT_NE(complaintAbout("user.journald_log_level", "99999999999999999999"), "");
}

TEST(Checksum, hasTheAlgorithmOfItsNameOrItsLength) {
    EXPECT_THAT(
        explainedLines("user.shatag.sha256", std::string(64, 'a')),
        ElementsAre("Algorithm: SHA-256", "Checksum: " + std::string(64, 'a')));
    EXPECT_THAT(explainedLines("user.checksum.x", std::string(40, '0'))[0], "Algorithm: SHA-1");
    EXPECT_THAT(
        explainedLines("user.md5", std::string(16, '\xAA')),
        ElementsAre("Algorithm: MD5", "Checksum: aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa"));
    EXPECT_THAT(explainedSummary("user.crc32", "01234567"), HasSubstr("(CRC-32)"));
    EXPECT_THAT(explainedLines("user.hash.blake2b", "00ff")[0], "Algorithm: BLAKE2b");
    EXPECT_THAT(complaintAbout("user.sha256", std::string(63, 'a')), HasSubstr("SHA-256 in 64 digits"));
    EXPECT_NE(complaintAbout("user.checksum.x", "abc"), "");
    EXPECT_NE(complaintAbout("user.md5", ""), "");
}

TEST(FolderView, hasEachSettingWithItsSection) {
    EXPECT_THAT(
        explainedLines(
            "user.kde.fm.viewproperties#1", "[Dolphin]\nSortRole=size\n\n[Settings]\nHidden=true\nodd"),
        ElementsAre("Dolphin › SortRole: size", "Settings › Hidden: true", "Line: odd"));
}

TEST(PlainText, ofOpaqueRecordsIsAllTheirBytes) {
    const auto explanation = explained("com.apple.diskimages.fsck", bytesOfHex("00ff"));
    EXPECT_EQ(explanation.certainty, attributes::Certainty::opaque);
    EXPECT_THAT(linesOf(explanation), ElementsAre("Bytes: 00ff"));
    const std::string longValue(600, 'x');
    const auto cut = explained("system.ntfs_efsinfo", longValue);
    EXPECT_THAT(cut.fields[0].text, testing::EndsWith("78… (600 bytes)"));
    EXPECT_EQ(cut.fields[0].value.as<platform::Data>()->size(), 600U);
    EXPECT_THAT(explainedLines("com.dropbox.internal", ""), IsEmpty());
}

} // namespace
} // namespace tolvane::tests
