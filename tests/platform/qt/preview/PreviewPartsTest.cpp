#include "platform/qt/preview/FactsView.h"
#include "platform/qt/preview/ItemExamination.h"
#include "tests/platform/qt/preview/PreviewTest.h"

#include <gtest/gtest.h>

#include <span>
#include <string>

namespace tolvane::platform {
namespace {

class PreviewPartsTest : public tests::PreviewTest {
protected:
    ItemExamination examined(const std::string& path) const { return examineItem(PosixFileContents(), path); }

    Presentation presentationOfBytes(const std::string& bytes) const {
        return presentationOf(examined(folder.file("item", bytes)));
    }
};

TEST_F(PreviewPartsTest, hexDumpShowsOffsetsBytesAndCharacters) {
    const std::string bytes("0123456789abcdefg\0\n\x7F\xFF~", 22);
    EXPECT_EQ(
        hexDump(std::as_bytes(std::span(bytes))).toStdString(),
        "00000000  30 31 32 33 34 35 36 37  38 39 61 62 63 64 65 66  0123456789abcdef\n"
        "00000010  67 00 0a 7f ff 7e                                 g....~");
    EXPECT_EQ(hexDump({}), QString());
}

TEST_F(PreviewPartsTest, contentsDecideHowAFileIsShown) {
    EXPECT_EQ(presentationOfBytes("Hello\n"), Presentation::text);
    EXPECT_EQ(presentationOfBytes("<svg xmlns=\"\"/>"), Presentation::textUnlessMore);
    EXPECT_EQ(presentationOfBytes("P1\n1 1\n1\n"), Presentation::textUnlessMore);
    EXPECT_EQ(presentationOfBytes("\x89PNG\r\n\x1A\n" + std::string(10, '\0')), Presentation::decoded);
    EXPECT_EQ(presentationOfBytes(""), Presentation::facts);
    EXPECT_EQ(presentationOf(examined(folder.path())), Presentation::folder);
}

TEST_F(PreviewPartsTest, factsAreThoseOfTheTarget) {
    ASSERT_EQ(chmod(folder.file("file", std::string(1234567, 'x')).c_str(), 07641), 0);
    const auto item = examined(folder.symlink("link", "file"));
    const auto facts = factsOf(item);
    EXPECT_EQ(tests::factIn(facts, "Symbolic link to"), "file");
    EXPECT_EQ(tests::factIn(facts, "Kind"), "Regular file");
    EXPECT_EQ(tests::factIn(facts, "Size"), "1,234,567 bytes (1.23 MB)");
    EXPECT_EQ(tests::factIn(facts, "Permissions"), "rwSr-S--t (7641)");
    EXPECT_EQ(tests::factIn(facts, "Path"), folder.path("link"));
    EXPECT_EQ(item.front.size(), examinedFrontLength);
}

TEST_F(PreviewPartsTest, aChangeIsSeen) {
    const std::string path = folder.file("file", "one");
    const auto before = examined(path);
    EXPECT_TRUE(before.showsTheSameAs(examined(path)));
    folder.file("file", "three");
    EXPECT_FALSE(before.showsTheSameAs(examined(path)));
    const std::string link = folder.symlink("link", "missing");
    EXPECT_TRUE(examined(link).showsTheSameAs(examined(link)));
    EXPECT_FALSE(examined(link).showsTheSameAs(examined(folder.path("missing"))));
}

} // namespace
} // namespace tolvane::platform
