#include "platform/qt/windows/Mirrors.h"

#include "tests/platform/qt/QtTest.h"

#include <QCheckBox>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

namespace tolvane::platform {
namespace {

class Mirrors : public testing::Test {
protected:
    Mirrors() { tests::application(); }
};

TEST_F(Mirrors, showAFieldNowAndAfterEachChange) {
    TextField field;
    field.setStringValue("a\r");
    TextFieldWidget widget;
    const TextFieldMirror mirror(field, widget);
    EXPECT_EQ(widget.text(), "a\r");
    field.setStringValue(std::string(1, '\0'));
    EXPECT_EQ(widget.text(), std::string(1, '\0'));
    field.setStringValue("\u2028");
    EXPECT_EQ(widget.text(), "\u2028");
}

TEST_F(Mirrors, selectAFieldAndGiveItTheKeyboard) {
    TextField field;
    QWidget window;
    TextFieldWidget widget(&window);
    QCheckBox other(&window);
    const TextFieldMirror mirror(field, widget);
    window.show();
    other.setFocus();
    field.setStringValue("a\u00A0b");
    field.selectText(nullptr);
    EXPECT_EQ(widget.selectedText(), "a\u00A0b");
    EXPECT_EQ(window.focusWidget(), &widget);
}

TEST_F(Mirrors, showAFieldInALabelAsPlainText) {
    TextField field;
    field.setStringValue("<b>a\r");
    QLabel widget;
    const LabelMirror mirror(field, widget);
    EXPECT_EQ(widget.text(), "<b>a⟨CR⟩");
    EXPECT_EQ(widget.textFormat(), Qt::PlainText);
    field.setStringValue("b");
    EXPECT_EQ(widget.text(), "b");
}

TEST_F(Mirrors, passOnWhatIsTyped) {
    TextField field;
    field.setStringValue("a");
    QLineEdit widget;
    const EntryMirror mirror(field, widget);
    EXPECT_EQ(widget.text(), "a");
    QTest::keyClicks(&widget, "b");
    EXPECT_EQ(field.stringValue(), "ab");
    field.setStringValue("c");
    EXPECT_EQ(widget.text(), "c");
}

TEST_F(Mirrors, showProgressOnlyWhileThereIsWork) {
    ProgressIndicator indicator;
    QWidget window;
    QProgressBar widget(&window);
    const ProgressMirror mirror(indicator, widget);
    EXPECT_TRUE(widget.isHidden());
    indicator.setProgress({2, 10});
    EXPECT_FALSE(widget.isHidden());
    EXPECT_EQ(widget.value(), 2);
    EXPECT_EQ(widget.maximum(), 10);
    indicator.setProgress({});
    EXPECT_TRUE(widget.isHidden());
}

TEST_F(Mirrors, emptyAWidgetWhoseViewHasNoStorage) {
    TextView view;
    view.removeTextStorage();
    TextViewWidget widget;
    widget.setContent({"old", {}});
    const TextViewMirror mirror(view, widget);
    EXPECT_EQ(widget.content().string(), "");
    widget.insertPlainText(QStringLiteral("x"));
    EXPECT_EQ(view.string(), "");
}

TEST_F(Mirrors, takeNoEditsForAViewThatLostItsStorage) {
    TextView view;
    TextViewWidget widget;
    const TextViewMirror mirror(view, widget);
    view.removeTextStorage();
    widget.insertPlainText(QStringLiteral("x"));
    EXPECT_EQ(view.string(), "");
}

TEST_F(Mirrors, disconnectWhenDestroyedWhileTheWidgetsLiveOn) {
    auto field = std::make_unique<TextField>();
    auto view = std::make_unique<TextView>();
    auto button = std::make_unique<Button>();
    TextFieldWidget fieldWidget;
    TextViewWidget viewWidget;
    QCheckBox box;
    {
        const TextFieldMirror fieldMirror(*field, fieldWidget);
        const TextViewMirror viewMirror(*view, viewWidget);
        const ButtonMirror buttonMirror(*button, box);
    }
    field->setStringValue("a");
    field->selectText(nullptr);
    view->setString("a");
    button->setState(ButtonState::on);
    EXPECT_EQ(fieldWidget.text(), "");
    EXPECT_EQ(viewWidget.content().string(), "");
    EXPECT_FALSE(box.isChecked());
    viewWidget.insertPlainText(QStringLiteral("b"));
    box.click();
    box.click();
    EXPECT_EQ(view->string(), "a");
    EXPECT_EQ(button->state(), ButtonState::on);

    field.reset();
    view.reset();
    button.reset();
    viewWidget.insertPlainText(QStringLiteral("c"));
    box.click();
    EXPECT_EQ(viewWidget.content().string(), "bc");
}

TEST_F(Mirrors, outliveTheirWidgets) {
    TextField field;
    TextView view;
    Button button;
    std::optional<TextFieldWidget> fieldWidget(std::in_place);
    std::optional<TextViewWidget> viewWidget(std::in_place);
    std::optional<QCheckBox> box(std::in_place);
    const TextFieldMirror fieldMirror(field, *fieldWidget);
    const TextViewMirror viewMirror(view, *viewWidget);
    const ButtonMirror buttonMirror(button, *box);
    fieldWidget.reset();
    viewWidget.reset();
    box.reset();
    field.setStringValue("a\r");
    field.selectText(nullptr);
    view.setString("b\r");
    button.setState(ButtonState::on);
    EXPECT_EQ(field.stringValue(), "a\r");
    EXPECT_EQ(view.string(), "b\r");
    EXPECT_EQ(button.state(), ButtonState::on);
}

} // namespace
} // namespace tolvane::platform
