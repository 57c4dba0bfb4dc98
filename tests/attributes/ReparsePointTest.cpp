#include "tests/attributes/Explaining.h"

namespace tolvane::tests {
namespace {

using testing::ElementsAre;

constexpr const char* reparse = "user.SmbReparse";

std::string reparseData(std::uint32_t tag, const std::string& data) {
    return little<4>(tag) + little<2>(data.size(), 0) + data;
}

TEST(ReparsePoint, ofASymbolicLinkHasItsTarget) {
    const std::string value = symbolicLinkReparse("\\??\\C:\\a", "C:\\a", false);
    expectLines(
        reparse, value,
        {"Kind: symbolic link (0xa000000c)", "Target: \\??\\C:\\a", "Printed as: C:\\a", "Relative: no"});
    EXPECT_EQ(
        explainedSummary("system.ntfs_reparse_data", value),
        "Reparse point of Windows: symbolic link to \\??\\C:\\a.");
    expectEveryCutRefused("user.WINEREPARSE", value);
}

TEST(ReparsePoint, ofAMountPointHasNoFlags) {
    const std::string name = utf16("\\??\\D:");
    const std::string data = little<2>(0, name.size(), name.size(), 0) + name;
    expectLines(
        reparse, reparseData(0xA0000003, data),
        {"Kind: mount point or junction (0xa0000003)", "Target: \\??\\D:"});
}

TEST(ReparsePoint, isRefusedWhereANameLiesOutside) {
    expectRefused(
        reparse, {reparseData(0xA0000003, little<2>(2, 2) + little<4>(0) + "ab"),
                  reparseData(0xA0000003, little<2>(0, 1) + little<4>(0) + "ab")});
}

TEST(ReparsePoint, ofOtherKindsIsNamed) {
    expectLines(
        reparse, reparseData(0xA000001D, little<4>(2) + "/etc"),
        {"Kind: symbolic link of WSL (0xa000001d)", "Target: /etc"});
    expectLines(reparse, reparseData(0x9000701A, ""), {"Kind: file in a cloud (0x9000701a)"});
    expectLines(
        reparse, reparseData(0x80000014, "LNK" + zeros(5) + "xy"),
        {"Kind: special file of NFS (0x80000014)", "Special: LNK", "Data: 7879"});
    expectLines(reparse, reparseData(0x12345678, "x"), {"Kind: unknown kind (0x12345678)", "Data: 78"});
    EXPECT_THAT(
        explained(reparse, reparseData(0x80000023, "") + "zz").notes, ElementsAre("2 bytes behind the data"));
}

} // namespace
} // namespace tolvane::tests
