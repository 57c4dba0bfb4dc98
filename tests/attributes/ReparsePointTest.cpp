#include "tests/attributes/Explaining.h"
#include "tests/support/AttributeValues.h"

namespace tolvane::tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* reparse = "user.SmbReparse";

std::string reparseData(std::uint32_t tag, const std::string& data) {
    return littleEndian(tag, 4) + littleEndian(data.size(), 2) + littleEndian(0, 2) + data;
}

TEST(ReparsePoint, ofASymbolicLinkHasItsTarget) {
    const std::string value = symbolicLinkReparse("\\??\\C:\\a", "C:\\a", false);
    EXPECT_THAT(
        explainedLines(reparse, value),
        ElementsAre(
            "Kind: symbolic link (0xa000000c)", "Target: \\??\\C:\\a", "Printed as: C:\\a", "Relative: no"));
    EXPECT_EQ(
        explainedSummary("system.ntfs_reparse_data", value),
        "Reparse point of Windows: symbolic link to \\??\\C:\\a.");
    expectEveryCutRefused("user.WINEREPARSE", value);
}

TEST(ReparsePoint, ofAMountPointHasNoFlags) {
    const std::string name = utf16("\\??\\D:");
    const std::string data = littleEndian(0, 2) + littleEndian(name.size(), 2) + littleEndian(name.size(), 2)
                             + littleEndian(0, 2) + name;
    EXPECT_THAT(
        explainedLines(reparse, reparseData(0xA0000003, data)),
        ElementsAre("Kind: mount point or junction (0xa0000003)", "Target: \\??\\D:"));
}

TEST(ReparsePoint, isRefusedWhereANameLiesOutside) {
    EXPECT_NE(
        complaintAbout(
            reparse,
            reparseData(0xA0000003, littleEndian(2, 2) + littleEndian(2, 2) + littleEndian(0, 4) + "ab")),
        "");
    EXPECT_NE(
        complaintAbout(
            reparse,
            reparseData(0xA0000003, littleEndian(0, 2) + littleEndian(1, 2) + littleEndian(0, 4) + "ab")),
        "");
}

TEST(ReparsePoint, ofOtherKindsIsNamed) {
    EXPECT_THAT(
        explainedLines(reparse, reparseData(0xA000001D, littleEndian(2, 4) + "/etc")),
        ElementsAre("Kind: symbolic link of WSL (0xa000001d)", "Target: /etc"));
    EXPECT_THAT(
        explainedLines(reparse, reparseData(0x9000701A, "")),
        ElementsAre("Kind: file in a cloud (0x9000701a)"));
    EXPECT_THAT(
        explainedLines(reparse, reparseData(0x80000014, "LNK" + std::string(5, '\0') + "xy")),
        ElementsAre("Kind: special file of NFS (0x80000014)", "Special: LNK", "Data: 7879"));
    EXPECT_THAT(
        explainedLines(reparse, reparseData(0x12345678, "x")),
        ElementsAre("Kind: unknown kind (0x12345678)", "Data: 78"));
    EXPECT_THAT(
        explained(reparse, reparseData(0x80000023, "") + "zz").notes, ElementsAre("2 bytes behind the data"));
}

} // namespace
} // namespace tolvane::tests
