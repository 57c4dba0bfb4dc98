#include "tests/attributes/Explaining.h"

namespace tolvane::tests {
namespace {

using testing::ElementsAre;

TEST(RootlessOwner, isTwoNumbers) {
    expectLines(
        "user.rootlesscontainers", bytesOfHex("08e807 10ffffffff0f"),
        {"Owner: 1000 (u1000)", "Group: unchanged"}, knownAccounts());
    for (const char* const wrong : {"08", "08e8", "1801", "0a00", "08ffffffffff01", "0800ff", "0f"}) {
        EXPECT_NE(complaintAbout("user.rootlesscontainers", bytesOfHex(wrong)), "") << wrong;
    }
}

/// An array of pairs of a name and a value, with offsets of one byte.
std::string ostreeAttributes(const std::vector<std::pair<std::string, std::string>>& attributes) {
    std::string elements;
    std::string ends;
    for (const auto& [name, value] : attributes) {
        elements += name + zeros(1) + value + little<1>(name.size() + 1);
        ends += little<1>(elements.size());
    }
    return elements + ends;
}

TEST(OstreeMeta, hasOwnerModeAndAttributes) {
    const std::string head = big<4>(1, 2, 0100755);
    expectLines(
        "user.ostreemeta", head, {"Owner: 1", "Group: 2", "Kind: regular file", "Permissions: rwxr-xr-x"});
    const std::string value = head + ostreeAttributes({{"security.a", "xy"}, {"user.b", ""}});
    expectLines(
        "user.ostreemeta", value,
        {"Owner: 1", "Group: 2", "Kind: regular file", "Permissions: rwxr-xr-x", "security.a: 7879",
         "user.b: none"});
    for (std::size_t length = 0; length < value.size(); ++length) {
        if (length != head.size()) {
            EXPECT_NE(complaintAbout("user.ostreemeta", value.substr(0, length)), "") << length;
        }
    }
}

TEST(VirtualNumber, hasItsWidth) {
    expectLines("user.virtfs.uid", little<4>(1000), {"Owner: 1000"});
    expectLines("user.virtfs.mode", little<4>(0120777), {"Mode: symbolic link rwxrwxrwx"});
    expectLines("user.virtfs.rdev", little<8>(0x801), {"Device: 0x801"});
    expectRefused("user.virtfs.gid", {"abc"});
    expectRefused("user.virtfs.rdev", {"abcd"});
}

TEST(Pickle, isNeverLoaded) {
    const auto explanation = explained(
        "user.swift.metadata1",
        bytesOfHex("8002 7d") + "X\x0c" + zeros(3) + "Content-Type" + "\x01" + "ab" + "\x01.");
    EXPECT_THAT(linesOf(explanation), ElementsAre("Text in it: Content-Type"));
    EXPECT_THAT(
        explanation.notes,
        ElementsAre("A serialised Python object; it is not loaded, only the texts in it are shown"));
}

} // namespace
} // namespace tolvane::tests
