#include "platform/qt/text/TextCommands.h"

#include "tests/platform/qt/Shell.h"

#include <QClipboard>
#include <QImage>
#include <QLineEdit>
#include <QTest>
#include <QTextBrowser>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace tolvane::tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TextCommandsTest : public testing::Test {
protected:
    TextCommandsTest() {
        text.setPlainText("one two");
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        QApplication::clipboard()->clear();
    }

    /// The commands that are offered at the moment.
    static std::vector<std::string> offeredBy(platform::TextCommands& commands) {
        std::vector<std::string> selectors{
            "undo:", "redo:", "cut:", "copy:", "paste:", "selectAll:", "copyPath:"};
        std::erase_if(selectors, [&](const auto& selector) { return !commands.isActionEnabled(selector); });
        return selectors;
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
    EXPECT_THAT(offeredBy(commands), ElementsAre("copy:", "selectAll:"));
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
    EXPECT_THAT(offeredBy(idle), IsEmpty());
    for (const std::string_view selector : {"undo:", "redo:", "cut:", "copy:", "paste:", "selectAll:"}) {
        idle.actionForSelector(selector)(nullptr);
    }
    EXPECT_EQ(text.toPlainText(), "one two");
}

TEST_F(TextCommandsTest, areOfferedWhereTheyWouldDoSomething) {
    text.setFocus();
    EXPECT_THAT(offeredBy(commands), ElementsAre("selectAll:"));
    text.selectAll();
    EXPECT_THAT(offeredBy(commands), ElementsAre("cut:", "copy:", "selectAll:"));
    perform("cut:");
    EXPECT_THAT(offeredBy(commands), ElementsAre("undo:", "paste:"));
    QApplication::clipboard()->setImage(QImage(1, 1, QImage::Format_RGB32));
    EXPECT_THAT(offeredBy(commands), ElementsAre("undo:")) << "a picture is no text";
}

TEST_F(TextCommandsTest, changeNothingInAReadOnlyTextAndCopyAllOfItWithoutASelection) {
    text.setReadOnly(true);
    text.setFocus();
    EXPECT_THAT(offeredBy(commands), ElementsAre("copy:", "selectAll:"));
    perform("copy:");
    EXPECT_EQ(QApplication::clipboard()->text(), "one two");
    EXPECT_FALSE(text.textCursor().hasSelection());
    text.selectAll();
    QApplication::clipboard()->setText("other");
    EXPECT_THAT(offeredBy(commands), ElementsAre("copy:", "selectAll:"));
    for (const std::string_view selector : {"undo:", "redo:", "cut:", "paste:"}) {
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
    EXPECT_THAT(offeredBy(commands), IsEmpty());
}

} // namespace
} // namespace tolvane::tests
