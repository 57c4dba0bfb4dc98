#include "tests/attributes/Explaining.h"
#include "tests/support/AttributeValues.h"
#include "tests/support/PropertyListWriters.h"

namespace tolvane::tests {
namespace {

using testing::ElementsAre;

TEST(RootlessOwner, isTwoNumbers) {
    EXPECT_THAT(
        linesOf(explained("user.rootlesscontainers", bytesOfHex("08e807 10ffffffff0f"), knownAccounts())),
        ElementsAre("Owner: 1000 (u1000)", "Group: unchanged"));
    for (const char* const wrong : {"08", "08e8", "1801", "0a00", "08ffffffffff01", "0800ff", "0f"}) {
        EXPECT_NE(complaintAbout("user.rootlesscontainers", bytesOfHex(wrong)), "") << wrong;
    }
}

/// An array of pairs of a name and a value, with offsets of one byte.
std::string ostreeAttributes(const std::vector<std::pair<std::string, std::string>>& attributes) {
    std::string elements;
    std::string ends;
    for (const auto& [name, value] : attributes) {
        elements += name + std::string(1, '\0') + value + littleEndian(name.size() + 1, 1);
        ends += littleEndian(elements.size(), 1);
    }
    return elements + ends;
}

TEST(OstreeMeta, hasOwnerModeAndAttributes) {
    const std::string head = bigEndian(1, 4) + bigEndian(2, 4) + bigEndian(0100755, 4);
    EXPECT_THAT(
        explainedLines("user.ostreemeta", head),
        ElementsAre("Owner: 1", "Group: 2", "Kind: regular file", "Permissions: rwxr-xr-x"));
    const std::string value = head + ostreeAttributes({{"security.a", "xy"}, {"user.b", ""}});
    EXPECT_THAT(
        explainedLines("user.ostreemeta", value),
        ElementsAre(
            "Owner: 1", "Group: 2", "Kind: regular file", "Permissions: rwxr-xr-x", "security.a: 7879",
            "user.b: none"));
    for (std::size_t length = 0; length < value.size(); ++length) {
        if (length != head.size()) {
            EXPECT_NE(complaintAbout("user.ostreemeta", value.substr(0, length)), "") << length;
        }
    }
}

TEST(VirtualNumber, hasItsWidth) {
    EXPECT_THAT(explainedLines("user.virtfs.uid", littleEndian(1000, 4)), ElementsAre("Owner: 1000"));
    EXPECT_THAT(
        explainedLines("user.virtfs.mode", littleEndian(0120777, 4)),
        ElementsAre("Mode: symbolic link rwxrwxrwx"));
    EXPECT_THAT(explainedLines("user.virtfs.rdev", littleEndian(0x801, 8)), ElementsAre("Device: 0x801"));
    EXPECT_NE(complaintAbout("user.virtfs.gid", "abc"), "");
    EXPECT_NE(complaintAbout("user.virtfs.rdev", "abcd"), "");
}

TEST(Pickle, isNeverLoaded) {
    const auto explanation = explained(
        "user.swift.metadata1",
        bytesOfHex("8002 7d") + "X\x0c" + std::string(3, '\0') + "Content-Type" + "\x01" + "ab" + "\x01.");
    EXPECT_THAT(linesOf(explanation), ElementsAre("Text in it: Content-Type"));
    EXPECT_THAT(
        explanation.notes,
        ElementsAre("A serialised Python object; it is not loaded, only the texts in it are shown"));
}

} // namespace
} // namespace tolvane::tests
