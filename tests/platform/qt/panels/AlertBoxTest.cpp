#include "platform/qt/panels/AlertBox.h"

#include "platform/qt/text/TextFieldWidget.h"
#include "tests/platform/qt/Children.h"
#include "tests/platform/qt/panels/DialogTest.h"

#include <QClipboard>
#include <QLabel>
#include <QMimeData>
#include <QScrollBar>
#include <QTextEdit>

#include <string>

namespace tolvane::tests {
namespace {

using platform::Alert;
using platform::AlertBox;
using platform::AlertStyle;
using platform::TextFieldWidget;

using AlertBoxTest = DialogTest;

TEST_F(AlertBoxTest, showsItsTitleTextsStyleAndButtons) {
    const AlertBox box({"A message.", "More.\nAnd more.", AlertStyle::critical, {"Do", "Don't", "R&D"}});
    EXPECT_EQ(box.text(), "A message.");
    EXPECT_EQ(box.informativeText(), "More.\nAnd more.");
    EXPECT_EQ(box.icon(), QMessageBox::Critical);
    ASSERT_EQ(box.buttons().size(), 3);
    ASSERT_NE(box.defaultButton(), nullptr);
    EXPECT_EQ(box.defaultButton()->text(), "Do");
    ASSERT_NE(box.escapeButton(), nullptr);
    EXPECT_EQ(box.escapeButton()->text(), "R&&D") << "an ampersand marks no letter";
    EXPECT_EQ(box.windowTitle(), QGuiApplication::applicationDisplayName());
    EXPECT_FALSE(box.windowTitle().isEmpty());
    EXPECT_EQ(AlertBox({"", "", AlertStyle::warning, {}}).icon(), QMessageBox::Warning);
    EXPECT_EQ(AlertBox({"", "", AlertStyle::informational, {}}).icon(), QMessageBox::Information);
}

TEST_F(AlertBoxTest, takesNoTextForMarkup) {
    AlertBox box({"<b>bold</b>", "<h1>large</h1>", AlertStyle::warning, {}});
    box.show();
    int labelsWithText = 0;
    for (const QLabel* label : box.findChildren<QLabel*>()) {
        if (!label->text().isEmpty()) {
            ++labelsWithText;
            EXPECT_EQ(label->textFormat(), Qt::PlainText) << label->objectName().toStdString();
        }
    }
    EXPECT_EQ(labelsWithText, 2);
}

TEST_F(AlertBoxTest, writesOutHiddenCharacters) {
    const AlertBox box({"a\nb\u202Ec", "d\u2028e", AlertStyle::warning, {}});
    EXPECT_EQ(box.text(), "a⟨LF⟩b⟨U+202E⟩c");
    EXPECT_EQ(box.informativeText(), "d⟨U+2028⟩e");
}

TEST_F(AlertBoxTest, staysOfAReasonableSizeWhateverItSays) {
    const std::string word(50'000, 'x');
    const std::string lines = QString("line\n").repeated(5'000).toStdString();
    for (const Alert& alert :
         {Alert{word, word, AlertStyle::warning, {"OK"}}, Alert{"m", lines, AlertStyle::warning, {"OK"}}}) {
        AlertBox box(alert);
        box.show();
        EXPECT_LE(box.width(), 800);
        EXPECT_LE(box.height(), 600);
    }
}

TEST_F(AlertBoxTest, cutsTheLongLinesOfAListOnly) {
    std::string list;
    for (int i = 0; i < 10; ++i) {
        list += "“a name of common length”: No such file or directory, number " + std::to_string(i) + "\n";
    }
    AlertBox box({"m", list + std::string(50'000, 'x'), AlertStyle::warning, {"OK"}});
    EXPECT_TRUE(box.informativeText().remove(QChar(0x200B)).startsWith(QString::fromStdString(list)));
    EXPECT_TRUE(box.informativeText().endsWith("xx"));
    box.show();
    EXPECT_LE(box.height(), 600);
    const std::string path = "/" + std::string(500, 'x');
    EXPECT_EQ(
        AlertBox({"m", "Reason\n" + path, AlertStyle::warning, {}}).informativeText().remove(QChar(0x200B)),
        QString::fromStdString("Reason\n" + path));
}

TEST_F(AlertBoxTest, hidesDetailsUntilAsked) {
    const QString details = QString("<b>\tline\n").repeated(5'000);
    AlertBox box({"m", "i", AlertStyle::warning, {"OK"}});
    EXPECT_EQ(box.findChild<QTextEdit*>(), nullptr);
    EXPECT_EQ(box.buttons().size(), 1);
    box.addDetails(details.toStdString());
    box.show();
    auto* const text = box.findChild<QTextEdit*>();
    ASSERT_NE(text, nullptr);
    EXPECT_FALSE(text->isVisible());
    EXPECT_EQ(text->toPlainText(), QString(details).replace('\t', "⟨TAB⟩"));
    EXPECT_TRUE(text->isReadOnly());
    ASSERT_EQ(box.buttons().size(), 2);
    EXPECT_EQ(box.defaultButton()->text(), "OK");
    for (QAbstractButton* const button : box.buttons()) {
        if (button != box.defaultButton()) {
            QTest::mouseClick(button, Qt::LeftButton);
        }
    }
    EXPECT_TRUE(text->isVisible());
    EXPECT_TRUE(box.isVisible()) << "showing details is no answer";
    EXPECT_LE(box.height(), 600);
    QTest::keyClick(&box, Qt::Key_Escape);
    EXPECT_FALSE(box.isVisible());
}

TEST_F(AlertBoxTest, answersTheFirstOnReturnAndTheLastOrAChosenOneOnEscapeOrClosing) {
    using Cancel = std::optional<std::size_t>;
    for (const Cancel cancel : {Cancel(), Cancel(0), Cancel(1), Cancel(2)}) {
        const std::size_t expected = cancel.value_or(2);
        SCOPED_TRACE(expected);
        AlertBox box({"m", "", AlertStyle::informational, {"First", "Second", "Third"}, cancel});
        EXPECT_EQ(box.defaultButton()->text(), "First");
        EXPECT_EQ(box.answer(), expected) << "an alert that is never answered agrees to nothing";
        box.show();
        QTest::keyClick(&box, Qt::Key_Escape);
        EXPECT_FALSE(box.isVisible());
        EXPECT_EQ(box.answer(), expected);
        box.show();
        QTest::keyClick(&box, Qt::Key_Return);
        EXPECT_FALSE(box.isVisible());
        EXPECT_EQ(box.answer(), 0U);
        box.show();
        box.close();
        EXPECT_EQ(box.answer(), expected);
    }
    EXPECT_EQ(AlertBox({"m", "", AlertStyle::warning, {"One"}, 7U}).answer(), 0U)
        << "there is no such button";
}

TEST_F(AlertBoxTest, hasAButtonWhereNoneIsGiven) {
    const AlertBox box({"m", "", AlertStyle::warning, {}});
    ASSERT_EQ(box.buttons().size(), 1);
    EXPECT_EQ(box.buttons().front()->text(), "OK");
    EXPECT_EQ(box.answer(), 0U);
}

class ExactAlert : public DialogTest {
protected:
    static Alert alertOf(const std::string& text) {
        return {
            .messageText = "An error occurred:",
            .informativeText = text,
            .style = AlertStyle::critical,
            .buttons = {"OK"},
            .isInformativeTextExact = true};
    }

    static TextFieldWidget& fieldOf(const AlertBox& box) {
        return *childOf<TextFieldWidget>(box, "exactText");
    }
};

TEST_F(ExactAlert, showsATextWholeAndUnchanged) {
    for (const std::string& text :
         {std::string("/a"), "/<b>\n\u202E&\xFF" + std::string(), "/" + std::string(5'000, 'x') + "/end"}) {
        AlertBox box(alertOf(text));
        box.show();
        EXPECT_EQ(box.text(), "An error occurred:");
        EXPECT_EQ(fieldOf(box).text(), text);
        EXPECT_TRUE(fieldOf(box).isVisible());
        for (const QLabel* const label : box.findChildren<QLabel*>()) {
            EXPECT_TRUE(label->isHidden() || label->text().isEmpty() || label->text() == box.text())
                << "it is not said twice: " << label->text().toStdString();
        }
    }
}

TEST_F(ExactAlert, isAnsweredByReturnAtOnceAndLetsItsTextBeSelectedAndCopied) {
    const std::string text = "/a \u202E b";
    AlertBox box(alertOf(text));
    box.show();
    box.activateWindow();
    ASSERT_TRUE(eventually([&] { return box.isActiveWindow(); }));
    TextFieldWidget& field = fieldOf(box);
    EXPECT_FALSE(field.hasFocus());
    EXPECT_TRUE(field.textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
    QTest::keyClick(&field, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->mimeData()->data("text/plain").toStdString(), text);
    EXPECT_TRUE(box.isVisible());
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_FALSE(box.isVisible());
}

TEST_F(ExactAlert, scrollsWhatIsLong) {
    AlertBox brief(alertOf("/a"));
    brief.show();
    EXPECT_EQ(fieldOf(brief).verticalScrollBar()->maximum(), 0);
    AlertBox box(alertOf("/" + std::string(4'095, 'x')));
    box.show();
    EXPECT_GT(fieldOf(box).verticalScrollBar()->maximum(), 0);
    EXPECT_LE(box.width(), 800);
    EXPECT_LE(box.height(), 600);
    EXPECT_GE(box.height(), brief.height());
}

} // namespace
} // namespace tolvane::tests
