#include "platform/qt/text/TextCommands.h"

#include "tests/platform/qt/Shell.h"

#include <QClipboard>
#include <QLineEdit>
#include <QTest>
#include <QTextBrowser>
#include <gtest/gtest.h>

namespace tolvane::tests {
namespace {

class TextCommandsTest : public testing::Test {
protected:
    TextCommandsTest() {
        text.setPlainText("one two");
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        QApplication::clipboard()->clear();
    }

    void perform(std::string_view selector) {
        const auto action = commands.actionForSelector(selector);
        ASSERT_TRUE(action) << selector;
        action(nullptr);
    }

    QApplication& toolkit = application();
    QWidget window;
    QPlainTextEdit text{&window};
    QLineEdit line{&window};
    platform::TextCommands commands{window};
};

TEST_F(TextCommandsTest, workOnTheTextThatHadTheKeyboardLast) {
    text.setFocus();
    line.setFocus();
    perform("selectAll:");
    EXPECT_TRUE(text.textCursor().hasSelection());
    perform("cut:");
    EXPECT_EQ(text.toPlainText(), "");
    EXPECT_EQ(QApplication::clipboard()->text(), "one two");
    perform("paste:");
    perform("paste:");
    EXPECT_EQ(text.toPlainText(), "one twoone two");
    perform("undo:");
    EXPECT_EQ(text.toPlainText(), "one two");
    perform("redo:");
    EXPECT_EQ(text.toPlainText(), "one twoone two");
}

TEST_F(TextCommandsTest, workOnLaidOutText) {
    QTextBrowser page;
    page.setHtml("<h1>Title</h1><p>Some <b>words</b></p>");
    page.setParent(&window);
    page.show();
    page.setFocus();
    for (const std::string_view selector : {"undo:", "redo:", "cut:", "paste:"}) {
        EXPECT_FALSE(commands.isActionEnabled(selector)) << selector;
    }
    EXPECT_TRUE(commands.isActionEnabled("copy:"));
    perform("copy:");
    EXPECT_EQ(QApplication::clipboard()->text(), "Title\nSome words");
    EXPECT_FALSE(page.textCursor().hasSelection());
    perform("selectAll:");
    EXPECT_TRUE(page.textCursor().hasSelection());
    text.setFocus();
    perform("selectAll:");
    EXPECT_TRUE(text.textCursor().hasSelection());
}

TEST_F(TextCommandsTest, areNotOfferedWithoutAText) {
    QWidget bare;
    platform::TextCommands idle(bare);
    for (const std::string_view selector : {"undo:", "redo:", "cut:", "copy:", "paste:", "selectAll:"}) {
        EXPECT_FALSE(idle.isActionEnabled(selector)) << selector;
        idle.actionForSelector(selector)(nullptr);
    }
    EXPECT_EQ(text.toPlainText(), "one two");
}

TEST_F(TextCommandsTest, areOfferedWhereTheyWouldDoSomething) {
    text.setFocus();
    EXPECT_TRUE(commands.isActionEnabled("selectAll:"));
    EXPECT_FALSE(commands.isActionEnabled("cut:"));
    EXPECT_FALSE(commands.isActionEnabled("copy:"));
    EXPECT_FALSE(commands.isActionEnabled("undo:"));
    text.selectAll();
    EXPECT_TRUE(commands.isActionEnabled("cut:"));
    EXPECT_TRUE(commands.isActionEnabled("copy:"));
    perform("cut:");
    EXPECT_TRUE(commands.isActionEnabled("undo:"));
    EXPECT_FALSE(commands.isActionEnabled("redo:"));
    EXPECT_TRUE(commands.isActionEnabled("paste:"));
    EXPECT_FALSE(commands.isActionEnabled("selectAll:"));
    EXPECT_FALSE(commands.isActionEnabled("copyPath:"));
}

TEST_F(TextCommandsTest, changeNothingInAReadOnlyTextAndCopyAllOfItWithoutASelection) {
    text.setReadOnly(true);
    text.setFocus();
    EXPECT_TRUE(commands.isActionEnabled("copy:"));
    perform("copy:");
    EXPECT_EQ(QApplication::clipboard()->text(), "one two");
    EXPECT_FALSE(text.textCursor().hasSelection());
    text.selectAll();
    QApplication::clipboard()->setText("other");
    for (const std::string_view selector : {"undo:", "redo:", "cut:", "paste:"}) {
        EXPECT_FALSE(commands.isActionEnabled(selector)) << selector;
        perform(selector);
    }
    EXPECT_EQ(text.toPlainText(), "one two");
}

TEST_F(TextCommandsTest, forgetATextThatIsGone) {
    auto passing = std::make_unique<QPlainTextEdit>("x", &window);
    passing->show();
    passing->setFocus();
    EXPECT_TRUE(commands.isActionEnabled("selectAll:"));
    passing.reset();
    perform("selectAll:");
    EXPECT_FALSE(commands.isActionEnabled("copyPath:"));
}

} // namespace
} // namespace tolvane::tests
