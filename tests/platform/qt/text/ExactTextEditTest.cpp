#include "platform/qt/text/TextFieldWidget.h"
#include "platform/qt/text/TextViewWidget.h"
#include "tests/platform/qt/text/EditedView.h"
#include "tests/platform/qt/text/NastyTexts.h"

#include <QApplication>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextFormat>
#include <QTextLayout>
#include <QUrl>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace tolvane::platform {
namespace {

using tests::clipboardBytes;
using tests::EditedView;
using tests::exactMime;
using tests::lengthOf;
using tests::nastyTexts;
using tests::press;
using tests::select;
using tests::type;
using namespace std::string_literals;

class EditedOrReadView : public EditedView, public testing::WithParamInterface<bool> {
protected:
    EditedOrReadView() { widget->setReadOnly(GetParam()); }
};

INSTANTIATE_TEST_SUITE_P(Views, EditedOrReadView, testing::Bool());

/// The number of coloured pieces of text, which are the tokens.
int coloredPieces(const QPlainTextEdit& edit) {
    int pieces = 0;
    for (QTextBlock block = edit.document()->begin(); block.isValid(); block = block.next()) {
        for (const QTextLayout::FormatRange& range : block.layout()->formats()) {
            pieces += range.format.hasProperty(QTextFormat::ForegroundBrush) ? 1 : 0;
        }
    }
    return pieces;
}

TEST_P(EditedOrReadView, colorsTokensWheneverTheyCome) {
    model.textStorage()->setAttributedString({"plain", {}});
    EXPECT_EQ(coloredPieces(*widget), 0);
    model.textStorage()->setAttributedString({"plain\r\nand\x01more", {}});
    EXPECT_EQ(coloredPieces(*widget), 2);
    model.textStorage()->setAttributedString({"plain", {}});
    EXPECT_EQ(coloredPieces(*widget), 0);
    model.textStorage()->setAttributedString({"\r", {}});
    EXPECT_EQ(coloredPieces(*widget), 1);
    widget->setReadOnly(!widget->isReadOnly());
    EXPECT_EQ(coloredPieces(*widget), 1) << "the other kind of token";
}

TEST_F(EditedView, colorsTokensThatArePastedTypedOrBroughtBack) {
    paste("a\rb");
    EXPECT_EQ(coloredPieces(*widget), 1);
    widget->undo();
    EXPECT_EQ(coloredPieces(*widget), 0);
    widget->redo();
    EXPECT_EQ(coloredPieces(*widget), 1);
    type(*widget, QStringLiteral("\u202E"));
    EXPECT_EQ(coloredPieces(*widget), 2);
}

TEST_P(EditedOrReadView, showsAndCopiesEveryTextToTheByte) {
    for (const auto& [name, bytes] : nastyTexts()) {
        SCOPED_TRACE(name);
        QApplication::clipboard()->clear();
        model.textStorage()->setAttributedString({bytes, {Color::textColor, Font::systemFontOfSize(9.5)}});
        EXPECT_TRUE(exactText(*widget->document()) == bytes);
        EXPECT_TRUE(exactContent(*widget->document()) == model.textStorage()->attributedString());
        widget->selectAll();
        widget->copy();
        EXPECT_TRUE(clipboardBytes() == bytes);
        if (!bytes.empty()) {
            EXPECT_FALSE(QApplication::clipboard()->mimeData()->hasHtml());
            EXPECT_TRUE(clipboardBytes(QStringLiteral("text/plain")) == bytes);
        }
    }
}

TEST_P(EditedOrReadView, twoHalvesCopiedAreTheWhole) {
    for (const auto& [name, bytes] : nastyTexts()) {
        constexpr std::size_t longText = 1000;
        if (bytes.size() > longText) {
            continue;
        }
        SCOPED_TRACE(name);
        model.setString(bytes);
        const int length = lengthOf(*widget);
        for (int at = 0; at <= length; ++at) {
            select(*widget, 0, at);
            const std::string head = widget->selectedText();
            select(*widget, at, length);
            const std::string tail = widget->selectedText();
            // What was cut is in both halves, whole.
            ASSERT_TRUE(bytes.starts_with(head)) << at;
            ASSERT_TRUE(bytes.ends_with(tail)) << at;
            constexpr std::size_t longestCharacter = 4;
            ASSERT_GE(head.size() + tail.size(), bytes.size()) << at;
            ASSERT_LE(head.size() + tail.size(), bytes.size() + longestCharacter) << at;
        }
    }
}

TEST_F(EditedView, showsTokensOfOneCharacterForEditingAndOfWordsForReading) {
    const std::string bytes = "a\0\r\x7F\u00A0\u202E\xFF\u200Bz"s;
    model.setString(bytes);
    EXPECT_EQ(widget->toPlainText(), QStringLiteral("a\u2400\u240D\u2421\u237D\uFFFD\uFFFD\uFFFDz"));
    widget->setReadOnly(true);
    EXPECT_TRUE(holds(bytes));
    EXPECT_EQ(widget->toPlainText(), QStringLiteral("a⟨NUL⟩⟨CR⟩⟨DEL⟩ ⟨U+202E⟩⟨byte FF⟩⟨U+200B⟩z"));
    widget->setReadOnly(false);
    EXPECT_TRUE(holds(bytes));
}

TEST_F(EditedView, copiesATokenWholeWhenPartOfItIsSelected) {
    widget->setReadOnly(true);
    model.setString("a\r\rb");
    select(*widget, 2, 3);
    EXPECT_EQ(widget->selectedText(), "\r");
    select(*widget, 0, 4);
    EXPECT_EQ(widget->selectedText(), "a\r");
    select(*widget, 4, 6);
    EXPECT_EQ(widget->selectedText(), "\r\r");
}

TEST_F(EditedView, takesPastedTextOfProgramsThatOfferPlainTextOnly) {
    auto data = std::make_unique<QMimeData>();
    data->setText(QStringLiteral("a\r\u00A0\u2029b"));
    QApplication::clipboard()->setMimeData(data.release());
    widget->paste();
    EXPECT_TRUE(holds("a\r\u00A0\u2029b"));
}

TEST_F(EditedView, pastesIntoTheMiddleAndOverASelection) {
    model.setString("a\r\rb");
    select(*widget, 2, 2);
    paste("\0x\xFF"s);
    EXPECT_TRUE(holds("a\r\0x\xFF\rb"s));
    select(*widget, 1, 4);
    paste("\u00A0");
    EXPECT_TRUE(holds("a\u00A0\xFF\rb"));
}

TEST_F(EditedView, takesDroppedTextToTheByte) {
    for (const auto& [name, bytes] : nastyTexts()) {
        SCOPED_TRACE(name);
        model.setString("");
        const auto data = exactMime(bytes);
        QDragEnterEvent enter({1, 1}, Qt::CopyAction, data.get(), Qt::LeftButton, {});
        QApplication::sendEvent(widget->viewport(), &enter);
        EXPECT_TRUE(enter.isAccepted());
        QDropEvent drop({1, 1}, Qt::CopyAction, data.get(), Qt::LeftButton, {});
        QApplication::sendEvent(widget->viewport(), &drop);
        EXPECT_TRUE(model.string() == bytes);
    }
}

TEST_F(EditedView, leavesDroppedFilesToTheWindow) {
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/a"))});
    QDragEnterEvent enter({1, 1}, Qt::CopyAction, &files, Qt::LeftButton, {});
    QApplication::sendEvent(widget->viewport(), &enter);
    EXPECT_FALSE(enter.isAccepted());
}

TEST_F(EditedView, takesWhatIsTyped) {
    type(*widget, QStringLiteral("ab"));
    press(*widget, Qt::Key_Return, QStringLiteral("\r"));
    type(*widget, QStringLiteral("c"));
    press(*widget, Qt::Key_Return, QStringLiteral("\r"), Qt::ShiftModifier);
    press(*widget, Qt::Key_Enter, QStringLiteral("\r"), Qt::KeypadModifier);
    type(*widget, QStringLiteral("\u00A0\u200F"));
    press(*widget, 0, QString::fromUcs4(U"\U0001F600"));
    EXPECT_TRUE(holds("ab\nc\n\n\u00A0\u200F\U0001F600"));
}

TEST_F(EditedView, typesPlainTextBesideTokens) {
    model.setString("\r\0"s);
    select(*widget, 1, 1);
    type(*widget, QStringLiteral("x"));
    EXPECT_TRUE(holds("\rx\0"s));
    widget->moveCursor(QTextCursor::End);
    type(*widget, QStringLiteral("y\u2400"));
    press(*widget, Qt::Key_Return, QStringLiteral("\r"));
    type(*widget, QStringLiteral("\uFFFD"));
    EXPECT_TRUE(holds("\rx\0y\u2400\n\uFFFD"s));
    EXPECT_FALSE(isToken(widget->textCursor().charFormat()));
    select(*widget, 0, 2);
    type(*widget, QStringLiteral("\u240D"));
    EXPECT_TRUE(holds("\u240D\0y\u2400\n\uFFFD"s));
}

TEST_F(EditedView, keepsTextInsertedPastItsKeyboardBesideTokens) {
    model.setString("\r");
    QTextCursor cursor(widget->document());
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(QStringLiteral("ab"));
    EXPECT_TRUE(holds("\rab"));
}

TEST_F(EditedView, takesWhatAnInputMethodCommits) {
    model.setString("\r");
    widget->moveCursor(QTextCursor::End);
    QInputMethodEvent composing(QStringLiteral("ni"), {});
    QApplication::sendEvent(&*widget, &composing);
    EXPECT_TRUE(holds("\r"));
    QInputMethodEvent committing(QStringLiteral("h"), {});
    committing.setCommitString(QStringLiteral("\u4F60\u200D"));
    QApplication::sendEvent(&*widget, &committing);
    EXPECT_TRUE(holds("\r\u4F60\u200D"));
    QInputMethodEvent replacing;
    replacing.setCommitString(QStringLiteral("x"), -1, 1);
    QApplication::sendEvent(&*widget, &replacing);
    EXPECT_TRUE(holds("\r\u4F60x"));
}

TEST_F(EditedView, removesOneTokenWithEachBackspace) {
    model.setString("a\r\r\0\xFF\xFF"s);
    widget->moveCursor(QTextCursor::End);
    for (const std::string& left : {"a\r\r\0\xFF"s, "a\r\r\0"s, "a\r\r"s, "a\r"s, "a"s, ""s}) {
        press(*widget, Qt::Key_Backspace);
        EXPECT_TRUE(holds(left));
    }
}

TEST_F(EditedView, undoesAndRedoesEveryStepToTheByte) {
    for (const auto& [name, bytes] : nastyTexts()) {
        SCOPED_TRACE(name);
        model.setString("before");
        widget->selectAll();
        paste(bytes);
        EXPECT_TRUE(model.string() == bytes);
        if (bytes.empty()) {
            continue;
        }
        widget->undo();
        EXPECT_TRUE(model.string() == "before");
        widget->redo();
        EXPECT_TRUE(model.string() == bytes);
        widget->selectAll();
        widget->cut();
        EXPECT_TRUE(holds(""));
        EXPECT_TRUE(clipboardBytes() == bytes);
        widget->undo();
        EXPECT_TRUE(model.string() == bytes);
    }
}

TEST_F(EditedView, undoesTypingAndBackspaceOverTokens) {
    paste("\r\r\0"s);
    press(*widget, Qt::Key_Backspace);
    press(*widget, Qt::Key_Backspace);
    type(*widget, QStringLiteral("xy"));
    EXPECT_TRUE(holds("\rxy"));
    widget->undo();
    EXPECT_TRUE(holds("\r"));
    while (widget->document()->isUndoAvailable() && model.string() != "\r\r\0"s) {
        widget->undo();
    }
    EXPECT_TRUE(holds("\r\r\0"s));
    widget->undo();
    EXPECT_TRUE(holds(""));
    while (widget->document()->isRedoAvailable()) {
        widget->redo();
    }
    EXPECT_TRUE(holds("\rxy"));
}

TEST_F(EditedView, undoesWhatTheProgramWroteStepByStepWithoutAStepForTheSame) {
    type(*widget, QStringLiteral("a b"));
    model.setString("a b");
    model.setString("ab");
    model.textStorage()->setAttributedString({"ab", {Color::textColor, {}}});
    model.setString("Couldn't");
    widget->undo();
    EXPECT_TRUE(holds("ab"));
    widget->undo();
    EXPECT_TRUE(holds("a b"));
    widget->redo();
    EXPECT_TRUE(holds("ab"));
    widget->undo();
    widget->undo();
    EXPECT_TRUE(holds(""));
}

TEST_F(EditedView, hasNothingToUndoInATextToRead) {
    widget->setReadOnly(true);
    model.setString("one");
    model.setString("two");
    EXPECT_FALSE(widget->document()->isUndoAvailable());
    widget->setReadOnly(false);
    widget->undo();
    EXPECT_TRUE(holds("two"));
}

TEST_F(EditedView, keepsTheAttributesOfTheTextThatIsEdited) {
    const TextAttributes large{Color::textColor, Font::systemFontOfSize(20)};
    AttributedString content("ab\r", large);
    content.append({"cd", {}});
    model.textStorage()->setAttributedString(content);
    select(*widget, 1, 1);
    type(*widget, QStringLiteral("x"));
    AttributedString expected("axb\r", large);
    expected.append({"cd", {}});
    EXPECT_EQ(model.textStorage()->attributedString(), expected);
    widget->selectAll();
    press(*widget, Qt::Key_Backspace);
    type(*widget, QStringLiteral("y"));
    EXPECT_EQ(model.textStorage()->attributedString(), AttributedString("y", large));
}

TEST_F(EditedView, reportsEachEditOnceAndDoesNotEcho) {
    int edits = 0;
    int changes = 0;
    const Subscription onEdit = widget->observeEdits([&] { ++edits; });
    const Subscription onChange = model.textStorage()->observe([&] { ++changes; });
    type(*widget, QStringLiteral("a"));
    EXPECT_EQ(std::pair(edits, changes), std::pair(1, 1));
    model.setString("\r");
    EXPECT_EQ(std::pair(edits, changes), std::pair(1, 2));
    QApplication::processEvents();
    widget->setPalette(QPalette(Qt::black));
    QApplication::processEvents();
    EXPECT_EQ(std::pair(edits, changes), std::pair(1, 2));
}

TEST_F(EditedView, leavesTheFieldWithTab) {
    press(*widget, Qt::Key_Tab, QStringLiteral("\t"));
    EXPECT_TRUE(holds(""));
}

TEST_F(EditedView, cannotBeChangedWhenReadOnly) {
    model.setString("a\r");
    widget->setReadOnly(true);
    widget->selectAll();
    type(*widget, QStringLiteral("x"));
    press(*widget, Qt::Key_Backspace);
    paste("y");
    EXPECT_TRUE(holds("a\r"));
}

} // namespace
} // namespace tolvane::platform
