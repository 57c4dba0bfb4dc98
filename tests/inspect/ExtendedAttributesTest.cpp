#include "inspect/ExtendedAttributes.h"

#include "tests/support/ScriptedSources.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace tolvane::tests {
namespace {

using inspect::totalXattrSize;
using inspect::xattrNames;
using inspect::xattrValueSize;
using platform::ExtendedAttributeCalls;
using testing::ElementsAre;
using namespace std::string_view_literals;

class ExtendedAttributesTest : public testing::Test {
protected:
    /// Makes the size query answer `announced` and the reading fill in `list`.
    void answerList(std::int64_t announced, std::string_view list) {
        calls.onList = [announced,
                        list](const char*, std::span<char> buffer) -> ExtendedAttributeCalls::Answer {
            if (buffer.empty()) {
                return announced;
            }
            std::copy_n(list.begin(), std::min(list.size(), buffer.size()), buffer.begin());
            return static_cast<std::int64_t>(list.size());
        };
    }

    CallLog log;
    ScriptedExtendedAttributes calls{log};
    platform::URL url = platform::URL::fileURLWithPath("/item");
};

using ExtendedAttributesDeathTest = ExtendedAttributesTest;

TEST_F(ExtendedAttributesTest, listsNamesInTheSystemsOrder) {
    calls.attributes = {{"user.z", ""}, {"user.a", ""}, {"security.x", ""}};
    EXPECT_THAT(*xattrNames("/item", calls), ElementsAre("user.z", "user.a", "security.x"));
    EXPECT_THAT(log, ElementsAre("listxattr /item 0", "listxattr /item 25"));
}

TEST_F(ExtendedAttributesTest, countsValuesAndNeverNamesAndAsksForNoSizeWithoutNames) {
    EXPECT_EQ(*totalXattrSize(url, calls), 0);
    EXPECT_THAT(log, ElementsAre("listxattr /item 0", "listxattr /item 0"));
    calls.attributes = {{"user.a-long-name", ""}, {"user.b", "xyz"}, {"user.c", ""}};
    EXPECT_EQ(*totalXattrSize(url, calls), 3);
    EXPECT_EQ(*xattrValueSize("/item", "user.a-long-name", calls), 0);
}

TEST_F(ExtendedAttributesTest, findsNoEmptyNamesInAList) {
    answerList(14, "user.a\0"sv);
    EXPECT_THAT(*xattrNames("/item", calls), ElementsAre("user.a")) << "the list has become shorter";
    answerList(14, ""sv);
    EXPECT_THAT(*xattrNames("/item", calls), testing::IsEmpty());
    answerList(17, "\0user.a\0\0\0user.b\0"sv);
    EXPECT_THAT(*xattrNames("/item", calls), ElementsAre("user.a", "user.b"));
    answerList(6, "user.a"sv);
    EXPECT_THAT(*xattrNames("/item", calls), ElementsAre("user.a")) << "the last NUL is missing";
}

TEST_F(ExtendedAttributesTest, failsWhenTheListGrewBeforeItWasRead) {
    calls.onList = [](const char*, std::span<char> buffer) {
        return buffer.empty() ? ExtendedAttributeCalls::Answer(7) : std::unexpected(ERANGE);
    };
    EXPECT_EQ(xattrNames("/item", calls).error().code, ERANGE);
    EXPECT_EQ(log.size(), 2U) << "nothing is tried again";
    EXPECT_EQ(totalXattrSize(url, calls).error().code, ERANGE);
}

TEST_F(ExtendedAttributesTest, leavesOutNamesThatAreNotUtf8) {
    calls.attributes = {{"user.a", "1"}, {"user.\xFF\xFE", "22"}, {"user.\xC3\xA9", "333"}};
    EXPECT_THAT(*xattrNames("/item", calls), ElementsAre("user.a", "user.\xC3\xA9"));
    EXPECT_EQ(*totalXattrSize(url, calls), 4);
    EXPECT_THAT(log, testing::Not(testing::Contains("getxattr user.\xFF\xFE 0")));
}

TEST_F(ExtendedAttributesTest, failsWithoutAPartialTotalWhenAnAttributeIsGone) {
    calls.attributes = {{"user.a", "1"}, {"user.b", "22"}, {"user.c", "333"}};
    calls.onSize = [](const char*, std::string_view name) {
        return name == "user.b" ? std::unexpected(ENODATA) : ExtendedAttributeCalls::Answer(1);
    };
    const auto total = totalXattrSize(url, calls);
    ASSERT_FALSE(total);
    EXPECT_EQ(total.error().code, ENODATA);
    EXPECT_THAT(log, testing::Not(testing::Contains("getxattr user.c 0"))) << "the first failure ends it";
    EXPECT_EQ(xattrValueSize("/item", "user.b", calls).error().code, ENODATA);
}

TEST_F(ExtendedAttributesTest, carriesTheSystemsErrorOfAMissingItem) {
    calls.onList = [](const char*, std::span<char>) { return std::unexpected(ENOENT); };
    const auto total = totalXattrSize(url, calls);
    ASSERT_FALSE(total);
    EXPECT_EQ(total.error().domain, "NSPOSIXErrorDomain");
    EXPECT_EQ(total.error().code, ENOENT);
    EXPECT_EQ(total.error().userInfo.size(), 1U);
    EXPECT_EQ(
        *total.error().userInfo.find("NSLocalizedDescriptionKey"), platform::Value(std::strerror(ENOENT)));
}

TEST_F(ExtendedAttributesTest, passesANullPathOnForAURLThatIsNotAFile) {
    calls.onList = [](const char* path, std::span<char>) {
        return path == nullptr ? std::unexpected(EFAULT) : ExtendedAttributeCalls::Answer(0);
    };
    const auto web = platform::URL::fromText("https://tolvane.example/");
    EXPECT_EQ(totalXattrSize(*web, calls).error().code, EFAULT);
}

TEST_F(ExtendedAttributesTest, reachesTheLargestSumThatFits) {
    calls.attributes = {{"user.a", ""}, {"user.b", ""}};
    calls.onSize = [](const char*, std::string_view name) {
        return name == "user.a" ? INT64_MAX - 1 : std::int64_t{1};
    };
    EXPECT_EQ(*totalXattrSize(url, calls), INT64_MAX);
}

TEST_F(ExtendedAttributesDeathTest, stopsWhenTheTotalOverflows) {
    calls.attributes = {{"user.a", ""}, {"user.b", ""}};
    calls.onSize = [](const char*, const char*) { return INT64_MAX; };
    EXPECT_DEATH(
        static_cast<void>(totalXattrSize(url, calls)), "^tolvane: fatal: .*extended attributes.*overflows");
}

} // namespace
} // namespace tolvane::tests
