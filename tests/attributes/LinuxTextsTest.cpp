#include "tests/attributes/Explaining.h"

namespace tolvane::tests {
namespace {

using testing::HasSubstr;

TEST(CoreDump, hasEachFactInItsOwnForm) {
    expectLines("user.coredump.timestamp", "1639840830123456", {"Crashed: 2021-12-18 15:20:30.123456 UTC"});
    expectLines("user.coredump.rlimit", "18446744073709551615", {"Limit: unlimited"});
    expectLines("user.coredump.rlimit", "4096", {"Limit: 4096 bytes"});
    expectLines("user.coredump.signal", "11", {"Signal: SIGSEGV (11)"});
    expectLines("user.coredump.signal", "63", {"Signal: unknown (63)"});
    expectLines("user.coredump.comm", "cat", {"Command: cat"});
    expectLines("user.coredump.gid", "7", {"Group: 7 (g7)"}, knownAccounts());
    expectLines("user.coredump.uid", "4294967296", {"User: 4294967296"});
    expectRefused("user.coredump.pid", {"x"});
}

TEST(CreationMicroseconds, areADateOrUnknown) {
    expectLines("user.crtime_usec", little<8>(1'500'000), {"Created: 1970-01-01 00:00:01.5 UTC"});
    expectLines("user.crtime_usec", std::string(8, '\xFF'), {"Created: unknown"});
    expectEveryCutRefused("user.crtime_usec", little<8>(1));
    expectRefused("user.crtime_usec", {std::string(9, '1')});
}

TEST(SecondsText, hasNanosecondsBehindThePoint) {
    expectLines("user.shatag.ts", "1560177334.020775051", {"Modified: 2019-06-10 14:35:34.020775051 UTC"});
    expectLines("user.shatag.ts", "1560177334", {"Modified: 2019-06-10 14:35:34 UTC"});
    expectRefused("user.shatag.ts", {"1.0000000001", ".5", "1.-5"});
}

TEST(PaxFlags, areOnInUpperCase) {
    expectLines(
        "user.pax.flags", "PeMrS",
        {"PAGEEXEC: on", "EMUTRAMP: off", "MPROTECT: on", "RANDMMAP: off", "SEGMEXEC: on"});
    EXPECT_THAT(complaintAbout("user.pax.flags", "Px"), HasSubstr("at byte 1"));
}

TEST(RsyncStat, isModeDeviceAndOwner) {
    expectLines(
        "user.rsync.%stat", "20640 8,1 0:6",
        {"Kind: character device", "Permissions: rw-r----- (0640)", "Device: 8, 1", "Owner: 0 (u0)",
         "Group: 6 (g6)"},
        knownAccounts());
    expectRefused(
        "rsync.%stat",
        {"", "100644 0,0", "100644 0,0 1:2 3", "100648 0,0 1:2", "100644 0 1:2", "100644 0,0 1"});
}

TEST(OverrideStat, mayHaveAType) {
    expectLines(
        "user.containers.override_stat", "1:2:0755:symlink",
        {"Owner: 1", "Group: 2", "Permissions: rwxr-xr-x (0755)", "Type: symlink"});
    expectRefused("user.containers.override_stat", {"1:2", "1:2:9", "-1:2:7"});
}

TEST(Compression, isAnAlgorithmOrNone) {
    EXPECT_THAT(explainedSummary("btrfs.compression", "zlib:9"), HasSubstr("with zlib:9."));
    for (const char* const none : {"", "no", "none"}) {
        EXPECT_THAT(explainedSummary("btrfs.compression", none), HasSubstr("does not compress"));
    }
    expectRefused("btrfs.compression", {"lzma"});
}

TEST(SecurityContext, keepsTheColonsOfARange) {
    expectLines(
        "security.selinux", std::string("u:r:t:s0:c1,c2\0", 15),
        {"Context: u:r:t:s0:c1,c2", "User: u", "Role: r", "Type: t", "Range: s0:c1,c2"});
    EXPECT_EQ(explainedLines("security.selinux", "u:r:t").size(), 4U);
    expectRefused("security.selinux", {"u:r"});
}

TEST(CephText, isPairsADateOrAValue) {
    expectLines("ceph.dir.layout", "stripe_unit=4194304 pool=data", {"stripe_unit: 4194304", "pool: data"});
    expectLines(
        "ceph.dir.rctime", "1600000000.09", {"Last change at any depth: 2020-09-13 12:26:40.000000009 UTC"});
    expectLines("ceph.dir.files", "12", {"Files: 12"});
    EXPECT_THAT(complaintAbout("ceph.file.layout", "a=1 b"), HasSubstr("at byte 4"));
}

} // namespace
} // namespace tolvane::tests
