#include "platform/qt/text/TextViewWidget.h"

#include "tests/platform/qt/text/EditedView.h"

#include <QApplication>
#include <QPalette>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextLayout>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <tuple>

namespace tolvane::platform {
namespace {

const TextAttributes large{Color::textColor, Font::systemFontOfSize(20)};

std::string manyLines(int count) {
    std::string lines;
    for (int i = 0; i < count; ++i) {
        lines += "line " + std::to_string(i) + "\n";
    }
    return lines;
}

class ShownTextView : public testing::TestWithParam<bool> {
protected:
    ShownTextView() {
        tests::application();
        widget.emplace();
        widget->setReadOnly(GetParam());
        widget->resize(300, 200);
        widget->show();
        QApplication::processEvents();
    }

    QTextCharFormat formatAt(int position) const {
        QTextCursor cursor(widget->document());
        cursor.setPosition(position + 1);
        return cursor.charFormat();
    }

    std::optional<TextViewWidget> widget;
};

INSTANTIATE_TEST_SUITE_P(ReadOnly, ShownTextView, testing::Bool());

TEST_P(ShownTextView, givesEachRunItsSizeAndLeavesTheRestToTheWidget) {
    AttributedString content("ab\r\xFF", large);
    content.append({"cd", {}});
    widget->setContent(content);
    QApplication::processEvents();
    EXPECT_EQ(formatAt(0).fontPointSize(), 20);
    EXPECT_EQ(formatAt(2).fontPointSize(), 20);
    const int last = widget->document()->characterCount() - 2;
    EXPECT_FALSE(formatAt(last).hasProperty(QTextFormat::FontPointSize));
    EXPECT_FALSE(formatAt(last).hasProperty(QTextFormat::FontFamilies));
    for (int i = 0; i <= last; ++i) {
        EXPECT_FALSE(formatAt(i).hasProperty(QTextFormat::ForegroundBrush)) << i;
    }
}

TEST_P(ShownTextView, colorsTokensByThePaletteOfTheMoment) {
    widget->setContent({"a\r", large});
    QApplication::processEvents();
    const auto tokenColor = [&] {
        const auto formats = widget->document()->firstBlock().layout()->formats();
        EXPECT_EQ(formats.size(), 1);
        EXPECT_EQ(formats.front().start, 1);
        return formats.front().format.foreground().color();
    };
    const QColor light = tokenColor();
    const int steps = widget->document()->availableUndoSteps();
    QPalette dark = widget->palette();
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::Base, Qt::black);
    widget->setPalette(dark);
    QApplication::processEvents();
    EXPECT_GT(tokenColor().lightness(), light.lightness());
    EXPECT_EQ(widget->document()->availableUndoSteps(), steps);
}

TEST_P(ShownTextView, keepsCursorSelectionAndPlaceWhenTextIsAppendedOrOnlyAttributesChange) {
    widget->setContent({manyLines(200), large});
    const TextAttributes small{Color::textColor, Font::systemFontOfSize(8)};
    for (const auto& [anchor, position, content] :
         {std::tuple(700, 730, AttributedString(manyLines(300), large)),
          {730, 700, AttributedString(manyLines(300), small)}}) {
        tests::select(*widget, anchor, position);
        widget->verticalScrollBar()->setValue(50);
        widget->setContent(content);
        EXPECT_EQ(widget->textCursor().anchor(), anchor);
        EXPECT_EQ(widget->textCursor().position(), position);
        EXPECT_EQ(widget->verticalScrollBar()->value(), 50);
    }
    EXPECT_EQ(formatAt(0).fontPointSize(), 8);
    widget->moveCursor(QTextCursor::End);
    const int end = widget->textCursor().position();
    widget->setContent({manyLines(400), small});
    EXPECT_EQ(widget->textCursor().position(), end);
}

TEST_P(ShownTextView, onlyAddsWhatWasAppended) {
    widget->setContent({manyLines(200), large});
    int removed = 0;
    int added = 0;
    QObject::connect(
        widget->document(), &QTextDocument::contentsChange, &*widget, [&](int, int less, int more) {
            removed += less;
            added += more;
        });
    widget->setContent({manyLines(200) + "more", large});
    // The document counts the end of its last line on both sides.
    EXPECT_LE(removed, 1);
    EXPECT_LE(added, 5);
    EXPECT_EQ(widget->content(), AttributedString(manyLines(200) + "more", large));
}

TEST_P(ShownTextView, leavesTheTextInPlaceWhenOnlyItsAttributesChange) {
    const std::string text = "ab\r\n\xFF\n\nc\xC2\xA0";
    widget->setContent({text, {}});
    const TextAttributes small{Color::textColor, Font::systemFontOfSize(8)};
    for (const TextAttributes& attributes : {large, small, TextAttributes{}, small}) {
        widget->setContent({text, attributes});
        EXPECT_EQ(widget->content(), AttributedString(text, attributes));
        EXPECT_EQ(exactContent(*widget->document()), AttributedString(text, attributes));
        EXPECT_EQ(widget->document()->isUndoAvailable(), !widget->isReadOnly());
    }
}

TEST_P(ShownTextView, wrapsALongLineToItsWidth) {
    widget->setContent({std::string(40'000, 'x'), large});
    QApplication::processEvents();
    EXPECT_GT(widget->document()->firstBlock().layout()->lineCount(), 100);
    EXPECT_EQ(widget->horizontalScrollBar()->maximum(), 0);
}

TEST(TextViewWidget, startsAnotherTextAtItsTopForAReader) {
    tests::application();
    TextViewWidget widget;
    widget.setReadOnly(true);
    widget.resize(300, 200);
    widget.show();
    widget.setContent({manyLines(200), large});
    widget.moveCursor(QTextCursor::End);
    QApplication::processEvents();
    widget.setContent({"another\n" + manyLines(200), large});
    QApplication::processEvents();
    EXPECT_EQ(widget.textCursor().position(), 0);
    EXPECT_EQ(widget.verticalScrollBar()->value(), 0);
}

} // namespace
} // namespace tolvane::platform
