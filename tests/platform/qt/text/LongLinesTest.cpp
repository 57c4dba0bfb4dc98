#include "tests/platform/qt/text/EditedView.h"

#include <QMouseEvent>
#include <QTextBlock>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tolvane::platform {
namespace {

using tests::clipboardBytes;
using tests::EditedView;
using tests::press;
using tests::select;
using tests::type;

/// A text without blanks in which every place looks different.
std::string counted(std::size_t length) {
    std::string text;
    for (int number = 0; text.size() < length; ++number) {
        text += std::to_string(number) + ',';
    }
    text.resize(length);
    return text;
}

class LongLines : public EditedView {
protected:
    QTextDocument& document() const { return *widget->document(); }

    /// The positions at which pieces of lines begin, without those of whole lines.
    std::vector<int> seams() const {
        std::vector<int> positions;
        for (QTextBlock block = document().firstBlock(); block.isValid(); block = block.next()) {
            if (continuesLine(block)) {
                positions.push_back(block.position());
            }
        }
        return positions;
    }

    /// How many bytes of an ASCII text are before a position.
    std::size_t bytesBefore(int position) const {
        std::size_t bytes = static_cast<std::size_t>(position);
        for (const int seam : seams()) {
            bytes -= seam <= position ? 1 : 0;
        }
        return bytes;
    }

    bool hasEmptyPiece() const {
        QTextBlock block = document().firstBlock();
        while (block.isValid()
               && (block.length() > 1 || !(continuesLine(block) || continuesLine(block.next())))) {
            block = block.next();
        }
        return block.isValid();
    }

    /// The ends of the blocks, and the places beside them.
    std::set<int> places() const {
        std::set<int> places;
        for (QTextBlock block = document().firstBlock(); block.isValid(); block = block.next()) {
            const int end = block.position() + block.length() - 1;
            places.insert({block.position(), std::min(block.position() + 1, end), end});
        }
        return places;
    }

    /// The text is kept by undoing a change to it, and the change by redoing that.
    void expectUndoneAndRedone(const std::string& before, const std::string& after) {
        EXPECT_TRUE(holds(after));
        widget->undo();
        EXPECT_TRUE(holds(before));
        widget->redo();
        EXPECT_TRUE(holds(after));
        widget->undo();
        EXPECT_TRUE(holds(before));
    }

    void click(QEvent::Type kind, const QPoint& place) {
        QMouseEvent event(
            kind, place, widget->viewport()->mapToGlobal(place), Qt::LeftButton, Qt::LeftButton, {});
        QApplication::sendEvent(widget->viewport(), &event);
    }

