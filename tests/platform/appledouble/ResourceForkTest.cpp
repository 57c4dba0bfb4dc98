#include "platform/appledouble/ResourceFork.h"

#include "tests/support/AppleDoubleFiles.h"
#include "tests/support/Bytes.h"
#include "tests/support/ScriptedSources.h"

#include <gtest/gtest.h>

namespace tolvane::platform {
namespace {

using namespace tests;

constexpr std::uint32_t alisResource = resourceType("alis");

std::string_view expectedIn(const Data& bytes) {
    const auto fork = readResourceFork(bytes);
    return fork ? "nothing" : fork.error().expected;
}

/// Where the map of a fork begins.
std::size_t mapOf(const Data& fork) {
    return 256U * std::to_integer<unsigned>(fork.at(6)) + std::to_integer<unsigned>(fork.at(7));
}

TEST(ResourceFork, hasResourcesWithTypeNumberNameAndData) {
    const Data bytes = resourceForkOf(
        {{"alis", 0, bytesOf("first"), std::nullopt},
         {"STR ", -16455, bytesOf("second"), "caf\x8E", 0x21},
         {"alis", 5, {}, ""}});
    const auto fork = readResourceFork(bytes);
    ASSERT_TRUE(fork);
    ASSERT_EQ(fork->resources.size(), 3U);
    EXPECT_EQ(fork->resources[0].typeText(), "alis");
    EXPECT_EQ(fork->resources[0].number, 0);
    EXPECT_FALSE(fork->resources[0].name);
    EXPECT_EQ(fork->resources[0].nameText(), "");
    EXPECT_EQ(textOfBytes(fork->resources[0].bytes), "first");
    EXPECT_EQ(fork->resources[0].offset, 260U);
    EXPECT_EQ(fork->resources[1].number, 5);
    EXPECT_TRUE(fork->resources[1].name);
    EXPECT_EQ(fork->resources[1].nameText(), "");
    EXPECT_TRUE(fork->resources[1].bytes.empty());
    EXPECT_EQ(fork->resources[2].typeText(), "STR ");
    EXPECT_EQ(fork->resources[2].number, -16455);
    EXPECT_EQ(fork->resources[2].nameText(), "caf\u00E9");
    EXPECT_EQ(fork->resources[2].attributes & ForkResource::compressed, 1);
    EXPECT_EQ(textOfBytes(fork->resources[2].bytes), "second");
}

TEST(ResourceFork, findsTheNumberOrElseTheFirstOfAType) {
    const Data bytes =
        resourceForkOf({{"icns", 0, {}}, {"alis", 7, bytesOf("a")}, {"alis", 3, bytesOf("b")}});
    const auto fork = readResourceFork(bytes);
    EXPECT_EQ(fork->find(alisResource, 3), &fork->resources[2]);
    EXPECT_EQ(fork->find(alisResource, 0), &fork->resources[1]);
    EXPECT_EQ(fork->find(resourceType("url "), 0), nullptr);
}

TEST(ResourceFork, mayBeEmptyOrHaveNoTypes) {
    EXPECT_TRUE(readResourceFork({})->resources.empty());
    // As systems write a fork that is to have no resources: with its header once more.
    Data blank = resourceForkOf({});
    std::copy_n(blank.begin(), 16, blank.begin() + 256);
    ASSERT_EQ(blank.size(), 286U);
    ASSERT_TRUE(readResourceFork(blank));
    EXPECT_TRUE(readResourceFork(blank)->resources.empty());
}

TEST(ResourceFork, isRefusedWhereAPartLeavesIt) {
    const Data bytes = resourceForkOf({{"alis", 0, bytesOf("record"), "name"}});
    const std::size_t map = mapOf(bytes);
    EXPECT_EQ(expectedIn(bytes), "nothing");
    EXPECT_EQ(expectedIn(withByte(bytes, 0, 1)), "resource data within the fork");
    EXPECT_EQ(expectedIn(withByte(bytes, 8, 1)), "resource data within the fork");
    EXPECT_EQ(expectedIn(withByte(bytes, 4, 1)), "a resource map within the fork");
    EXPECT_EQ(expectedIn(withByte(bytes, 15, 20)), "a resource map of 28 bytes");
    EXPECT_EQ(expectedIn(withByte(bytes, map + 24, 0x10)), "a list of types within the map");
    EXPECT_EQ(expectedIn(withByte(bytes, map + 26, 0x10)), "a name within the map");
    EXPECT_EQ(expectedIn(withByte(bytes, map + 36, 0x10)), "a reference within the map");
    EXPECT_EQ(expectedIn(withByte(bytes, map + 34, 0x10)), "no more references than the map has room for");
    EXPECT_EQ(expectedIn(withByte(bytes, map + 43, 0x10)), "a resource within the fork's data");
    EXPECT_EQ(expectedIn(withByte(bytes, 256, 1)), "a resource within the fork's data");
}

TEST(ResourceFork, ofTypesThatShareTheirReferencesIsRefused) {
    Data bytes = resourceForkOf({{"aaaa", 0, {}}, {"bbbb", 0, {}}, {"cccc", 0, {}}, {"dddd", 0, {}}});
    const std::size_t types = mapOf(bytes) + 30;
    for (std::size_t i = 0; i < 4; ++i) {
        bytes.at(types + 8 * i + 5) = std::byte{3};
        bytes.at(types + 8 * i + 7) = bytes.at(types + 7);
    }
    EXPECT_EQ(expectedIn(bytes), "no more references than the map has room for");
}

TEST(ResourceFork, isRefusedWhenCutOffAnywhere) {
    const Data bytes = resourceForkOf({{"alis", 0, bytesOf("record"), "name"}});
    for (std::size_t count = 1; count < bytes.size(); ++count) {
        const Data cut = front(bytes, count);
        const auto fork = readResourceFork(cut);
        ASSERT_FALSE(fork) << count;
        EXPECT_LE(fork.error().offset, count);
    }
}

} // namespace
} // namespace tolvane::platform
