#include "tests/attributes/Explaining.h"
#include "tests/support/AttributeValues.h"
#include "tests/support/PropertyListWriters.h"

#include <algorithm>

namespace tolvane::tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(Gluster, hasIdentifiers) {
    EXPECT_THAT(
        explainedLines("trusted.gfid", std::string(15, '\0') + "\x01"),
        ElementsAre("File: 00000000-0000-0000-0000-000000000001"));
    expectEveryCutRefused("trusted.glusterfs.volume-id", std::string(16, 'a'));
    EXPECT_THAT(
        explainedLines("glusterfs.gfid.string", "33555f3d-1cd5-41ce-a2e8-a6fd6657a703"),
        ElementsAre("File: 33555f3d-1cd5-41ce-a2e8-a6fd6657a703"));
    EXPECT_NE(complaintAbout("glusterfs.gfid.string", "33555f3d-1cd5-41ce-a2e8_a6fd6657a703"), "");
    EXPECT_THAT(
        explainedLines("trusted.gfid2path.0123", "parent/name"), ElementsAre("Folder and name: parent/name"));
}

TEST(Gluster, hasTheRangeOfABrick) {
    const std::string value = bigEndian(1, 4) + bigEndian(0, 4) + bigEndian(0, 4) + bigEndian(0x7FFFFFFF, 4);
    EXPECT_THAT(explainedSummary("trusted.glusterfs.dht", value), HasSubstr("from 0x00000000 to 0x7fffffff"));
    expectEveryCutRefused("trusted.glusterfs.dht", value);
}

TEST(Gluster, saysWhetherAReplicaIsBehind) {
    EXPECT_THAT(explainedSummary("trusted.afr.dirty", std::string(12, '\0')), HasSubstr("no changes wait"));
    EXPECT_THAT(
        explainedSummary("trusted.afr.vol-client-1", bigEndian(1, 4) + bigEndian(0, 8)),
        HasSubstr("it is behind"));
    expectEveryCutRefused("trusted.afr.dirty", std::string(12, '\0'));
}

