#include "tests/attributes/Explaining.h"

namespace tolvane::tests {
namespace {

using testing::ElementsAre;

constexpr const char* dos = "user.DOSATTRIB";
const std::uint64_t created = windowsTicks(1'700'000'000, 5);

std::string samba(unsigned version, const std::string& rest, const std::string& text = {}) {
    std::string head = text + zeros(1);
    head.resize((head.size() + 1) / 2 * 2);
    head += little<2>(version);
    head.resize((head.size() + 3) / 4 * 4);
    return head + little<4>(version) + rest;
}

TEST(DosAttributes, mayBeATextAlone) {
    expectLines(dos, "0x22", {"Attributes: hidden, archive (0x22)"});
    EXPECT_EQ(explainedSummary(dos, std::string("0x1\0", 4)), "Attributes of DOS and Windows: read-only.");
    expectLines(dos, "0x8000", {"Attributes: unknown 0x8000 (0x8000)"});
    expectLines(dos, "0x0", {"Attributes: none (0x0)"});
    expectRefused(dos, {"", "22", "0x", "0xZZ", "0x222222222"});
}

TEST(DosAttributes, ofVersion5HaveACreationTime) {
    const std::string value = samba(5, little<4>(0x11, 0x20) + little<8>(created));
    EXPECT_EQ(value.size(), 24U);
    expectRecord(
        dos, value, {"Attributes: archive (0x20)", "Created: 2023-11-14 22:13:20.0000005 UTC", "Version: 5"});
}

TEST(DosAttributes, ofVersion4DoNotShowAnInventedTime) {
    const std::string value = samba(4, little<4>(0x51, 0x20) + little<8>(created, 0));
    EXPECT_EQ(value.size(), 32U);
    expectLines(dos, value, {"Attributes: archive (0x20)", "Version: 4"});
}

TEST(DosAttributes, ofVersion3ShowOnlyWhatIsValid) {
    const auto value = [](unsigned valid) {
        return samba(3, little<4>(valid, 0x10, 0) + little<8>(1000, 4096, created, created), "0x10");
    };
    EXPECT_EQ(value(0).size(), 56U);
    expectLines(dos, value(0), {"Version: 3"});
    expectLines(
        dos, value(0x3D),
        {"Attributes: folder (0x10)", "Size: 1000 bytes", "Allocated: 4096 bytes",
         "Created: 2023-11-14 22:13:20.0000005 UTC", "Changed: 2023-11-14 22:13:20.0000005 UTC",
         "Version: 3"});
}

TEST(DosAttributes, ofTheFirstVersionsHaveEverything) {
    const std::string numbers = little<4>(0x1, 0) + little<8>(1, 2, created, 0);
    expectLines(
        dos, samba(1, numbers),
        {"Attributes: read-only (0x1)", "Size: 1 bytes", "Allocated: 2 bytes",
         "Created: 2023-11-14 22:13:20.0000005 UTC", "Version: 1"});
    EXPECT_THAT(
        explainedLines(dos, samba(2, little<4>(7) + numbers + little<8>(created) + std::string("n\0", 2))),
        testing::Contains("Name: n"));
    expectRefused(dos, {samba(2, little<4>(7) + numbers + little<8>(created) + "\xFF")});
}

TEST(DosAttributes, sayWhatIsLeftOver) {
    const auto explanation = explained(dos, samba(5, little<4>(1, 1) + little<8>(0) + "xyz"));
    EXPECT_THAT(explanation.notes, ElementsAre("3 bytes more than the version has"));
    expectRefused(dos, {samba(6, zeros(64)), samba(5, zeros(16), "text")});
}

TEST(DosNumber, hasTheByteOrderOfItsName) {
    expectLines("system.ntfs_attrib", little<4>(0x4), {"Attributes: system (0x4)"});
    expectLines("system.ntfs_attrib_be", big<4>(0x4), {"Attributes: system (0x4)"});
    expectLines("system.dos_attrib", "\x01", {"Attributes: read-only (0x1)"});
    expectRefused("system.dos_attrib", {"12"});
    expectEveryCutRefused("user.smb3.dosattrib", little<4>(0x4));
}

} // namespace
} // namespace tolvane::tests
