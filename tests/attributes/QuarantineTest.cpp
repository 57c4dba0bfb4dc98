#include "tests/attributes/Explaining.h"

namespace tolvane::tests {
namespace {

using testing::HasSubstr;

constexpr const char* quarantine = "com.apple.quarantine";

TEST(Quarantine, saysWhoDownloadedWhatWhenAndWhetherItWasOpened) {
    EXPECT_EQ(
        explainedSummary(quarantine, "0081;65536f00;Web\\x20Browser;"),
        "macOS: downloaded on 2023-11-14 12:58:40 UTC by Web Browser; not opened yet, macOS asks before it "
        "is.");
    EXPECT_THAT(
        explainedSummary(quarantine, "00c1;65536f00;A;"), HasSubstr("; the user has opened and allowed it."));
    EXPECT_THAT(explainedSummary(quarantine, "0005;65536f00;A;"), HasSubstr("; it never runs."));
    EXPECT_EQ(
        explainedSummary(quarantine, "0082;0;;"), "macOS: saved by a sandboxed application, not a download.");
    EXPECT_THAT(explainedSummary(quarantine, "0000;;A"), HasSubstr("put in quarantine by A;"));
}

TEST(Quarantine, hasItsFields) {
    expectLines(
        quarantine, "1001;65536f00;A\\x3bB;00000000-0000-0000-0000-000000000001|org.example.a",
        {"Flags: download, unknown 0x1000 (0x1001)", "Time: 2023-11-14 12:58:40 UTC", "Agent: A;B",
         "Event: 00000000-0000-0000-0000-000000000001", "Bundle: org.example.a"});
    expectLines(quarantine, "0001;00000000", {"Flags: download (0x0001)"});
}

TEST(Quarantine, keepsWhatIsNoEscape) {
    expectLines(quarantine, "1;;a\\xZZ\\x2", {"Flags: download (0x0001)", "Agent: a\\xZZ\\x2"});
    expectLines(quarantine, "1;;a\\x00b", {"Flags: download (0x0001)", "Agent: a⟨NUL⟩b"});
}

TEST(Quarantine, inArchivesHasLettersBefore) {
    EXPECT_THAT(
        explainedLines(quarantine, std::string("q/0001;;A;\0", 11)),
        testing::Contains("Stored as: an archive's companion file (\"q/\" before the value)"));
}

TEST(Quarantine, isRefusedInAnyOtherForm) {
    expectRefused(
        quarantine,
        {"", "0001", "x;;a;b", "0001;zz;a;b", "1;2;3;4;5", "q/", "000000001;0;a;b\xFF", "123456789;0"});
    EXPECT_THAT(complaintAbout(quarantine, "q/0001;zz;a;b"), HasSubstr("at byte 7"));
}

} // namespace
} // namespace tolvane::tests
