#include "tests/attributes/Explaining.h"
#include "tests/support/AttributeValues.h"
#include "tests/support/PropertyListWriters.h"

namespace tolvane::tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* dos = "user.DOSATTRIB";
const std::uint64_t created = windowsTicks(1'700'000'000, 5);

std::string samba(unsigned version, const std::string& rest, const std::string& text = {}) {
    std::string head = text + std::string(1, '\0');
    head.resize((head.size() + 1) / 2 * 2);
    head += littleEndian(version, 2);
    head.resize((head.size() + 3) / 4 * 4);
    return head + littleEndian(version, 4) + rest;
}

TEST(DosAttributes, mayBeATextAlone) {
    EXPECT_THAT(explainedLines(dos, "0x22"), ElementsAre("Attributes: hidden, archive (0x22)"));
    EXPECT_EQ(explainedSummary(dos, std::string("0x1\0", 4)), "Attributes of DOS and Windows: read-only.");
    EXPECT_THAT(explainedLines(dos, "0x8000"), ElementsAre("Attributes: unknown 0x8000 (0x8000)"));
    EXPECT_THAT(explainedLines(dos, "0x0"), ElementsAre("Attributes: none (0x0)"));
    for (const char* const wrong : {"", "22", "0x", "0xZZ", "0x222222222"}) {
        EXPECT_NE(complaintAbout(dos, wrong), "") << wrong;
    }
}

TEST(DosAttributes, ofVersion5HaveACreationTime) {
    const std::string value =
        samba(5, littleEndian(0x11, 4) + littleEndian(0x20, 4) + littleEndian(created, 8));
    EXPECT_EQ(value.size(), 24U);
    EXPECT_THAT(
        explainedLines(dos, value),
        ElementsAre("Attributes: archive (0x20)", "Created: 2023-11-14 22:13:20.0000005 UTC", "Version: 5"));
    expectEveryCutRefused(dos, value);
}

TEST(DosAttributes, ofVersion4DoNotShowAnInventedTime) {
    const std::string value = samba(
        4, littleEndian(0x51, 4) + littleEndian(0x20, 4) + littleEndian(created, 8) + littleEndian(0, 8));
    EXPECT_EQ(value.size(), 32U);
    EXPECT_THAT(explainedLines(dos, value), ElementsAre("Attributes: archive (0x20)", "Version: 4"));
}

TEST(DosAttributes, ofVersion3ShowOnlyWhatIsValid) {
    const auto value = [](unsigned valid) {
        return samba(
            3,
            littleEndian(valid, 4) + littleEndian(0x10, 4) + littleEndian(0, 4) + littleEndian(1000, 8)
                + littleEndian(4096, 8) + littleEndian(created, 8) + littleEndian(created, 8),
            "0x10");
    };
    EXPECT_EQ(value(0).size(), 56U);
    EXPECT_THAT(explainedLines(dos, value(0)), ElementsAre("Version: 3"));
    EXPECT_THAT(
        explainedLines(dos, value(0x3D)),
        ElementsAre(
            "Attributes: folder (0x10)", "Size: 1000 bytes", "Allocated: 4096 bytes",
            "Created: 2023-11-14 22:13:20.0000005 UTC", "Changed: 2023-11-14 22:13:20.0000005 UTC",
            "Version: 3"));
}

TEST(DosAttributes, ofTheFirstVersionsHaveEverything) {
    const std::string numbers = littleEndian(0x1, 4) + littleEndian(0, 4) + littleEndian(1, 8)
                                + littleEndian(2, 8) + littleEndian(created, 8) + littleEndian(0, 8);
    EXPECT_THAT(
        explainedLines(dos, samba(1, numbers)),
        ElementsAre(
            "Attributes: read-only (0x1)", "Size: 1 bytes", "Allocated: 2 bytes",
            "Created: 2023-11-14 22:13:20.0000005 UTC", "Version: 1"));
    EXPECT_THAT(
        explainedLines(
            dos, samba(2, littleEndian(7, 4) + numbers + littleEndian(created, 8) + std::string("n\0", 2))),
        testing::Contains("Name: n"));
    EXPECT_NE(
        complaintAbout(dos, samba(2, littleEndian(7, 4) + numbers + littleEndian(created, 8) + "\xFF")), "");
}

TEST(DosAttributes, sayWhatIsLeftOver) {
    const auto explanation =
        explained(dos, samba(5, littleEndian(1, 4) + littleEndian(1, 4) + littleEndian(0, 8) + "xyz"));
    EXPECT_THAT(explanation.notes, ElementsAre("3 bytes more than the version has"));
    EXPECT_NE(complaintAbout(dos, samba(6, std::string(64, '\0'))), "");
    EXPECT_NE(complaintAbout(dos, samba(5, std::string(16, '\0'), "text")), "");
}

TEST(DosNumber, hasTheByteOrderOfItsName) {
    EXPECT_THAT(
        explainedLines("system.ntfs_attrib", littleEndian(0x4, 4)), ElementsAre("Attributes: system (0x4)"));
    EXPECT_THAT(
        explainedLines("system.ntfs_attrib_be", bigEndian(0x4, 4)), ElementsAre("Attributes: system (0x4)"));
    EXPECT_THAT(explainedLines("system.dos_attrib", "\x01"), ElementsAre("Attributes: read-only (0x1)"));
    EXPECT_NE(complaintAbout("system.dos_attrib", "12"), "");
    expectEveryCutRefused("user.smb3.dosattrib", littleEndian(0x4, 4));
}

} // namespace
} // namespace tolvane::tests
