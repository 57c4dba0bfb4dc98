#include "inspect/SizeData.h"

#include "tests/support/ScriptedSources.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <string>
#include <type_traits>

namespace tolvane::tests {
namespace {

using inspect::SizeData;
using platform::Dictionary;
using platform::Value;
using testing::ElementsAre;

class SizeDataTest : public testing::Test {
protected:
    SizeDataTest() {
        resources.values = {
            {"NSURLTotalFileSizeKey", std::int64_t{130}}, {"NSURLFileSizeKey", std::int64_t{100}}};
        attributes.attributes = {{"user.one", "12345"}, {"user.two", "67"}};
        fileManager.answer =
            Dictionary{{"NSFileSize", std::uint64_t{100}}, {"NSFileType", "NSFileTypeRegular"}};
    }

    SizeData measure() { return {url, {resources, fileManager, attributes}}; }

    CallLog log;
    platform::URL url = platform::URL::fileURLWithPath("/tmp/some file");
    ScriptedURLResources resources{log};
    ScriptedFileManager fileManager{log};
    ScriptedExtendedAttributes attributes{log};
};

using SizeDataDeathTest = SizeDataTest;

static_assert(!std::is_default_constructible_v<SizeData>, "a size record is made from a URL only");

TEST_F(SizeDataTest, fillsEveryFieldFromItsSource) {
    const SizeData sizes = measure();
    EXPECT_EQ(sizes.url(), url);
    EXPECT_EQ(sizes.uTotalSize(), 130);
    EXPECT_EQ(sizes.uDataSize(), 100);
    EXPECT_EQ(sizes.uXattrSize(), 7);
    EXPECT_EQ(sizes.fmDataSize(), 100);
    EXPECT_EQ(sizes.inode(), *fileManager.answer);
}

TEST_F(SizeDataTest, asksTheSourcesInTheirOrder) {
    measure();
    EXPECT_THAT(
        log, ElementsAre(
                 "resourceValues NSURLFileSizeKey NSURLTotalFileSizeKey", //
                 "listxattr /tmp/some file 0", "listxattr /tmp/some file 18", "getxattr user.one 0",
                 "getxattr user.two 0", //
                 "attributesOfItemAtPath /tmp/some file"));
}

TEST_F(SizeDataTest, keepsDefaultsWhenResourceValuesCannotBeFetched) {
    resources.failingKey = "";
    const SizeData sizes = measure();
    EXPECT_EQ(sizes.url(), url);
    EXPECT_EQ(sizes.uTotalSize(), 0);
    EXPECT_EQ(sizes.uDataSize(), 0);
    EXPECT_EQ(sizes.uXattrSize(), 0);
    EXPECT_EQ(sizes.fmDataSize(), 0);
    EXPECT_TRUE(sizes.inode().empty());
    EXPECT_EQ(log.size(), 1U);
}

TEST_F(SizeDataTest, takesEachResourceValueOnItsOwn) {
    resources.values = {{"NSURLFileSizeKey", std::int64_t{100}}};
    EXPECT_EQ(measure().uTotalSize(), 0);
    EXPECT_EQ(measure().uDataSize(), 100);

    resources.values = {{"NSURLTotalFileSizeKey", std::int64_t{130}}};
    EXPECT_EQ(measure().uTotalSize(), 130);
    EXPECT_EQ(measure().uDataSize(), 0);
    EXPECT_EQ(measure().fmDataSize(), 100);
}

TEST_F(SizeDataTest, stopsGatheringWhenAttributesCannotBeListed) {
    attributes.onList = [](const char*, std::span<char>) { return std::unexpected(ENOTSUP); };
    const SizeData sizes = measure();
    EXPECT_EQ(sizes.uTotalSize(), 130);
    EXPECT_EQ(sizes.uDataSize(), 100);
    EXPECT_EQ(sizes.uXattrSize(), 0);
    EXPECT_EQ(sizes.fmDataSize(), 0);
    EXPECT_TRUE(sizes.inode().empty());
    EXPECT_THAT(log, testing::Each(testing::Not(testing::StartsWith("attributesOfItemAtPath"))));
}

TEST_F(SizeDataTest, stopsGatheringWhenOneAttributeCannotBeMeasured) {
    attributes.onSize = [](const char*, const char* name) -> platform::ExtendedAttributeCalls::Answer {
        if (std::string(name) == "user.two") {
            return std::unexpected(ENODATA);
        }
        return 5;
    };
    const SizeData sizes = measure();
    EXPECT_EQ(sizes.uDataSize(), 100);
    EXPECT_EQ(sizes.uXattrSize(), 0);
    EXPECT_EQ(sizes.fmDataSize(), 0);
    EXPECT_TRUE(sizes.inode().empty());
}

TEST_F(SizeDataTest, keepsEarlierFieldsWhenTheFileManagerAnswersNothing) {
    fileManager.answer = std::unexpected(platform::posixError(EACCES));
    const SizeData sizes = measure();
    EXPECT_EQ(sizes.uTotalSize(), 130);
    EXPECT_EQ(sizes.uDataSize(), 100);
    EXPECT_EQ(sizes.uXattrSize(), 7);
    EXPECT_EQ(sizes.fmDataSize(), 0);
    EXPECT_TRUE(sizes.inode().empty());
}

TEST_F(SizeDataTest, countsNothingForAFileWithoutAttributes) {
    attributes.attributes.clear();
    const SizeData sizes = measure();
    EXPECT_EQ(sizes.uXattrSize(), 0);
    EXPECT_EQ(sizes.uTotalSize(), 130);
    EXPECT_EQ(sizes.fmDataSize(), 100);
    EXPECT_FALSE(sizes.inode().empty());
}

TEST_F(SizeDataTest, givesTheFileManagerThePathsOwnBytes) {
    url = platform::URL::fileURLWithPath("/tmp/\xFF%41");
    measure();
    EXPECT_EQ(log.back(), "attributesOfItemAtPath /tmp/\xFF%41");
}

TEST_F(SizeDataDeathTest, stopsWithoutAnIntegerFileSize) {
    for (const Value& size : {Value("100"), Value(100.0), Value(true), Value(std::uint64_t{1} << 63U)}) {
        fileManager.answer = Dictionary{{"NSFileSize", size}};
        EXPECT_DEATH(measure(), "^tolvane: fatal: .*NSFileSize");
    }
    fileManager.answer = Dictionary{{"NSFileType", "NSFileTypeRegular"}};
    EXPECT_DEATH(measure(), "^tolvane: fatal: .*NSFileSize");
}

TEST_F(SizeDataDeathTest, stopsWhenTheSumOfAttributeSizesOverflows) {
    attributes.onSize = [](const char*, const char*) { return INT64_MAX; };
    EXPECT_DEATH(measure(), "^tolvane: fatal: .*extended attributes.*overflows");
}

} // namespace
} // namespace tolvane::tests
