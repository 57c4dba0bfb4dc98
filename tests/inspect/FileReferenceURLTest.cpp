#include "inspect/FileReferenceURL.h"

#include "tests/support/ScriptedSources.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstring>

namespace tolvane::tests {
namespace {

using inspect::getFileReferenceURL;
using platform::Data;

Data identifierOf(std::uint64_t file, std::uint64_t device) {
    const std::array<std::uint64_t, 2> halves{file, device};
    Data bytes(sizeof halves);
    std::memcpy(bytes.data(), halves.data(), sizeof halves);
    return bytes;
}

class FileReferenceURLTest : public testing::Test {
protected:
    std::optional<std::string> referenceFor(const platform::Value& identifier) {
        resources.values = {{"NSURLFileResourceIdentifierKey", identifier}};
        return getFileReferenceURL(url, resources);
    }

    CallLog log;
    ScriptedURLResources resources{log};
    platform::URL url = platform::URL::fileURLWithPath("/item");
};

TEST_F(FileReferenceURLTest, writesTheDeviceBeforeTheFile) {
    EXPECT_EQ(referenceFor(identifierOf(7, 42)), "file:///.file/id=42.7");
    EXPECT_EQ(log, CallLog{"resourceValues NSURLFileResourceIdentifierKey"});
    EXPECT_EQ(referenceFor(identifierOf(0, 0)), "file:///.file/id=0.0");
    EXPECT_EQ(
        referenceFor(identifierOf(UINT64_MAX, UINT64_MAX)),
        "file:///.file/id=18446744073709551615.18446744073709551615");
}

TEST_F(FileReferenceURLTest, isAbsentForAnyOtherLength) {
    for (const std::size_t length : {0U, 1U, 8U, 15U, 17U, 24U, 32U}) {
        EXPECT_EQ(referenceFor(Data(length)), std::nullopt) << length;
    }
}

TEST_F(FileReferenceURLTest, isAbsentWithoutAnIdentifierOfTheRightType) {
    EXPECT_EQ(getFileReferenceURL(url, resources), std::nullopt) << "without the key";
    EXPECT_EQ(referenceFor("sixteen letters!"), std::nullopt);
    EXPECT_EQ(referenceFor(std::uint64_t{42}), std::nullopt);
    resources.failingKey = "";
    EXPECT_EQ(referenceFor(identifierOf(7, 42)), std::nullopt) << "the request fails";
}

} // namespace
} // namespace tolvane::tests
