#include "platform/qt/application/QtWorkspace.h"
#include "tests/platform/qt/QtTest.h"

#include <QClipboard>
#include <QMimeData>
#include <gtest/gtest.h>

#include <array>
#include <string>

namespace tolvane::tests {
namespace {

class QtPasteboardTest : public testing::Test {
protected:
    QtPasteboardTest() { application(); }

    static std::string held() { return QApplication::clipboard()->text().toStdString(); }

    bool write(const std::string& text) { return pasteboard.writeObjects(std::array{text}); }

    platform::QtPasteboard pasteboard;
};

TEST_F(QtPasteboardTest, holdsTextExactlyAsGivenAndPlainTextOnly) {
    const std::string text = "<b>a</b>" + std::string("\r\nb\rc\u00A0d\0e\u2028f\tg\uFEFF\n", 20);
    EXPECT_TRUE(write(text));
    EXPECT_EQ(held(), text);
    EXPECT_EQ(QApplication::clipboard()->mimeData()->formats(), QStringList{"text/plain"});
}

TEST_F(QtPasteboardTest, joinsSeveralTexts) {
    EXPECT_TRUE(pasteboard.writeObjects(std::array<std::string, 3>{"a", "", "b"}));
    EXPECT_EQ(held(), "a\n\nb");
    EXPECT_TRUE(write("c"));
    EXPECT_EQ(held(), "a\n\nb\nc");
}

TEST_F(QtPasteboardTest, beginsAnewAfterClearing) {
    EXPECT_TRUE(write("a"));
    pasteboard.clearContents();
    EXPECT_EQ(held(), "");
    EXPECT_TRUE(write("b"));
    EXPECT_EQ(held(), "b");
}

TEST_F(QtPasteboardTest, takesLongAndEmptyTexts) {
    const std::string text(3'000'000, 'x');
    EXPECT_TRUE(write(text));
    EXPECT_EQ(held(), text);
    pasteboard.clearContents();
    EXPECT_TRUE(pasteboard.writeObjects({}));
    EXPECT_TRUE(write(""));
    EXPECT_EQ(held(), "");
}

} // namespace
} // namespace tolvane::tests
