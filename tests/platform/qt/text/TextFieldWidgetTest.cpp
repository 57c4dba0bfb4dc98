#include "platform/qt/text/TextFieldWidget.h"

#include "platform/qt/application/MakeChild.h"
#include "tests/platform/qt/text/EditedView.h"

#include <QApplication>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextLayout>
#include <QVBoxLayout>
#include <QWidget>
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <utility>

namespace tolvane::platform {
namespace {

/// Ways to add the field to the window's layout, with something below it.
using Arrangement = void (*)(QWidget& window, TextFieldWidget& field);
const std::map<std::string, Arrangement> arrangements{
    {"column",
     [](QWidget& window, TextFieldWidget& field) {
         auto& layout = makeChild<QVBoxLayout>(&window);
         layout.addWidget(&field);
         layout.addStretch(1);
     }},
    {"grid",
     [](QWidget& window, TextFieldWidget& field) {
         auto& layout = makeChild<QGridLayout>(&window);
         layout.addWidget(&makeChild<QLabel>(QStringLiteral("Path:"), &window), 0, 0);
         layout.addWidget(&field, 0, 1);
         layout.addWidget(&makeChild<QWidget>(&window), 1, 0, 1, 2);
         layout.setRowStretch(1, 1);
     }},
    {"form", [](QWidget& window, TextFieldWidget& field) {
         auto& layout = makeChild<QFormLayout>(&window);
         layout.addRow(QStringLiteral("Path:"), &field);
         layout.addRow(QStringLiteral("Other:"), &makeChild<QLabel>(QStringLiteral("x"), &window));
     }}};

class ArrangedField : public testing::TestWithParam<const char*> {
protected:
    ArrangedField() {
        tests::application();
        window = std::make_unique<QWidget>();
        field = &makeChild<TextFieldWidget>(window.get());
        arrangements.at(GetParam())(*window, *field);
        window->resize(400, 600);
        window->show();
        settle();
    }

    static void settle() {
        for (int roundOfLayouts = 0; roundOfLayouts < 5; ++roundOfLayouts) {
            QApplication::processEvents();
        }
    }

    void setText(const std::string& text) {
        field->setText(text);
        settle();
    }

    int lines() const {
        int count = 0;
        for (QTextBlock block = field->document()->begin(); block.isValid(); block = block.next()) {
            count += block.layout()->lineCount();
        }
        return count;
    }

    bool scrolls() const { return field->verticalScrollBar()->maximum() > 0; }

    std::unique_ptr<QWidget> window;
    TextFieldWidget* field = nullptr;
};

INSTANTIATE_TEST_SUITE_P(Layouts, ArrangedField, testing::Values("column", "grid", "form"));

TEST_P(ArrangedField, isAsHighAsItsLinesAndOneLineHighWhenEmpty) {
    const int oneLine = field->height();
    EXPECT_EQ(oneLine, field->minimumSizeHint().height());
    setText("a\nb");
    const int furtherLine = field->height() - oneLine;
    EXPECT_GT(furtherLine, 0);
    for (const auto& [text, lines] :
         {std::pair("short", 1), {"a\nb", 2}, {"a\nb\nc", 3}, {"a\nb\nc\nd", 4}, {"a", 1}, {"", 1}}) {
        SCOPED_TRACE(text);
        setText(text);
        EXPECT_EQ(field->height(), oneLine + (lines - 1) * furtherLine);
        EXPECT_FALSE(scrolls());
    }
}

TEST_P(ArrangedField, wrapsAPathWithoutBlanksAndShowsAllOfIt) {
    const int oneLine = field->height();
    setText("/home/user/" + std::string(60, 'w'));
    EXPECT_GT(lines(), 1);
    EXPECT_LE(lines(), field->maximumLines());
    EXPECT_GT(field->height(), oneLine);
    EXPECT_EQ(field->height(), field->heightForWidth(field->width()));
    EXPECT_FALSE(scrolls());
    EXPECT_EQ(field->cutText(), QString());
}

TEST_P(ArrangedField, growsWithItsFont) {
    setText("a\nb");
    const int small = field->height();
    const QFont usual = field->font();
    QFont large = usual;
    large.setPointSizeF(3 * usual.pointSizeF());
    field->setFont(large);
    settle();
    EXPECT_GT(field->height(), 2 * small);
    EXPECT_FALSE(scrolls());
    field->setFont(usual);
    settle();
    EXPECT_EQ(field->height(), small);
}

TEST_P(ArrangedField, fitsAtEachWidthOfManyAndAgain) {
    field->setMaximumLines(12);
    setText("/home/user/" + std::string(60, 'w'));
    std::map<int, int> heights;
    for (int round = 0; round < 2; ++round) {
        for (int width = 300; width <= 700; width += 20) {
            window->resize(width, 600);
            settle();
            EXPECT_FALSE(scrolls()) << width;
            const auto [known, isNew] = heights.emplace(width, field->height());
            EXPECT_EQ(known->second, field->height()) << width;
        }
    }
    EXPECT_GT(heights.begin()->second, heights.rbegin()->second);
}

TEST_P(ArrangedField, scrollsBeyondItsMaximum) {
    setText("a\nb\nc\nd");
    const int fourLines = field->height();
    setText(std::string(40'000, 'x'));
    EXPECT_EQ(field->height(), fourLines);
    EXPECT_TRUE(scrolls());
    EXPECT_EQ(field->cutText().size(), 40'000);
    field->setMaximumLines(2);
    settle();
    EXPECT_LT(field->height(), fourLines);
}

TEST(TextFieldWidget, isReadWithTheKeyboardAndLeftWithTab) {
    tests::application();
    QWidget window;
    auto& layout = makeChild<QVBoxLayout>(&window);
    auto& field = makeChild<TextFieldWidget>(&window);
    auto& next = makeChild<QLineEdit>(&window);
    layout.addWidget(&field);
    layout.addWidget(&next);
    field.setText("abc");
    window.show();
    window.activateWindow();
    field.setFocus();
    tests::press(field, Qt::Key_Right, {}, Qt::ShiftModifier);
    EXPECT_EQ(field.selectedText(), "a");
    tests::press(field, Qt::Key_Tab, QStringLiteral("\t"));
    EXPECT_EQ(window.focusWidget(), &next);
    EXPECT_EQ(field.text(), "abc");
}

TEST(TextFieldWidget, putsThePartsOfAPathFromLeftToRightWhateverTheirLetters) {
    tests::application();
    TextFieldWidget field;
    field.setText("\u05D0\u05D1/a");
    field.resize(400, 40);
    field.show();
    QApplication::processEvents();
    const auto placeOfLastPart = [&] {
        constexpr int lastPart = 3;
        return field.document()->firstBlock().layout()->lineAt(0).cursorToX(lastPart);
    };
    const double place = placeOfLastPart();
    field.setTextDirection(Qt::RightToLeft);
    QApplication::processEvents();
    EXPECT_GT(place, placeOfLastPart());
}

} // namespace
} // namespace tolvane::platform
