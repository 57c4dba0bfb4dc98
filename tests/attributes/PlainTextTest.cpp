#include "tests/attributes/Explaining.h"

namespace tolvane::tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(PlainText, isShownWithItsMeaningAndWithoutOneNul) {
    expectLines("user.xdg.origin.url", "https://example.org/a", {"Address: https://example.org/a"});
    expectLines("user.document-portal.host-path", std::string("/a\0", 3), {"Path: /a"});
    expectLines("user.mime_type", "", {"Media type: "});
}

TEST(PlainText, isBytesWhereItHoldsNulOrIsNotUtf8) {
    EXPECT_THAT(
        complaintAbout("user.xdg.comment", std::string("a\0b", 3)),
        HasSubstr("at byte 1 of 3, a text without NUL"));
    EXPECT_THAT(complaintAbout("user.xdg.comment", std::string("a\0\0", 3)), HasSubstr("at byte 1 of 3"));
    EXPECT_THAT(complaintAbout("user.xdg.comment", "a\xFF"), HasSubstr("text in UTF-8"));
}

TEST(Tags, areDividedByCommasWithOrWithoutBlanks) {
    expectLines("user.xdg.tags", "red, two words,,last", {"Tag: red", "Tag: two words", "Tag: last"});
    EXPECT_EQ(explainedSummary("user.xdg.tags", "a,b"), "Tags given in a file manager: a; b.");
    EXPECT_EQ(explainedSummary("user.xdg.tags", ""), "Tags given in a file manager: none.");
}

TEST(Rating, isInStars) {
    expectLines("user.baloo.rating", "7", {"Rating: 7 of 10", "Stars: 3 and a half of 5"});
    EXPECT_EQ(explained("user.baloo.rating", "10").fields[1].value, platform::Value(5.0));
    expectRefused("user.baloo.rating", {"11", "-1", ""});
}

TEST(Truth, isYesOrNo) {
    expectLines("user.xdg.robots.backup", "false", {"Back up: no"});
    expectLines("trusted.delegate", "1", {"Delegated: yes"});
    expectLines("user.cephos.spill_out", std::string("0\0", 2), {"Kept elsewhere: no"});
    expectRefused("user.xdg.robots.index", {"maybe"});
}

TEST(Decimal, isANumberOfEitherSign) {
    expectLines("user.journald_log_level", "6", {"Level: 6"});
    EXPECT_EQ(explained("user.journald_log_level", "-6").fields[0].value, platform::Value(std::int64_t{-6}));
    expectRefused("user.journald_log_level", {"6 ", "99999999999999999999"});
}

TEST(Checksum, hasTheAlgorithmOfItsNameOrItsLength) {
    expectLines(
        "user.shatag.sha256", std::string(64, 'a'),
        {"Algorithm: SHA-256", "Checksum: " + std::string(64, 'a')});
    EXPECT_THAT(explainedLines("user.checksum.x", std::string(40, '0'))[0], "Algorithm: SHA-1");
    expectLines(
        "user.md5", std::string(16, '\xAA'),
        {"Algorithm: MD5", "Checksum: aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa"});
    EXPECT_THAT(explainedSummary("user.crc32", "01234567"), HasSubstr("(CRC-32)"));
    EXPECT_THAT(explainedLines("user.hash.blake2b", "00ff")[0], "Algorithm: BLAKE2b");
    EXPECT_THAT(complaintAbout("user.sha256", std::string(63, 'a')), HasSubstr("SHA-256 in 64 digits"));
    expectRefused("user.checksum.x", {"abc"});
    expectRefused("user.md5", {""});
}

TEST(FolderView, hasEachSettingWithItsSection) {
    expectLines(
        "user.kde.fm.viewproperties#1", "[Dolphin]\nSortRole=size\n\n[Settings]\nHidden=true\nodd",
        {"Dolphin › SortRole: size", "Settings › Hidden: true", "Line: odd"});
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
