#include "tests/attributes/Explaining.h"

namespace tolvane::tests {
namespace {

using platform::Array;
using platform::Value;
using testing::ElementsAre;
using testing::HasSubstr;

std::string metadata(std::string_view name) {
    return "com.apple.metadata:" + std::string(name);
}

std::string list(const Value& value) {
    return binaryPropertyList(value).value();
}

TEST(WhereFroms, areAFilesAndAPagesAddress) {
    const std::string name = metadata("kMDItemWhereFroms");
    const std::string value = list(Array{"https://example.org/f", "https://example.org/p"});
    expectLines(name, value, {"File address: https://example.org/f", "Page address: https://example.org/p"});
    EXPECT_EQ(
        explainedSummary(name, value),
        "macOS: the file was downloaded from https://example.org/f, found on https://example.org/p.");
    EXPECT_THAT(
        explainedLines(name, list(Array{"https://example.org/f", ""})),
        testing::Contains("Page address: not stated"));
    EXPECT_THAT(explainedSummary(name, list(Array{})), HasSubstr("not stated"));
    EXPECT_THAT(explainedLines(name, list(Array{"a://", "", "c"}))[2], "Further address: c");
}

TEST(WhereFroms, mayBeAMailOrADevice) {
    const std::string name = metadata("kMDItemWhereFroms");
    expectLines(
        name, list(Array{"Nelly <n@example.org>", "Hello", "message:%3Cx%3E"}),
        {"Sender: Nelly <n@example.org>", "Subject: Hello", "Message: message:%3Cx%3E"});
    EXPECT_EQ(
        explainedSummary(name, list(Array{"Nelly's phone"})),
        "macOS: the file was sent by the device Nelly's phone.");
    expectRefused(name, {list(Array{std::int64_t{1}}), list("text"), "bplist00"});
}

TEST(UserTags, haveNamesAndColours) {
    const std::string name = metadata("_kMDItemUserTags");
    expectLines(
        name, list(Array{"Red\n6", "Plain", "None\n0", "Odd\n9"}),
        {"Tag: Red (red)", "Tag: Plain", "Tag: None", "Tag: Odd (colour 9)"});
    EXPECT_THAT(
        explained(name, list(Array{"a\nb"})).notes, ElementsAre("What follows a tag's name is no colour: b"));
    EXPECT_EQ(
        explainedSummary("user.com.apple.metadata_kMDItemUserTags", list(Array{})),
        "Tags given in the Finder: none.");
    expectRefused(name, {list(Array{Array{}})});
}

TEST(SpotlightMetadata, hasTheGistInItsSentence) {
    EXPECT_EQ(explainedSummary(metadata("kMDItemFinderComment"), list("Hello")), "macOS: Comment: Hello.");
    EXPECT_EQ(explainedSummary(metadata("kMDItemIsScreenCapture"), list(true)), "macOS: Screenshot: yes.");
    EXPECT_EQ(explainedSummary(metadata("kMDItemStarRating"), list(std::int64_t{4})), "macOS: Stars: 4.");
    EXPECT_EQ(explainedSummary(metadata("kMDItemKeywords"), list(Array{"a", "b"})), "macOS: Keyword: a; b.");
    EXPECT_EQ(
        explainedSummary(metadata("kMDItemDueDate"), list(platform::Date(0.5))),
        "macOS: Due: 2001-01-01 00:00:00.5 UTC.");
}

TEST(SpotlightMetadata, hasEachElementUnderOneName) {
    expectLines(
        metadata("kMDItemScreenCaptureGlobalRect"), list(Array{std::int64_t{1}, 2.5}),
        {"Area: 1", "Area: 2.500000"});
    expectLines(metadata("kMDItemUnheardOf"), list("x"), {"Value: x"});
    expectLines(metadata("kMDItemKeywords"), xmlPropertyList(Array{"a"}).value(), {"Keyword: a"});
}

TEST(SpotlightMetadata, mayBeBareText) {
    const auto explanation = explained(metadata("com_apple_backup_excludeItem"), "com.apple.MobileBackup");
    EXPECT_THAT(linesOf(explanation), ElementsAre("Excluded by: com.apple.MobileBackup"));
    EXPECT_THAT(explanation.notes, ElementsAre("Bare text, where macOS itself writes a property list"));
    expectRefused(metadata("kMDItemTitle"), {"", "\xFF"});
}

} // namespace
} // namespace tolvane::tests
