#include "tests/attributes/Explaining.h"
#include "tests/support/AttributeValues.h"

namespace tolvane::tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(CoreDump, hasEachFactInItsOwnForm) {
    EXPECT_THAT(
        explainedLines("user.coredump.timestamp", "1639840830123456"),
        ElementsAre("Crashed: 2021-12-18 15:20:30.123456 UTC"));
    EXPECT_THAT(
        explainedLines("user.coredump.rlimit", "18446744073709551615"), ElementsAre("Limit: unlimited"));
    EXPECT_THAT(explainedLines("user.coredump.rlimit", "4096"), ElementsAre("Limit: 4096 bytes"));
    EXPECT_THAT(explainedLines("user.coredump.signal", "11"), ElementsAre("Signal: SIGSEGV (11)"));
    EXPECT_THAT(explainedLines("user.coredump.signal", "63"), ElementsAre("Signal: unknown (63)"));
    EXPECT_THAT(explainedLines("user.coredump.comm", "cat"), ElementsAre("Command: cat"));
    EXPECT_THAT(linesOf(explained("user.coredump.gid", "7", knownAccounts())), ElementsAre("Group: 7 (g7)"));
    EXPECT_THAT(explainedLines("user.coredump.uid", "4294967296"), ElementsAre("User: 4294967296"));
    EXPECT_NE(complaintAbout("user.coredump.pid", "x"), "");
}

TEST(CreationMicroseconds, areADateOrUnknown) {
    EXPECT_THAT(
        explainedLines("user.crtime_usec", littleEndian(1'500'000, 8)),
        ElementsAre("Created: 1970-01-01 00:00:01.5 UTC"));
    EXPECT_THAT(explainedLines("user.crtime_usec", std::string(8, '\xFF')), ElementsAre("Created: unknown"));
    expectEveryCutRefused("user.crtime_usec", littleEndian(1, 8));
    EXPECT_NE(complaintAbout("user.crtime_usec", std::string(9, '1')), "");
}

TEST(SecondsText, hasNanosecondsBehindThePoint) {
    EXPECT_THAT(
        explainedLines("user.shatag.ts", "1560177334.020775051"),
        ElementsAre("Modified: 2019-06-10 14:35:34.020775051 UTC"));
    EXPECT_THAT(
        explainedLines("user.shatag.ts", "1560177334"), ElementsAre("Modified: 2019-06-10 14:35:34 UTC"));
    EXPECT_NE(complaintAbout("user.shatag.ts", "1.0000000001"), "");
    EXPECT_NE(complaintAbout("user.shatag.ts", ".5"), "");
    EXPECT_NE(complaintAbout("user.shatag.ts", "1.-5"), "");
}

TEST(PaxFlags, areOnInUpperCase) {
    EXPECT_THAT(
        explainedLines("user.pax.flags", "PeMrS"),
        ElementsAre("PAGEEXEC: on", "EMUTRAMP: off", "MPROTECT: on", "RANDMMAP: off", "SEGMEXEC: on"));
    EXPECT_THAT(complaintAbout("user.pax.flags", "Px"), HasSubstr("at byte 1"));
}

TEST(RsyncStat, isModeDeviceAndOwner) {
    EXPECT_THAT(
        linesOf(explained("user.rsync.%stat", "20640 8,1 0:6", knownAccounts())),
        ElementsAre(
            "Kind: character device", "Permissions: rw-r----- (0640)", "Device: 8, 1", "Owner: 0 (u0)",
            "Group: 6 (g6)"));
    for (const char* const wrong :
         {"", "100644 0,0", "100644 0,0 1:2 3", "100648 0,0 1:2", "100644 0 1:2", "100644 0,0 1"}) {
        EXPECT_NE(complaintAbout("rsync.%stat", wrong), "") << wrong;
    }
}

TEST(OverrideStat, mayHaveAType) {
    EXPECT_THAT(
        explainedLines("user.containers.override_stat", "1:2:0755:symlink"),
        ElementsAre("Owner: 1", "Group: 2", "Permissions: rwxr-xr-x (0755)", "Type: symlink"));
    EXPECT_NE(complaintAbout("user.containers.override_stat", "1:2"), "");
    EXPECT_NE(complaintAbout("user.containers.override_stat", "1:2:9"), "");
    EXPECT_NE(complaintAbout("user.containers.override_stat", "-1:2:7"), "");
}

TEST(Compression, isAnAlgorithmOrNone) {
    EXPECT_THAT(explainedSummary("btrfs.compression", "zlib:9"), HasSubstr("with zlib:9."));
    for (const char* const none : {"", "no", "none"}) {
        EXPECT_THAT(explainedSummary("btrfs.compression", none), HasSubstr("does not compress"));
    }
    EXPECT_NE(complaintAbout("btrfs.compression", "lzma"), "");
}

TEST(SecurityContext, keepsTheColonsOfARange) {
    EXPECT_THAT(
        explainedLines("security.selinux", std::string("u:r:t:s0:c1,c2\0", 15)),
        ElementsAre("Context: u:r:t:s0:c1,c2", "User: u", "Role: r", "Type: t", "Range: s0:c1,c2"));
    EXPECT_EQ(explainedLines("security.selinux", "u:r:t").size(), 4U);
    EXPECT_NE(complaintAbout("security.selinux", "u:r"), "");
}

TEST(CephText, isPairsADateOrAValue) {
    EXPECT_THAT(
        explainedLines("ceph.dir.layout", "stripe_unit=4194304 pool=data"),
        ElementsAre("stripe_unit: 4194304", "pool: data"));
    EXPECT_THAT(
        explainedLines("ceph.dir.rctime", "1600000000.09"),
        ElementsAre("Last change at any depth: 2020-09-13 12:26:40.000000009 UTC"));
    EXPECT_THAT(explainedLines("ceph.dir.files", "12"), ElementsAre("Files: 12"));
    EXPECT_THAT(complaintAbout("ceph.file.layout", "a=1 b"), HasSubstr("at byte 4"));
}

} // namespace
} // namespace tolvane::tests
