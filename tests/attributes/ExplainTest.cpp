#include "attributes/FamilyTables.h"
#include "platform/values/Utf8.h"
#include "tests/attributes/Explaining.h"

#include <set>

namespace tolvane::tests {
namespace {

using attributes::Certainty;
using attributes::Explanation;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(Explain, showsTheRealNameWhateverItIsLookedUpBy) {
    const Explanation explanation =
        explained("user.DosStream.com.apple.TextEncoding#CS:$DATA", std::string("UTF-8;\0", 7));
    EXPECT_EQ(explanation.name, "user.DosStream.com.apple.TextEncoding#CS:$DATA");
    EXPECT_EQ(explanation.title, "Text encoding");
    EXPECT_THAT(
        linesOf(explanation), ElementsAre("Name: UTF-8", "Copying: depends on the content, synchronised"));
}

TEST(Explain, dropsExactlyOneNulOfAStream) {
    EXPECT_THAT(explainedLines("user.DosStream.encryptable:$DATA", zeros(1)), IsEmpty());
    const Explanation two = explained("user.DosStream.encryptable:$DATA", zeros(2));
    EXPECT_THAT(linesOf(two), ElementsAre("Value: 00"));
    EXPECT_THAT(two.notes, ElementsAre("A value, where a marker has none"));
}

TEST(Explain, showsAValueThatIsNotInItsFormAsBytesAndSaysWhere) {
    const Explanation explanation = explained("system.posix_acl_access", bytesOfHex("0200000001"));
    EXPECT_EQ(explanation.title, "Access control list");
    EXPECT_THAT(linesOf(explanation), ElementsAre("Bytes: 0200000001"));
    EXPECT_THAT(
        explanation.notes,
        ElementsAre(
            "Not in the expected form: at byte 4 of 5, entries of 8 bytes, at most 8192 was expected"));
    EXPECT_EQ(
        *explanation.fields[0].value.as<platform::Data>(),
        platform::Data({std::byte{2}, {}, {}, {}, std::byte{1}}));
}

TEST(Explain, writesOutHiddenCharactersAndKeepsThemInTheValue) {
    const Explanation explanation = explained("user.xdg.comment", "a\xE2\x80\xAE\nb\x1B");
    EXPECT_THAT(linesOf(explanation), ElementsAre("Comment: a⟨U+202E⟩⟨LF⟩b⟨ESC⟩"));
    EXPECT_EQ(explanation.fields[0].value, platform::Value("a\xE2\x80\xAE\nb\x1B"));
    EXPECT_THAT(
        explained(
            "com.apple.quarantine", "0001;0;a\xE2\x80\xAE"
                                    "b;")
            .summary,
        HasSubstr("by a⟨U+202E⟩b"));
}

TEST(Explain, hasValidTextsForNamesThatAreNone) {
    const Explanation explanation = explained("user.\xFF\x80", "x");
    EXPECT_EQ(explanation.name, "user.\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(explanation.certainty, Certainty::guess);
}

TEST(Explain, leavesOutFieldsPastTheLimitAndSaysSo) {
    std::string tags;
    for (std::size_t i = 0; i < attributes::mostFields + 3; ++i) {
        tags += "t,";
    }
    const Explanation explanation = explained("user.xdg.tags", tags);
    EXPECT_EQ(explanation.fields.size(), attributes::mostFields);
    EXPECT_THAT(explanation.notes, ElementsAre("3 more fields are not shown"));
}

TEST(Explain, leavesOutTextsPastTheLimitAndSaysSo) {
    const Explanation explanation = explained("user.xdg.comment", std::string(attributes::mostText, 'a'));
    EXPECT_THAT(explanation.fields, IsEmpty());
    EXPECT_THAT(explanation.notes, ElementsAre("1 more fields are not shown"));
}

TEST(Explain, prefersAnExactNameToABeginningAndALongerOneToAShorter) {
    EXPECT_EQ(explained("user.fuseoverlayfs.override_stat", "1:2:644").title, "Owner in a container");
    EXPECT_EQ(explained("user.fuseoverlayfs.opaque", "y").title, "Overlay");
    EXPECT_EQ(explained("com.apple.metadata:kMDLabel_abc", "x").certainty, Certainty::opaque);
}

void forEachFamily(const auto& visit) {
    for (const auto& table :
         {attributes::desktopFamilies(), attributes::linuxFamilies(), attributes::clusterFamilies(),
          attributes::windowsFamilies(), attributes::macFamilies()}) {
        std::ranges::for_each(table, visit);
    }
}

TEST(Explain, knowsEachNameOnce) {
    std::set<std::string_view> names;
    forEachFamily([&](const attributes::Family& family) {
        EXPECT_TRUE(names.insert(family.name).second) << family.name;
        EXPECT_FALSE(family.title.empty()) << family.name;
        EXPECT_TRUE(family.summary.ends_with('.')) << family.name;
        EXPECT_EQ(attributes::familyNamed(family.name), &family);
    });
    EXPECT_EQ(attributes::familyNamed("user.unknown"), nullptr);
}

TEST(Explain, survivesAnyShortValueOfEveryName) {
    forEachFamily([](const attributes::Family& family) {
        for (const std::size_t length : {0U, 1U, 2U, 4U, 7U, 8U, 12U, 16U, 20U, 32U, 57U, 72U}) {
            for (const char fill : {'\0', '\xFF', '1', ':'}) {
                const Explanation explanation = explained(family.name, std::string(length, fill));
                EXPECT_TRUE(platform::isValidUtf8(explanation.summary)) << family.name;
                EXPECT_FALSE(explanation.summary.empty()) << family.name;
            }
        }
    });
}

} // namespace
} // namespace tolvane::tests
