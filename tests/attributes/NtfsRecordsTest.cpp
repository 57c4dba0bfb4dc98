#include "tests/attributes/Explaining.h"
#include "tests/support/AttributeValues.h"
#include "tests/support/PropertyListWriters.h"

namespace tolvane::tests {
namespace {

using testing::ElementsAre;

TEST(NtfsTimes, areOneToFour) {
    const std::uint64_t ticks = windowsTicks(0);
    EXPECT_THAT(
        explainedLines("system.ntfs_times", littleEndian(ticks, 8) + littleEndian(0, 8)),
        ElementsAre("Created: 1970-01-01 00:00:00 UTC", "Written: none"));
    EXPECT_THAT(
        explainedLines("system.ntfs_crtime_be", bigEndian(ticks, 8)),
        ElementsAre("Created: 1970-01-01 00:00:00 UTC"));
    EXPECT_THAT(
        explainedLines("user.cifs.creationtime", littleEndian(ticks + 10'000'000, 8)),
        ElementsAre("Created: 1970-01-01 00:00:01 UTC"));
    expectEveryCutRefused("system.ntfs_crtime", littleEndian(ticks, 8));
    EXPECT_NE(complaintAbout("system.ntfs_times", std::string(40, '1')), "");
}

TEST(NtfsObjectId, isInTheOrderInWhichItIsWritten) {
    const std::string guid = bytesOfHex("33221100 5544 7766 8899AABBCCDDEEFF");
    EXPECT_THAT(
        explainedLines("system.ntfs_object_id", guid),
        ElementsAre("Object: 00112233-4455-6677-8899-AABBCCDDEEFF"));
    EXPECT_EQ(explainedLines("system.ntfs_object_id", guid + guid + guid + guid).size(), 4U);
    EXPECT_NE(complaintAbout("system.ntfs_object_id", guid + guid), "");
}

std::string extendedEntry(const std::string& name, const std::string& value, unsigned flags, bool isLast) {
    std::string entry = littleEndian(flags, 1) + littleEndian(name.size(), 1) + littleEndian(value.size(), 2)
                        + name + std::string(1, '\0') + value;
    entry.resize((entry.size() + 3) / 4 * 4);
    return littleEndian(isLast ? 0 : entry.size() + 4, 4) + entry;
}

TEST(NtfsExtended, hasTheOwnerAndModeOfWsl) {
    const std::string value = extendedEntry("$LXUID", littleEndian(1000, 4), 0, false)
                              + extendedEntry("$LXMOD", littleEndian(0100644, 4), 0, false)
                              + extendedEntry("$LXDEV", littleEndian(8, 4) + littleEndian(1, 4), 0x80, false)
                              + extendedEntry("OTHER", "ab", 0, true);
    EXPECT_THAT(
        explainedLines("system.ntfs_ea", value),
        ElementsAre(
            "$LXUID: 1000", "$LXMOD: regular file rw-r--r--", "$LXDEV (needed): 8, 1", "OTHER: 6162"));
    EXPECT_NE(complaintAbout("system.ntfs_ea", value.substr(0, 12)), "");
    EXPECT_NE(
        complaintAbout("system.ntfs_ea", littleEndian(1, 4) + extendedEntry("A", "b", 0, true).substr(4)),
        "");
}

TEST(NulList, hasEachName) {
    EXPECT_THAT(
        explainedLines("ntfs.streams.list", std::string("a\0b\0", 4)), ElementsAre("Stream: a", "Stream: b"));
    EXPECT_NE(complaintAbout("ntfs.streams.list", std::string("a\0\xFF\0", 4)), "");
}

} // namespace
} // namespace tolvane::tests
