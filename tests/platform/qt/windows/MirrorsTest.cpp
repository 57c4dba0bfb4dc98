#include "platform/qt/windows/Mirrors.h"

#include "tests/platform/qt/QtTest.h"
#include "tests/platform/qt/text/NastyTexts.h"

#include <QCheckBox>
#include <QTest>
#include <QVBoxLayout>
#include <QWidget>
#include <gtest/gtest.h>

#include <memory>
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
    view.setString("a");
    widget.insertPlainText(QStringLiteral("x"));
    EXPECT_EQ(view.string(), "");
}

struct Models {
    TextField field;
    TextView view;
    Button button;
};

struct Widgets {
    TextFieldWidget field;
    TextViewWidget view;
    QCheckBox button;
};

struct MirrorsOfAll {
    MirrorsOfAll(Models& models, Widgets& widgets)
        : field(models.field, widgets.field)
        , view(models.view, widgets.view)
        , button(models.button, widgets.button) {}

    TextFieldMirror field;
    TextViewMirror view;
    ButtonMirror button;
};

TEST_F(Mirrors, disconnectWhenDestroyedWhileTheWidgetsLiveOn) {
    auto models = std::make_unique<Models>();
    Widgets widgets;
    { const MirrorsOfAll mirrors(*models, widgets); }
    models->field.setStringValue("a");
    models->field.selectText(nullptr);
    models->view.setString("a");
    models->button.setState(ButtonState::on);
    EXPECT_EQ(widgets.field.text(), "");
    EXPECT_EQ(widgets.view.content().string(), "");
    EXPECT_FALSE(widgets.button.isChecked());
    widgets.view.insertPlainText(QStringLiteral("b"));
    widgets.button.click();
    widgets.button.click();
    EXPECT_EQ(models->view.string(), "a");
    EXPECT_EQ(models->button.state(), ButtonState::on);

    models.reset();
    widgets.view.insertPlainText(QStringLiteral("c"));
    widgets.button.click();
    EXPECT_EQ(widgets.view.content().string(), "bc");
}

TEST_F(Mirrors, outliveTheirWidgets) {
    Models models;
    auto widgets = std::make_unique<Widgets>();
    const MirrorsOfAll mirrors(models, *widgets);
    widgets.reset();
    models.field.setStringValue("a\r");
    models.field.selectText(nullptr);
    models.view.setString("b\r");
    models.button.setState(ButtonState::on);
    EXPECT_EQ(models.field.stringValue(), "a\r");
    EXPECT_EQ(models.view.string(), "b\r");
    EXPECT_EQ(models.button.state(), ButtonState::on);
}

const TextAttributes colored{Color::textColor, {}};
const TextAttributes large{Color::textColor, Font::systemFontOfSize(20)};

/// What a model holds stays exact while widgets on the screen show it, for reading or for editing.
class MirroredModels : public testing::TestWithParam<bool> {
protected:
    MirroredModels() {
        for (QWidget* const widget :
             std::initializer_list<QWidget*>{&widgets.field, &widgets.view, &widgets.button}) {
            layout.addWidget(widget);
        }
        widgets.view.setReadOnly(GetParam());
        window.show();
        QApplication::processEvents();
    }

    QApplication& qtApplication = tests::application();
    Models models;
    TextField& field = models.field;
    TextView& view = models.view;
    TextStorage& storage = *models.view.textStorage();
    QWidget window;
    QVBoxLayout layout{&window};
    Widgets widgets;
    MirrorsOfAll mirrors{models, widgets};
};

TEST_P(MirroredModels, holdInAFieldWhatWasSetEvenWhenItIsSelected) {
    for (const auto& [name, bytes] : tests::nastyTexts()) {
        SCOPED_TRACE(name);
        field.setStringValue(bytes);
        QApplication::processEvents();
        EXPECT_TRUE(field.stringValue() == bytes);
        field.selectText(nullptr);
        QApplication::processEvents();
        EXPECT_TRUE(field.stringValue() == bytes);
    }
}

TEST_P(MirroredModels, holdInAStorageWhatWasAppended) {
    for (const auto& [name, bytes] : tests::nastyTexts()) {
        SCOPED_TRACE(name);
        AttributedString expected;
        storage.setAttributedString({});
        for (const TextAttributes& attributes : {large, colored, TextAttributes(), TextAttributes()}) {
            storage.appendAttributedString({bytes, attributes});
            expected.append({bytes, attributes});
        }
        QApplication::processEvents();
        EXPECT_TRUE(storage.attributedString() == expected);
    }
}

TEST_P(MirroredModels, mayChangeAttributesInsideACharacter) {
    AttributedString content("a\xF0\x9F", large);
    content.append({"\x98\x80 b", colored});
    storage.setAttributedString(content);
    QApplication::processEvents();
    EXPECT_EQ(storage.attributedString(), content);
}

TEST_P(MirroredModels, holdTextAndAttributesWhichSetStringKeeps) {
    for (const auto& [name, bytes] : tests::nastyTexts()) {
        SCOPED_TRACE(name);
        for (const bool setsStringAlone : {false, true}) {
            storage.setAttributedString({setsStringAlone ? "before" : bytes, large});
            if (setsStringAlone) {
                view.setString(bytes);
            }
            QApplication::processEvents();
            EXPECT_TRUE(storage.attributedString() == AttributedString(bytes, large));
        }
    }
}

TEST_P(MirroredModels, reportEachChangeOnce) {
    int fieldChanges = 0;
    int storageChanges = 0;
    int buttonChanges = 0;
    const Subscription ofField = field.observe([&] { ++fieldChanges; });
    const Subscription ofStorage = storage.observe([&] { ++storageChanges; });
    const Subscription ofButton = models.button.observe([&] { ++buttonChanges; });
    field.setStringValue("a\r");
    field.setStringValue("a\r");
    storage.setAttributedString({"a\r", large});
    storage.appendAttributedString({"\u2028", colored});
    view.setString("\r\n");
    for (const ButtonState state : {ButtonState::on, ButtonState::on, ButtonState::off, ButtonState::on}) {
        models.button.setState(state);
        QApplication::processEvents();
        EXPECT_EQ(models.button.state(), state);
    }
    EXPECT_EQ(fieldChanges, 2);
    EXPECT_EQ(storageChanges, 3);
    EXPECT_EQ(buttonChanges, 3);
}

TEST_P(MirroredModels, mayBeChangedAgainByAnObserver) {
    const Subscription subscription = storage.observe([&] {
        if (view.string() == "a\rb") {
            view.setString("ab");
        }
    });
    view.setString("a\rb");
    QApplication::processEvents();
    EXPECT_EQ(view.string(), "ab");
}

INSTANTIATE_TEST_SUITE_P(Widgets, MirroredModels, testing::Bool(), [](const auto& isReadOnly) {
    return isReadOnly.param ? "forReading" : "forEditing";
});

} // namespace
} // namespace tolvane::platform