    const std::string longLine = counted(9'000);
};

class ReadOrEditedLongLines : public LongLines, public testing::WithParamInterface<bool> {
protected:
    ReadOrEditedLongLines() { widget->setReadOnly(GetParam()); }
};

INSTANTIATE_TEST_SUITE_P(Views, ReadOrEditedLongLines, testing::Bool());

TEST_P(ReadOrEditedLongLines, areLaidOutInPieces) {
    const std::string line = counted(100'000);
    model.setString(line);
    EXPECT_GT(document().blockCount(), 20);
    EXPECT_TRUE(holds(line));
    model.setString(line + "\ny" + line + "\n\nz");
    EXPECT_TRUE(holds(line + "\ny" + line + "\n\nz"));
    model.setString("a\nb");
    EXPECT_TRUE(holds("a\nb"));
    EXPECT_EQ(document().blockCount(), 2);
}

TEST_P(ReadOrEditedLongLines, areCopiedAsOne) {
    std::string words;
    for (int i = 0; i < 5'000; ++i) {
        words += std::to_string(i) + ' ';
    }
    model.setString(words);
    ASSERT_EQ(seams().size(), 5);
    for (const int seam : seams()) {
        EXPECT_EQ(document().characterAt(seam - 2), u' ') << "a word stays whole";
    }
    widget->selectAll();
    widget->copy();
    EXPECT_EQ(clipboardBytes(), words);
}

TEST_P(ReadOrEditedLongLines, stayWholeWhenEditingBeginsOrEnds) {
    const std::string text = "a\n" + longLine + "\r\n" + longLine + "\xFF";
    model.setString(text);
    widget->setReadOnly(!widget->isReadOnly());
    EXPECT_TRUE(holds(text));
    EXPECT_GE(seams().size(), 4);
}

TEST_P(ReadOrEditedLongLines, areSelectedWholeByAThirdClick) {
    for (const auto& [start, end] :
         {std::pair("", ""), {"", "\nb"}, {"a\n", ""}, {"a\n", "\nb"}, {"a\n\n", "\n\nb"}}) {
        model.setString(start + longLine + end);
        for (const int place : {seams().front() - 1, seams().front(), seams().back() + 1}) {
            select(*widget, place, place);
            widget->ensureCursorVisible();
            const QPoint point = widget->cursorRect().center();
            click(QEvent::MouseButtonDblClick, point);
            click(QEvent::MouseButtonPress, point);
            EXPECT_TRUE(widget->selectedText() == longLine + (*end == '\0' ? "" : "\n")) << place;
            click(QEvent::MouseButtonRelease, point);
        }
    }
}

TEST_P(ReadOrEditedLongLines, areMovedThroughByArrowKeysWithoutAStopAtTheirSeams) {
    model.setString(longLine);
    const int seam = seams().front();
    for (const int place : {seam - 1, seam}) {
        const std::size_t bytes = bytesBefore(place);
        for (const auto& [key, first] : {std::pair(Qt::Key_Left, bytes - 1), {Qt::Key_Right, bytes}}) {
            SCOPED_TRACE(testing::Message() << place << ' ' << key);
            select(*widget, place, place);
            press(*widget, key);
            EXPECT_EQ(bytesBefore(widget->textCursor().position()), key == Qt::Key_Left ? first : first + 1);
            EXPECT_EQ(widget->selectedText(), "");
            select(*widget, place, place);
            press(*widget, key, {}, Qt::ShiftModifier);
            EXPECT_EQ(widget->selectedText(), longLine.substr(first, 1));
        }
        // A selection is left at its end, wherever that is.
        select(*widget, place, 10);
        press(*widget, Qt::Key_Right);
        EXPECT_EQ(widget->textCursor().position(), place);
    }
}

TEST_F(LongLines, loseOneCharacterWithEachBackspaceOrDeleteAtASeam) {
    for (const int key : {Qt::Key_Backspace, Qt::Key_Delete}) {
        for (const int beside : {-1, 0}) {
            SCOPED_TRACE(testing::Message() << key << ' ' << beside);
            model.setString("");
            paste(longLine);
            const int place = seams().front() + beside;
            std::string after = longLine;
            const std::size_t first = bytesBefore(place) - (key == Qt::Key_Backspace ? 1 : 0);
            select(*widget, place, place);
            press(*widget, key);
            EXPECT_TRUE(holds(after.erase(first, 1)));
            press(*widget, key);
            after.erase(key == Qt::Key_Backspace ? first - 1 : first, 1);
            EXPECT_TRUE(holds(after));
            while (model.string() != longLine && document().isUndoAvailable()) {
                widget->undo();
            }
            EXPECT_TRUE(holds(longLine));
        }
    }
}

TEST_F(LongLines, loseAWordBeyondTheirSeam) {
    model.setString(longLine);
    const int seam = seams().front();
    const std::size_t bytes = bytesBefore(seam);
    select(*widget, seam, seam);
    press(*widget, Qt::Key_Backspace, {}, Qt::ControlModifier);
    EXPECT_LT(model.string().size(), longLine.size());
    EXPECT_TRUE(model.string().ends_with(longLine.substr(bytes)));
}

TEST_F(LongLines, loseExactlyWhatIsSelectedAndShowNoEmptyPiece) {
    const std::string text = "a\n" + longLine + "\nz";
    model.setString(text);
    const std::set<int> all = places();
    ASSERT_GE(all.size(), 12);
    for (const int from : all) {
        for (const int to : all) {
            if (from < to) {
                SCOPED_TRACE(testing::Message() << from << " to " << to);
                const std::size_t start = bytesBefore(from);
                std::string after = text;
                after.erase(start, bytesBefore(to) - start);
                select(*widget, from, to);
                press(*widget, Qt::Key_Delete);
                EXPECT_FALSE(hasEmptyPiece());
                expectUndoneAndRedone(text, after);
            }
        }
    }
}

TEST_F(LongLines, takeWhatIsPastedOrTypedAnywhere) {
    const std::string text = "a\n" + longLine + "\nz";
    model.setString(text);
    for (const int place : places()) {
        const std::size_t start = bytesBefore(place);
        for (const std::string& added : {std::string("\n"), std::string("x\ry"), counted(5'000) + "\n\n"}) {
            SCOPED_TRACE(testing::Message() << place << ' ' << added.size());
            select(*widget, place, place);
            paste(added);
            std::string after = text;
            expectUndoneAndRedone(text, after.insert(start, added));
        }
        select(*widget, place, place);
        type(*widget, QStringLiteral("x"));
        std::string after = text;
        expectUndoneAndRedone(text, after.insert(start, "x"));
    }
}

TEST_F(LongLines, loseThePieceOfWhichTheLastCharacterGoes) {
    model.setString(longLine);
    const int seam = seams().front();
    const std::size_t bytes = bytesBefore(seam);
    const std::string rest = longLine.substr(bytesBefore(seams().back()));
    select(*widget, seam + 1, seams().back() - 1);
    press(*widget, Qt::Key_Delete);
    EXPECT_EQ(document().blockCount(), 3);
    press(*widget, Qt::Key_Backspace);
    EXPECT_EQ(document().blockCount(), 2);
    EXPECT_TRUE(holds(longLine.substr(0, bytes) + rest));
    press(*widget, Qt::Key_Return, QStringLiteral("\r"));
    EXPECT_EQ(document().blockCount(), 2);
    EXPECT_TRUE(holds(longLine.substr(0, bytes) + "\n" + rest));
}

TEST_F(LongLines, areEditedInTheirAttributes) {
    const TextAttributes large{Color::textColor, Font::systemFontOfSize(20)};
    model.textStorage()->setAttributedString({longLine, large});
    const int seam = seams().front();
    select(*widget, seam, seam);
    paste("x\ny");
    std::string expected = longLine;
    expected.insert(bytesBefore(seam), "x\ny");
    EXPECT_EQ(model.textStorage()->attributedString(), AttributedString(expected, large));
    const TextAttributes small{Color::textColor, Font::systemFontOfSize(8)};
    model.textStorage()->setAttributedString({expected, small});
    EXPECT_EQ(exactContent(document()), AttributedString(expected, small));
    EXPECT_FALSE(seams().empty());
}

} // namespace
} // namespace tolvane::platform
