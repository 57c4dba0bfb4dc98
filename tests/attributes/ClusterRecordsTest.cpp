#include "tests/attributes/Explaining.h"

#include <algorithm>

namespace tolvane::tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(Gluster, hasIdentifiers) {
    expectLines("trusted.gfid", zeros(15) + "\x01", {"File: 00000000-0000-0000-0000-000000000001"});
    expectEveryCutRefused("trusted.glusterfs.volume-id", std::string(16, 'a'));
    expectLines(
        "glusterfs.gfid.string", "33555f3d-1cd5-41ce-a2e8-a6fd6657a703",
        {"File: 33555f3d-1cd5-41ce-a2e8-a6fd6657a703"});
    expectRefused("glusterfs.gfid.string", {"33555f3d-1cd5-41ce-a2e8_a6fd6657a703"});
    expectLines("trusted.gfid2path.0123", "parent/name", {"Folder and name: parent/name"});
}

TEST(Gluster, hasTheRangeOfABrick) {
    const std::string value = big<4>(1, 0, 0, 0x7FFFFFFF);
    EXPECT_THAT(explainedSummary("trusted.glusterfs.dht", value), HasSubstr("from 0x00000000 to 0x7fffffff"));
    expectEveryCutRefused("trusted.glusterfs.dht", value);
}

TEST(Gluster, saysWhetherAReplicaIsBehind) {
    EXPECT_THAT(explainedSummary("trusted.afr.dirty", zeros(12)), HasSubstr("no changes wait"));
    EXPECT_THAT(
        explainedSummary("trusted.afr.vol-client-1", big<4>(1) + big<8>(0)), HasSubstr("it is behind"));
    expectEveryCutRefused("trusted.afr.dirty", zeros(12));
}

