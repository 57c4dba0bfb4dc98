#include "inspect/SizeData.h"

#include "tests/support/ScriptedSources.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <type_traits>

namespace tolvane::tests {
namespace {

using inspect::SizeData;
using platform::Dictionary;
using platform::Value;

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

    static void expectSizes(
        const SizeData& sizes,
        std::int64_t total,
        std::int64_t data,
        std::int64_t xattr,
        std::int64_t fileManager) {
        EXPECT_EQ(sizes.uTotalSize(), total);
        EXPECT_EQ(sizes.uDataSize(), data);
        EXPECT_EQ(sizes.uXattrSize(), xattr);
        EXPECT_EQ(sizes.fmDataSize(), fileManager);
        EXPECT_EQ(sizes.inode().empty(), fileManager == 0);
    }

    CallLog log;
    platform::URL url = platform::URL::fileURLWithPath("/tmp/some file");
    ScriptedURLResources resources{log};
    ScriptedFileManager fileManager{log};
    ScriptedExtendedAttributes attributes{log};
};

using SizeDataDeathTest = SizeDataTest;

static_assert(!std::is_default_constructible_v<SizeData>, "a size record is made from a URL only");

TEST_F(SizeDataTest, fillsEveryFieldFromItsSourceInTheirOrder) {
    const SizeData sizes = measure();
    EXPECT_EQ(sizes.url(), url);
    expectSizes(sizes, 130, 100, 7, 100);
    EXPECT_EQ(sizes.inode(), *fileManager.answer);
    EXPECT_THAT(
        log, testing::ElementsAre(
                 "resourceValues NSURLFileSizeKey NSURLTotalFileSizeKey", //
                 "listxattr /tmp/some file 0", "listxattr /tmp/some file 18", "getxattr user.one 0",
                 "getxattr user.two 0", //
                 "attributesOfItemAtPath /tmp/some file"));
}

TEST_F(SizeDataTest, keepsDefaultsWhenResourceValuesCannotBeFetched) {
    resources.failingKey = "";
    const SizeData sizes = measure();
    EXPECT_EQ(sizes.url(), url);
    expectSizes(sizes, 0, 0, 0, 0);
    EXPECT_EQ(log.size(), 1U);
}

TEST_F(SizeDataTest, readsEachResourceValueOnItsOwn) {
    resources.values = {{"NSURLFileSizeKey", std::int64_t{100}}};
    expectSizes(measure(), 0, 100, 7, 100);
    resources.values = {{"NSURLTotalFileSizeKey", std::int64_t{130}}};
    expectSizes(measure(), 130, 0, 7, 100);
}

TEST_F(SizeDataTest, stopsGatheringWhenAttributesCannotBeListed) {
    attributes.onList = [](const char*, std::span<char>) { return std::unexpected(ENOTSUP); };
    expectSizes(measure(), 130, 100, 0, 0);
    EXPECT_THAT(log, testing::Each(testing::Not(testing::StartsWith("attributesOfItemAtPath"))));
}

TEST_F(SizeDataTest, keepsEarlierFieldsWhenTheFileManagerFails) {
    fileManager.answer = std::unexpected(platform::posixError(EACCES));
    expectSizes(measure(), 130, 100, 7, 0);
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

} // namespace
} // namespace tolvane::tests