TEST(Gluster, hasTimesThatReplicasShare) {
    std::string value = bytesOfHex("01") + bigEndian(0, 8);
    for (const unsigned seconds : {1U, 2U, 3U}) {
        value += bigEndian(seconds, 8) + bigEndian(500'000'000, 8);
    }
    EXPECT_THAT(
        explainedLines("trusted.glusterfs.mdata", value),
        ElementsAre(
            "Version: 1", "Flags: 0x0", "Changed: 1970-01-01 00:00:01.5 UTC",
            "Modified: 1970-01-01 00:00:02.5 UTC", "Read: 1970-01-01 00:00:03.5 UTC"));
    expectEveryCutRefused("trusted.glusterfs.mdata", value);
    EXPECT_NE(
        complaintAbout("trusted.glusterfs.mdata", value.substr(0, 49) + bigEndian(1'000'000'000, 8)), "");
}

TEST(Gluster, hasQuotas) {
    EXPECT_THAT(
        explainedLines("trusted.glusterfs.quota.limit-set.1", bigEndian(4096, 8) + std::string(8, '\xFF')),
        ElementsAre("Hard limit: 4096", "Soft limit: -1"));
    EXPECT_THAT(
        explainedLines(
            "trusted.glusterfs.quota.size",
            bigEndian(1, 8) + bigEndian(2, 8) + bigEndian(3, 8) + bigEndian(4, 8)),
        ElementsAre("Bytes: 1", "Files: 2", "Folders: 3", "Further number: 4"));
    EXPECT_NE(complaintAbout("trusted.ec.size", "abc"), "");
    EXPECT_NE(complaintAbout("trusted.ec.size", ""), "");
}

std::string lustreLayout(std::uint32_t magic, unsigned stripes, const std::string& pool) {
    std::string value = littleEndian(magic, 4) + littleEndian(1, 4) + std::string(16, '\x11')
                        + littleEndian(1 << 20U, 4) + littleEndian(stripes, 2) + littleEndian(0, 2) + pool;
    for (unsigned i = 0; i < stripes; ++i) {
        value += std::string(16, '\x22') + littleEndian(0, 4) + littleEndian(i, 4);
    }
    return value;
}

TEST(Lustre, hasTheStripesOfALayout) {
    const std::string value = lustreLayout(0x0BD30BD0, 2, "fast" + std::string(12, '\0'));
    EXPECT_THAT(
        explainedLines("trusted.lov", value),
        ElementsAre(
            "Pattern: RAID 0 (1)", "Stripe size: 1048576 bytes", "Stripes: 2", "Generation: 0", "Pool: fast",
            "Object: 11111111111111111111111111111111",
            "Stripe: target 0, object 22222222222222222222222222222222",
            "Stripe: target 1, object 22222222222222222222222222222222"));
    EXPECT_THAT(explainedLines("lustre.lov", lustreLayout(0x0BD10BD0, 1, ""))[2], "Stripes: 1");
    EXPECT_NE(complaintAbout("lustre.lov", value.substr(0, value.size() - 1)), "");
    EXPECT_NE(complaintAbout("lustre.lov", value.substr(0, 20)), "");
    EXPECT_NE(complaintAbout("lustre.lov", "abcd"), "");
}

std::string compositeLayout(std::uint32_t firstOffset, const std::string& first, const std::string& second) {
    const auto component = [](std::uint32_t number, std::uint64_t start, std::uint64_t end,
                              std::size_t offset, std::size_t length) {
        return littleEndian(number, 4) + littleEndian(0x10, 4) + littleEndian(start, 8) + littleEndian(end, 8)
               + littleEndian(offset, 4) + littleEndian(length, 4) + std::string(16, '\0');
    };
    const std::size_t size = 32 + 2 * 48 + first.size() + second.size();
    return littleEndian(0x0BD60BD0, 4) + littleEndian(size, 4) + littleEndian(7, 4) + littleEndian(1, 2)
           + littleEndian(2, 2) + littleEndian(1, 2) + std::string(14, '\0')
           + component(0x10001, 0, 1'048'576, firstOffset, first.size())
           + component(0x20002, 1'048'576, ~std::uint64_t{0}, 128 + first.size(), second.size()) + first
           + second;
}

TEST(Lustre, hasTheLayoutsOfACompositeOne) {
    const std::string one = lustreLayout(0x0BD10BD0, 1, "");
    const std::string value = compositeLayout(128, one, lustreLayout(0x0BD10BD0, 2, ""));
    const auto lines = explainedLines("trusted.lov", value);
    EXPECT_THAT(
        std::vector(lines.begin(), lines.begin() + 8),
        ElementsAre(
            "Kind: composite layout", "Generation: 7", "Copies' state: all the same (1)", "Copies: 2",
            "Components: 2", "Component: 0x10001", "Bytes: 0 to 1048576",
            "Component's state: in use (0x00000010)"));
    EXPECT_THAT(lines, testing::Contains("Bytes: 1048576 to the end"));
    EXPECT_EQ(std::ranges::count_if(lines, [](const auto& line) { return line.starts_with("Stripe: "); }), 3);
    expectEveryCutRefused("trusted.lov", value);
    EXPECT_NE(complaintAbout("trusted.lov", compositeLayout(127, one, one)), "");
    EXPECT_NE(complaintAbout("trusted.lov", compositeLayout(200, one, one)), "");
    EXPECT_NE(complaintAbout("trusted.lov", compositeLayout(128, "abcd", one)), "");
}

TEST(Lustre, saysHowAFolderIsSpread) {
    const std::string value = littleEndian(0x0CD20CD0, 4) + littleEndian(1, 4) + littleEndian(3, 4)
                              + littleEndian(0x80000002, 4) + littleEndian(5, 4) + std::string(20, '\0')
                              + "fast" + std::string(12, '\0');
    const std::vector<std::string> fields{
        "Stripes: 1",
        "Metadata target or stripe: 3",
        "Hash: FNV-1a of 64 bits (2)",
        "State: 0x80000000",
        "Version: 5",
        "Pool: fast"};
    EXPECT_EQ(explainedLines("trusted.lmv", value), fields);
    const std::string identifier = littleEndian(0x200000401, 8) + littleEndian(2, 4) + littleEndian(0, 4);
    EXPECT_EQ(explainedLines("trusted.lmv", value + identifier).back(), "Stripe: [0x200000401:0x2:0x0]");
    EXPECT_NE(complaintAbout("trusted.lmv", value + "a"), "");
    EXPECT_NE(complaintAbout("trusted.lmv", value.substr(1)), "");
    expectEveryCutRefused("trusted.lmv", value);
}

TEST(Lustre, knowsTheSizeOnTheMetadataServer) {
    const std::string value =
        littleEndian(4, 2) + std::string(6, '\0') + littleEndian(8'388'608, 8) + littleEndian(16'384, 8);
    EXPECT_THAT(
        explainedLines("trusted.som", value),
        ElementsAre("State: may be outdated (0x0004)", "Size: 8388608 bytes", "Blocks: 16384 of 512 bytes"));
    expectEveryCutRefused("trusted.som", value);
    EXPECT_NE(complaintAbout("trusted.som", value + "a"), "");
}

TEST(Lustre, knowsTheFileOfAnObject) {
    const std::string value = littleEndian(0x200000401, 8) + littleEndian(1, 4) + littleEndian(2, 4);
    EXPECT_THAT(
        explainedLines("trusted.fid", value), ElementsAre("File: [0x200000401:0x1:0x0]", "Stripe: 2"));
    EXPECT_THAT(explainedLines("trusted.fid", value + "ab")[2], "Further: 6162");
    expectEveryCutRefused("trusted.fid", value);
}

TEST(GlusterBitRot, hasVersionsAndSignatures) {
    const std::string version = littleEndian(9, 8) + littleEndian(1'000'000'000, 4) + littleEndian(5, 4);
    EXPECT_THAT(
        explainedLines("trusted.bit-rot.version", version),
        ElementsAre("Version: 9", "Started: 2001-09-09 01:46:40.000005 UTC"));
    expectEveryCutRefused("trusted.bit-rot.version", version);
    EXPECT_NE(
        complaintAbout(
            "trusted.bit-rot.version", littleEndian(9, 8) + littleEndian(0, 4) + littleEndian(1'000'000, 4)),
        "");
    const std::string signature = littleEndian(1, 1) + littleEndian(9, 8) + "\x01\x02";
    EXPECT_THAT(
        explainedLines("trusted.bit-rot.signature", signature),
        ElementsAre("Kind: SHA-256 (1)", "Signed version: 9", "Signature: 0102"));
    EXPECT_NE(complaintAbout("trusted.bit-rot.signature", signature.substr(0, 8)), "");
}

TEST(Lustre, hasIdentifiersAsItWritesThem) {
    const std::string value = littleEndian(0, 4) + littleEndian(1, 4) + littleEndian(0x200000401, 8)
                              + littleEndian(5, 4) + littleEndian(0, 4);
    EXPECT_THAT(
        explainedLines("trusted.lma", value),
        ElementsAre(
            "Identifier: [0x200000401:0x5:0x0]", "Compatible features: 0x00000000",
            "Incompatible features: 0x00000001"));
    expectEveryCutRefused("trusted.lma", value);
    const std::string links = littleEndian(0x11EAF1DF, 4) + littleEndian(1, 4) + littleEndian(46, 8)
                              + std::string(8, '\0') + bigEndian(22, 2) + bigEndian(0x200000007, 8)
                              + bigEndian(1, 4) + bigEndian(0, 4) + "name";
    EXPECT_THAT(explainedLines("trusted.link", links), ElementsAre("Name: name in [0x200000007:0x1:0x0]"));
    expectEveryCutRefused("trusted.link", links);
    EXPECT_NE(complaintAbout("trusted.link", "abcd" + links.substr(4)), "");
}

TEST(Lustre, saysWhetherTheContentIsInAnArchive) {
    const std::string value =
        littleEndian(0, 4) + littleEndian(0xD, 4) + littleEndian(1, 8) + littleEndian(9, 8);
    EXPECT_THAT(
        explainedLines("trusted.hsm", value)[0],
        "State: exists in the archive, released, archived (0x0000000d)");
    expectEveryCutRefused("trusted.hsm", value);
}

TEST(CephRecord, hasTheNameOfTheObject) {
    const std::string name = "rbd_data.1";
    const std::string object =
        bytesOfHex("0603") + littleEndian(name.size() + 4, 4) + littleEndian(name.size(), 4) + name;
    const std::string value = bytesOfHex("1108") + littleEndian(object.size(), 4) + object;
    EXPECT_THAT(
        explainedLines("user.ceph._", value),
        testing::IsSupersetOf(
            {"Structure version: 17", "Compatible with: 8", "Length: 20 bytes", "Object: rbd_data.1"}));
    EXPECT_THAT(explained("user.ceph.snapset", value + "x").notes, ElementsAre("1 bytes behind the record"));
    expectEveryCutRefused("user.ceph._", value);
}

} // namespace
} // namespace tolvane::tests
