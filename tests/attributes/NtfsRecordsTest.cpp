#include "tests/attributes/Explaining.h"

namespace tolvane::tests {
namespace {

TEST(NtfsTimes, areOneToFour) {
    const std::uint64_t ticks = windowsTicks(0);
    expectLines(
        "system.ntfs_times", little<8>(ticks, 0), {"Created: 1970-01-01 00:00:00 UTC", "Written: none"});
    expectLines("system.ntfs_crtime_be", big<8>(ticks), {"Created: 1970-01-01 00:00:00 UTC"});
    expectLines(
        "user.cifs.creationtime", little<8>(ticks + 10'000'000), {"Created: 1970-01-01 00:00:01 UTC"});
    expectEveryCutRefused("system.ntfs_crtime", little<8>(ticks));
    expectRefused("system.ntfs_times", {std::string(40, '1')});
}

TEST(NtfsObjectId, isInTheOrderInWhichItIsWritten) {
    const std::string guid = bytesOfHex("33221100 5544 7766 8899AABBCCDDEEFF");
    expectLines("system.ntfs_object_id", guid, {"Object: 00112233-4455-6677-8899-AABBCCDDEEFF"});
    EXPECT_EQ(explainedLines("system.ntfs_object_id", guid + guid + guid + guid).size(), 4U);
    expectRefused("system.ntfs_object_id", {guid + guid});
}

std::string extendedEntry(const std::string& name, const std::string& value, unsigned flags, bool isLast) {
    std::string entry = little<1>(flags, name.size()) + little<2>(value.size()) + name + zeros(1) + value;
    entry.resize((entry.size() + 3) / 4 * 4);
    return little<4>(isLast ? 0 : entry.size() + 4) + entry;
}

TEST(NtfsExtended, hasTheOwnerAndModeOfWsl) {
    const std::string value = extendedEntry("$LXUID", little<4>(1000), 0, false)
                              + extendedEntry("$LXMOD", little<4>(0100644), 0, false)
                              + extendedEntry("$LXDEV", little<4>(8, 1), 0x80, false)
                              + extendedEntry("OTHER", "ab", 0, true);
    expectLines(
        "system.ntfs_ea", value,
        {"$LXUID: 1000", "$LXMOD: regular file rw-r--r--", "$LXDEV (needed): 8, 1", "OTHER: 6162"});
    expectRefused(
        "system.ntfs_ea", {value.substr(0, 12), little<4>(1) + extendedEntry("A", "b", 0, true).substr(4)});
}

TEST(NulList, hasEachName) {
    expectLines("ntfs.streams.list", std::string("a\0b\0", 4), {"Stream: a", "Stream: b"});
    expectRefused("ntfs.streams.list", {std::string("a\0\xFF\0", 4)});
}

} // namespace
} // namespace tolvane::tests
