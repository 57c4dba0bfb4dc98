#include "attributes/Companion.h"

#include "tests/attributes/Explaining.h"
#include "tests/support/AppleDoubleFiles.h"
#include "tests/support/Bytes.h"
#include "tests/support/ScriptedSources.h"

namespace tolvane::tests {
namespace {

using attributes::companionAttributes;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::vector<std::string> namesIn(const attributes::Companion& companion) {
    std::vector<std::string> names;
    for (const attributes::CompanionAttribute& attribute : companion.attributes) {
        names.push_back(attribute.name);
    }
    return names;
}

TEST(Companion, hasEachAttributeWithItsValue) {
    const platform::Data file = companionFileWithAttributes(
        {{"com.apple.quarantine", std::string("q/0001;;A;\0", 11)}, {"com.example.empty", ""}},
        resourceForkOf({{"STR ", 128, bytesOf("x")}}));
    const auto companion = companionAttributes(file);
    ASSERT_TRUE(companion.has_value());
    EXPECT_THAT(
        namesIn(*companion),
        ElementsAre(
            "com.apple.FinderInfo", "com.apple.ResourceFork", "com.apple.quarantine", "com.example.empty"));
    EXPECT_EQ(textOfBytes(companion->attributes[2].value), std::string_view("q/0001;;A;\0", 11));
    EXPECT_EQ(companion->damage, std::nullopt);
}

TEST(Companion, hasFinderInformationUnlessItIsZero) {
    const platform::Data file = companionFile({{9, bytesOf(finderInfoOfFile("TEXT", "ttxt", 0))}});
    EXPECT_THAT(namesIn(*companionAttributes(file)), ElementsAre("com.apple.FinderInfo"));
    EXPECT_THAT(companionAttributes(companionFile({{9, platform::Data(32)}}))->attributes, IsEmpty());
    EXPECT_THAT(companionAttributes(companionFile({{9, platform::Data(31)}}))->attributes, IsEmpty());
}

TEST(Companion, isNothingElse) {
    EXPECT_EQ(companionAttributes({}), std::nullopt);
    EXPECT_EQ(companionAttributes(companionFile({}, 0x20000, 0x00051600)), std::nullopt);
}

TEST(Companion, saysThatItsAttributesAreDamaged) {
    // The value begins beyond the file.
    const platform::Data file =
        withByte(companionFileWithAttributes({{"com.example.a", "value"}}), 120, 0xFF);
    EXPECT_THAT(companionAttributes(file)->damage, testing::Optional(HasSubstr("was expected at byte")));
    EXPECT_THAT(explained("user.org.netatalk.Metadata", textOfBytes(file)).notes, testing::Not(IsEmpty()));
}

TEST(AppleDoubleValue, hasEveryPart) {
    const platform::Data file = companionFile(
        {{9, bytesOf(finderInfoOfFile("TEXT", "ttxt", 0))},
         {4, bytesOf("note")},
         {8, bytesOf(big<4>(60, 0, 0x80000000, 0xFFFFFFFF))},
         {14, bytesOf(big<4>(0x81))},
         {15, bytesOf(big<4>(17))},
         {0x80494E4F, bytesOf(little<8>(99))},
         {77, bytesOf("zz")}});
    EXPECT_THAT(
        explainedLines("user.org.netatalk.Metadata", textOfBytes(file)),
        testing::IsSupersetOf(
            {"Type: TEXT", "Creator: ttxt", "Comment: note", "Created: 2000-01-01 00:01:00 UTC",
             "Modified: 2000-01-01 00:00:00 UTC", "Read: 1999-12-31 23:59:59 UTC",
             "AFP information: invisible, not renamed (0x00000081)", "AFP folder number: 17", "Inode: 99",
             "Part 0x4d: 7a7a"}));
}

TEST(AppleDoubleValue, hasNestedAttributes) {
    const platform::Data file = companionFileWithAttributes({{"com.apple.TextEncoding", "UTF-8;134217984"}});
    EXPECT_THAT(
        explainedLines("user.unheard.of", textOfBytes(file)),
        testing::IsSupersetOf({"com.apple.TextEncoding › Name: UTF-8"}));
}

TEST(AppleDoubleValue, isRefusedWhereItIsDamaged) {
    const platform::Data file = companionFile({{4, bytesOf("note")}});
    expectEveryCutRefused("user.org.netatalk.Metadata", textOfBytes(file));
}

} // namespace
} // namespace tolvane::tests
