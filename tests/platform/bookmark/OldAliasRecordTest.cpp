#include "platform/bookmark/OldAliasRecord.h"

#include "platform/bookmark/ByteAppending.h"
#include "tests/platform/bookmark/Examples.h"

#include <gtest/gtest.h>

#include <string_view>

namespace tolvane::platform {
namespace {

using namespace tests;

void appendBigEndian(Data& out, std::uint64_t number, std::size_t width) {
    for (std::size_t i = width; i > 0; --i) {
        out.push_back(static_cast<std::byte>(number >> (8 * (i - 1))));
    }
}

Data aliasBytes(unsigned version, unsigned kind, std::string_view volume) {
    Data bytes;
    appendBigEndian(bytes, 0, 4);
    appendBigEndian(bytes, 150, 2);
    appendBigEndian(bytes, version, 2);
    appendBigEndian(bytes, kind, 2);
    appendBigEndian(bytes, volume.size(), 1);
    appendText(bytes, volume);
    bytes.resize(150);
    return bytes;
}

struct Resource {
    unsigned number;
    Data bytes;
};

/// A resource fork with one icon and these alias resources.
Data forkWith(const std::vector<Resource>& resources) {
    Data data;
    appendBigEndian(data, 2, 4);
    appendBigEndian(data, 0xBEEF, 2);
    Data references;
    for (const Resource& resource : resources) {
        appendBigEndian(references, resource.number, 2);
        appendBigEndian(references, 0xFFFF, 2);
        appendBigEndian(references, 0, 1);
        appendBigEndian(references, data.size(), 3);
        appendBigEndian(references, 0, 4);
        appendBigEndian(data, resource.bytes.size(), 4);
        appendBytes(data, resource.bytes);
    }
    Data icon;
    appendBigEndian(icon, 0xBFB9, 2);
    appendBigEndian(icon, 0xFFFF, 2);
    icon.resize(12);

    Data map(24);
    appendBigEndian(map, 28, 2);
    map.resize(28);
    appendBigEndian(map, 1, 2);
    appendText(map, "icns");
    appendBigEndian(map, 0, 2);
    appendBigEndian(map, 18, 2);
    appendText(map, "alis");
    appendBigEndian(map, resources.size() - 1, 2);
    appendBigEndian(map, 30, 2);
    appendBytes(map, icon);
    appendBytes(map, references);

    Data fork;
    appendBigEndian(fork, 256, 4);
    appendBigEndian(fork, 256 + data.size(), 4);
    appendBigEndian(fork, data.size(), 4);
    appendBigEndian(fork, map.size(), 4);
    fork.resize(256);
    appendBytes(fork, data);
    appendBytes(fork, map);
    return fork;
}

TEST(OldAliasRecord, tellsVersionKindAndVolume) {
    const auto record = oldAliasRecord(aliasBytes(2, 0, "Macintosh HD"));
    ASSERT_TRUE(record);
    EXPECT_EQ(*record, (OldAliasRecord{2, false, "Macintosh HD"}));
    EXPECT_EQ(record->description(), "old alias record, version 2, volume Macintosh HD");
    EXPECT_EQ(oldAliasRecord(aliasBytes(2, 1, "")), (OldAliasRecord{2, true, ""}));
}

TEST(OldAliasRecord, ofVersionThreeTellsNoVolume) {
    const auto record = oldAliasRecord(aliasBytes(3, 1, "Macintosh HD"));
    ASSERT_TRUE(record);
    EXPECT_EQ(*record, (OldAliasRecord{3, true, std::nullopt}));
    EXPECT_EQ(record->description(), "old alias record, version 3");
}

TEST(OldAliasRecord, readsVolumeNamesInTheMacsRomanEncoding) {
    const auto record = oldAliasRecord(aliasBytes(2, 0, "\x8ELa\x9B\xDB"));
    ASSERT_TRUE(record);
    EXPECT_EQ(record->volumeName, "\u00E9La\u00F5\u20AC");
}

TEST(OldAliasRecord, isNotRecognisedWhereItDoesNotHold) {
    EXPECT_EQ(oldAliasRecord(aliasBytes(1, 0, "a")), std::nullopt);
    EXPECT_EQ(oldAliasRecord(aliasBytes(4, 0, "a")), std::nullopt);
    EXPECT_EQ(oldAliasRecord(aliasBytes(2, 2, "a")), std::nullopt);
    EXPECT_EQ(oldAliasRecord(aliasBytes(2, 0, std::string(28, 'a'))), std::nullopt) << "27 letters fit";
    EXPECT_NE(oldAliasRecord(aliasBytes(2, 0, std::string(27, 'a'))), std::nullopt);
    EXPECT_EQ(oldAliasRecord(withByte(aliasBytes(2, 0, "a"), 5, 151)), std::nullopt) << "too long";
    EXPECT_EQ(oldAliasRecord(withByte(aliasBytes(2, 0, "a"), 5, 9)), std::nullopt) << "too short";
    EXPECT_EQ(oldAliasRecord(withByte(aliasBytes(2, 0, "a"), 5, 37)), std::nullopt) << "no room for a name";
    EXPECT_NE(oldAliasRecord(withByte(aliasBytes(2, 0, "a"), 5, 38)), std::nullopt);
    const Data bytes = aliasBytes(2, 0, "a");
    for (std::size_t count = 0; count < bytes.size(); ++count) {
        EXPECT_EQ(oldAliasRecord(front(bytes, count)), std::nullopt) << count;
    }
}

TEST(OldAliasRecord, isFoundInAResourceFork) {
    EXPECT_EQ(
        oldAliasRecordInResourceFork(forkWith({{0, aliasBytes(2, 0, "Disk")}})),
        (OldAliasRecord{2, false, "Disk"}));
}

TEST(OldAliasRecord, isTheResourceWithTheNumberZeroOrElseTheFirst) {
    const Resource one{1, aliasBytes(2, 0, "One")};
    const Resource two{2, aliasBytes(2, 0, "Two")};
    const Resource zero{0, aliasBytes(2, 0, "Zero")};
    EXPECT_EQ(oldAliasRecordInResourceFork(forkWith({one, zero, two}))->volumeName, "Zero");
    EXPECT_EQ(oldAliasRecordInResourceFork(forkWith({two, one}))->volumeName, "Two");
}

TEST(OldAliasRecord, isNotFoundInAForkThatHoldsNone) {
    Data fork = forkWith({{0, aliasBytes(2, 0, "Disk")}});
    const std::size_t map = fork.size() - 28 - 18 - 24;
    ASSERT_EQ(fork.at(map + 28 + 10), std::byte{'a'});
    EXPECT_EQ(oldAliasRecordInResourceFork(withByte(fork, map + 28 + 10, 'A')), std::nullopt);
    EXPECT_EQ(
        oldAliasRecordInResourceFork(withByte(withByte(fork, map + 28, 0xFF), map + 29, 0xFF)), std::nullopt)
        << "no types";
    EXPECT_EQ(oldAliasRecordInResourceFork({}), std::nullopt);
}

TEST(OldAliasRecord, isNotFoundInAForkThatIsCutOff) {
    const Data fork = forkWith({{0, aliasBytes(2, 0, "Disk")}});
    for (std::size_t count = 0; count < fork.size(); ++count) {
        EXPECT_EQ(oldAliasRecordInResourceFork(front(fork, count)), std::nullopt) << count;
    }
}

TEST(OldAliasRecord, isLookedForWithinTheForkWhateverItsBytes) {
    const Data fork = forkWith({{7, aliasBytes(2, 0, "Disk")}, {0, aliasBytes(2, 1, "Disk")}});
    std::size_t found = 0;
    for (std::size_t offset = 0; offset < fork.size(); ++offset) {
        for (const unsigned value : {0U, 1U, 0x7FU, 0x80U, 0xFEU, 0xFFU}) {
            found += oldAliasRecordInResourceFork(withByte(fork, offset, value)) ? 1U : 0U;
        }
    }
    EXPECT_GT(found, fork.size()) << "most bytes do not matter";
    EXPECT_LT(found, fork.size() * 6);
}

} // namespace
} // namespace tolvane::platform
