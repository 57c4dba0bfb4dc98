#include "attributes/Companion.h"

#include "tests/attributes/Explaining.h"
#include "tests/support/AppleDoubleFiles.h"
#include "tests/support/AttributeValues.h"
#include "tests/support/PropertyListWriters.h"
#include "tests/support/ScriptedSources.h"

namespace tolvane::tests {
namespace {

using testing::Contains;
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
    const auto companion = attributes::companionAttributes(file);
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
    EXPECT_THAT(namesIn(*attributes::companionAttributes(file)), ElementsAre("com.apple.FinderInfo"));
    EXPECT_THAT(
        attributes::companionAttributes(companionFile({{9, platform::Data(32)}}))->attributes, IsEmpty());
    EXPECT_THAT(
        attributes::companionAttributes(companionFile({{9, platform::Data(31)}}))->attributes, IsEmpty());
}

TEST(Companion, isNothingElse) {
    EXPECT_EQ(attributes::companionAttributes({}), std::nullopt);
    EXPECT_EQ(attributes::companionAttributes(companionFile({}, 0x20000, 0x00051600)), std::nullopt);
}

TEST(Companion, saysThatItsAttributesAreDamaged) {
    platform::Data file = companionFileWithAttributes({{"com.example.a", "value"}});
    file.resize(file.size() - 3);
    const auto companion = attributes::companionAttributes(file);
    if (companion) {
        EXPECT_THAT(companion->damage, testing::Optional(HasSubstr("was expected at byte")));
    }
    EXPECT_THAT(explained("user.org.netatalk.Metadata", textOfBytes(file)).notes, testing::Not(IsEmpty()));
}

TEST(AppleDoubleValue, hasEveryPart) {
    const platform::Data file = companionFile(
        {{9, bytesOf(finderInfoOfFile("TEXT", "ttxt", 0))},
         {4, bytesOf("note")},
         {8,
          bytesOf(bigEndian(60, 4) + bigEndian(0, 4) + bigEndian(0x80000000, 4) + bigEndian(0xFFFFFFFF, 4))},
         {14, bytesOf(bigEndian(0x81, 4))},
         {15, bytesOf(bigEndian(17, 4))},
         {0x80494E4F, bytesOf(littleEndian(99, 8))},
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
    for (std::size_t length = 0; length < file.size(); ++length) {
        EXPECT_NE(
            complaintAbout("user.org.netatalk.Metadata", textOfBytes(std::span(file).first(length))), "")
            << length;
    }
}

} // namespace
} // namespace tolvane::tests
