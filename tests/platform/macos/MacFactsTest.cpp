#include "inspect/ExtendedAttributes.h"
#include "platform/macos/facts/MacExtendedAttributeCalls.h"
#include "platform/macos/facts/MacFileManager.h"
#include "platform/macos/facts/MacURLResources.h"
#include "tests/platform/macos/substitute/Substitute.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>

namespace tolvane {
namespace {

using namespace platform;
using namespace tests::macos;
using testing::ElementsAre;

class MacFacts : public testing::Test {
protected:
    MacFacts() {
        substitute.error = [] { return newError("NSCocoaErrorDomain", 257, "Not permitted."); };
    }

    Substitute substitute;
    const URL item = URL::fileURLWithPath("/folder/item");
};

TEST_F(MacFacts, asksForAttributesWithPositionAndOptionsZero) {
    const MacExtendedAttributeCalls calls;
    substitute.attributeAnswer = 5;
    std::array<char, 5> names{};
    std::array<std::byte, 3> value{};
    EXPECT_EQ(calls.listxattr("/a", {}), 5);
    EXPECT_EQ(calls.listxattr("/a", names), 5);
    EXPECT_EQ(calls.getxattr("/a", "name", {}), 5);
    EXPECT_EQ(calls.getxattr("/a", "name", value), 5);
    EXPECT_EQ(calls.listxattr(nullptr, {}), 5);
    EXPECT_THAT(
        substitute.calls,
        ElementsAre(
            "listxattr /a null 0 0", "listxattr /a buffer 5 0", "getxattr /a name null 0 0 0",
            "getxattr /a name buffer 3 0 0", "listxattr null null 0 0"));
}

TEST_F(MacFacts, passesTheErrorNumberOn) {
    const MacExtendedAttributeCalls calls;
    substitute.attributeAnswer = std::unexpected(EACCES);
    EXPECT_EQ(calls.listxattr("/a", {}), std::unexpected(EACCES));
    EXPECT_EQ(calls.getxattr("/a", "name", {}), std::unexpected(EACCES));
    EXPECT_EQ(inspect::xattrNames("/a", calls).error().code, EACCES);
}

TEST_F(MacFacts, asksTheSystemOnceForAllValuesThatTheURLDoesNotKeep) {
    substitute.resourceValues = [] {
        return newDictionary(
            {{newString("NSURLFileSizeKey"), newNumber({kCFNumberSInt64Type, std::int64_t{12}})},
             {newString("NSURLTypeIdentifierKey"), newString("public.text")},
             {newString("NSURLFileResourceIdentifierKey"), newOther()}});
    };
    URL known = item;
    known.keepResourceValue(NSURLCreationDateKey, Date(1.5));
    const std::array keys{NSURLFileSizeKey,       NSURLCreationDateKey,
                          NSURLTypeIdentifierKey, NSURLFileResourceIdentifierKey,
                          NSURLTotalFileSizeKey,  std::string_view("NSURLNoSuchKey")};
    const auto values = MacURLResources().resourceValuesForKeys(known, keys);
    ASSERT_TRUE(values);
    EXPECT_EQ(
        *values, (Dictionary{
                     {std::string(NSURLFileSizeKey), std::int64_t{12}},
                     {std::string(NSURLCreationDateKey), Date(1.5)},
                     {std::string(NSURLTypeIdentifierKey), "public.text"}}));
    EXPECT_THAT(
        substitute.calls,
        ElementsAre("resource values of file:///folder/item [NSURLFileSizeKey NSURLTypeIdentifierKey "
                    "NSURLFileResourceIdentifierKey NSURLTotalFileSizeKey]"));
}

TEST_F(MacFacts, doesNotAskForValuesThatTheURLKeeps) {
    URL known = item;
    known.keepResourceValue(NSURLFileSizeKey, std::int64_t{3});
    const std::array keys{NSURLFileSizeKey};
    const auto values = MacURLResources().resourceValuesForKeys(known, keys);
    ASSERT_TRUE(values);
    EXPECT_EQ(*values, (Dictionary{{std::string(NSURLFileSizeKey), std::int64_t{3}}}));
    EXPECT_TRUE(substitute.calls.empty());
}

TEST_F(MacFacts, refusesAURLWithoutAPath) {
    const std::array keys{NSURLFileSizeKey};
    const auto values =
        MacURLResources().resourceValuesForKeys(URL::fromText("https://example.org/a").value(), keys);
    ASSERT_FALSE(values);
    EXPECT_EQ(values.error().code, EINVAL);
}

TEST_F(MacFacts, failsWhereAnyCallForResourceValuesFails) {
    substitute.resourceValues = [] { return newDictionary({}); };
    const std::array keys{NSURLFileSizeKey};
    for (std::size_t index = 0;; ++index) {
        substitute.failCall(index);
        const auto values = MacURLResources().resourceValuesForKeys(item, keys);
        EXPECT_EQ(livingObjects(), 0U) << index;
        if (!substitute.hasFailed()) {
            EXPECT_TRUE(values);
            EXPECT_EQ(index, 3U);
            return;
        }
        EXPECT_FALSE(values) << index;
    }
}

TEST_F(MacFacts, reportsTheSystemsErrorForResourceValues) {
    const std::array keys{NSURLFileSizeKey};
    const auto values = MacURLResources().resourceValuesForKeys(item, keys);
    ASSERT_FALSE(values);
    EXPECT_EQ(values.error().localizedDescription(), "Not permitted.");

    substitute.error = nullptr;
    EXPECT_EQ(
        MacURLResources().resourceValuesForKeys(item, keys).error().localizedDescription(),
        "The system gave no reason.");
}

TEST_F(MacFacts, returnsTheFileManagersDictionaryAsItIs) {
    substitute.fileAttributes = [] {
        return newDictionary(
            {{newString("NSFileSize"), newNumber({kCFNumberSInt64Type, std::int64_t{12}})},
             {newString("NSFileExtensionHidden"), newBoolean(false)},
             {newString("NSFileExtendedAttributes"), newDictionary({{newString("note"), newData({1})}})}});
    };
    const auto attributes = MacFileManager().attributesOfItemAtPath("/folder/item");
    ASSERT_TRUE(attributes);
    EXPECT_EQ(
        *attributes, (Dictionary{
                         {"NSFileSize", std::int64_t{12}},
                         {"NSFileExtensionHidden", false},
                         {"NSFileExtendedAttributes", Dictionary{{"note", Data{std::byte{1}}}}}}));
    EXPECT_THAT(substitute.calls, ElementsAre("attributes of /folder/item"));
}

TEST_F(MacFacts, failsWhereTheFileManagerDoesAndForNoName) {
    const auto missing = MacFileManager().attributesOfItemAtPath("/folder/item");
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error().code, NSFileReadNoPermissionError);

    EXPECT_EQ(
        MacFileManager().attributesOfItemAtPath(std::string_view("/a\0b", 4)).error().code,
        NSFileReadInvalidFileNameError);
    substitute.failCall(0);
    EXPECT_EQ(MacFileManager().attributesOfItemAtPath("/a").error().code, NSFileReadInvalidFileNameError);
}

} // namespace
} // namespace tolvane