TEST(Gluster, hasTimesThatReplicasShare) {
    std::string value = bytesOfHex("01") + big<8>(0);
    for (const unsigned seconds : {1U, 2U, 3U}) {
        value += big<8>(seconds, 500'000'000);
    }
    expectRecord(
        "trusted.glusterfs.mdata", value,
        {"Version: 1", "Flags: 0x0", "Changed: 1970-01-01 00:00:01.5 UTC",
         "Modified: 1970-01-01 00:00:02.5 UTC", "Read: 1970-01-01 00:00:03.5 UTC"});
    expectRefused("trusted.glusterfs.mdata", {value.substr(0, 49) + big<8>(1'000'000'000)});
}

TEST(Gluster, hasQuotas) {
    expectLines(
        "trusted.glusterfs.quota.limit-set.1", big<8>(4096) + std::string(8, '\xFF'),
        {"Hard limit: 4096", "Soft limit: -1"});
    expectLines(
        "trusted.glusterfs.quota.size", big<8>(1, 2, 3, 4),
        {"Bytes: 1", "Files: 2", "Folders: 3", "Further number: 4"});
    expectRefused("trusted.ec.size", {"abc", ""});
}

std::string lustreLayout(std::uint32_t magic, unsigned stripes, const std::string& pool) {
    std::string value =
        little<4>(magic, 1) + std::string(16, '\x11') + little<4>(1 << 20U) + little<2>(stripes, 0) + pool;
    for (unsigned i = 0; i < stripes; ++i) {
        value += std::string(16, '\x22') + little<4>(0, i);
    }
    return value;
}

TEST(Lustre, hasTheStripesOfALayout) {
    const std::string value = lustreLayout(0x0BD30BD0, 2, "fast" + zeros(12));
    expectLines(
        "trusted.lov", value,
        {"Pattern: RAID 0 (1)", "Stripe size: 1048576 bytes", "Stripes: 2", "Generation: 0", "Pool: fast",
         "Object: 11111111111111111111111111111111",
         "Stripe: target 0, object 22222222222222222222222222222222",
         "Stripe: target 1, object 22222222222222222222222222222222"});
    EXPECT_THAT(explainedLines("lustre.lov", lustreLayout(0x0BD10BD0, 1, ""))[2], "Stripes: 1");
    expectRefused("lustre.lov", {value.substr(0, value.size() - 1), value.substr(0, 20), "abcd"});
}

std::string compositeLayout(std::uint32_t firstOffset, const std::string& first, const std::string& second) {
    const auto component = [](std::uint32_t number, std::uint64_t start, std::uint64_t end,
                              std::size_t offset, std::size_t length) {
        return little<4>(number, 0x10) + little<8>(start, end) + little<4>(offset, length) + zeros(16);
    };
    const std::size_t size = 32 + 2 * 48 + first.size() + second.size();
    return little<4>(0x0BD60BD0, size, 7) + little<2>(1, 2, 1) + zeros(14)
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
    expectRefused(
        "trusted.lov",
        {compositeLayout(127, one, one), compositeLayout(200, one, one), compositeLayout(128, "abcd", one)});
}

TEST(Lustre, saysHowAFolderIsSpread) {
    const std::string value = little<4>(0x0CD20CD0, 1, 3, 0x80000002, 5) + zeros(20) + "fast" + zeros(12);
    const std::vector<std::string> fields{
        "Stripes: 1",
        "Metadata target or stripe: 3",
        "Hash: FNV-1a of 64 bits (2)",
        "State: 0x80000000",
        "Version: 5",
        "Pool: fast"};
    EXPECT_EQ(explainedLines("trusted.lmv", value), fields);
    const std::string identifier = little<8>(0x200000401) + little<4>(2, 0);
    EXPECT_EQ(explainedLines("trusted.lmv", value + identifier).back(), "Stripe: [0x200000401:0x2:0x0]");
    expectRefused("trusted.lmv", {value + "a", value.substr(1)});
    expectEveryCutRefused("trusted.lmv", value);
}

TEST(Lustre, knowsTheSizeOnTheMetadataServer) {
    const std::string value = little<2>(4) + zeros(6) + little<8>(8'388'608, 16'384);
    expectRecord(
        "trusted.som", value,
        {"State: may be outdated (0x0004)", "Size: 8388608 bytes", "Blocks: 16384 of 512 bytes"});
    expectRefused("trusted.som", {value + "a"});
}

TEST(Lustre, knowsTheFileOfAnObject) {
    const std::string value = little<8>(0x200000401) + little<4>(1, 2);
    expectLines("trusted.fid", value, {"File: [0x200000401:0x1:0x0]", "Stripe: 2"});
    EXPECT_THAT(explainedLines("trusted.fid", value + "ab")[2], "Further: 6162");
    expectEveryCutRefused("trusted.fid", value);
}

TEST(GlusterBitRot, hasVersionsAndSignatures) {
    const std::string version = little<8>(9) + little<4>(1'000'000'000, 5);
    expectRecord(
        "trusted.bit-rot.version", version, {"Version: 9", "Started: 2001-09-09 01:46:40.000005 UTC"});
    expectRefused("trusted.bit-rot.version", {little<8>(9) + little<4>(0, 1'000'000)});
    const std::string signature = little<1>(1) + little<8>(9) + "\x01\x02";
    expectLines(
        "trusted.bit-rot.signature", signature,
        {"Kind: SHA-256 (1)", "Signed version: 9", "Signature: 0102"});
    expectRefused("trusted.bit-rot.signature", {signature.substr(0, 8)});
}

TEST(Lustre, hasIdentifiersAsItWritesThem) {
    const std::string value = little<4>(0, 1) + little<8>(0x200000401) + little<4>(5, 0);
    expectRecord(
        "trusted.lma", value,
        {"Identifier: [0x200000401:0x5:0x0]", "Compatible features: 0x00000000",
         "Incompatible features: 0x00000001"});
    const std::string links = little<4>(0x11EAF1DF, 1) + little<8>(46) + zeros(8) + big<2>(22)
                              + big<8>(0x200000007) + big<4>(1, 0) + "name";
    expectRecord("trusted.link", links, {"Name: name in [0x200000007:0x1:0x0]"});
    expectRefused("trusted.link", {"abcd" + links.substr(4)});
}

TEST(Lustre, saysWhetherTheContentIsInAnArchive) {
    const std::string value = little<4>(0, 0xD) + little<8>(1, 9);
    EXPECT_THAT(
        explainedLines("trusted.hsm", value)[0],
        "State: exists in the archive, released, archived (0x0000000d)");
    expectEveryCutRefused("trusted.hsm", value);
}

TEST(CephRecord, hasTheNameOfTheObject) {
    const std::string name = "rbd_data.1";
    const std::string object = bytesOfHex("0603") + little<4>(name.size() + 4, name.size()) + name;
    const std::string value = bytesOfHex("1108") + little<4>(object.size()) + object;
    EXPECT_THAT(
        explainedLines("user.ceph._", value),
        testing::IsSupersetOf(
            {"Structure version: 17", "Compatible with: 8", "Length: 20 bytes", "Object: rbd_data.1"}));
    EXPECT_THAT(explained("user.ceph.snapset", value + "x").notes, ElementsAre("1 bytes behind the record"));
    expectEveryCutRefused("user.ceph._", value);
}

} // namespace
} // namespace tolvane::tests
