#include "platform/model/Controls.h"
#include "platform/qt/application/MakeChild.h"
#include "platform/qt/text/TextFieldWidget.h"
#include "platform/qt/text/TextViewWidget.h"
#include "platform/qt/windows/Mirrors.h"
#include "tests/platform/qt/QtTest.h"
#include "tests/platform/qt/text/NastyTexts.h"

#include <QApplication>
#include <QCheckBox>
#include <QVBoxLayout>
#include <QWidget>
#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace tolvane::platform {
namespace {

using tests::nastyTexts;

const TextAttributes colored{Color::textColor, {}};
const TextAttributes large{Color::textColor, Font::systemFontOfSize(20)};

/// Widgets for the three models in a window on the screen.
struct ShownWindow {
    ShownWindow(TextField& field, TextView& view, Button& button, bool isReadOnly)
        : fieldMirror(field, fieldWidget)
        , viewMirror(view, viewWidget)
        , buttonMirror(button, buttonWidget) {
        for (QWidget* const widget :
             std::initializer_list<QWidget*>{&fieldWidget, &viewWidget, &buttonWidget}) {
            layout.addWidget(widget);
        }
        viewWidget.setReadOnly(isReadOnly);
        window.show();
    }

    QWidget window;
    QVBoxLayout layout{&window};
    TextFieldWidget fieldWidget{&window};
    TextViewWidget viewWidget{&window};
    QCheckBox buttonWidget{&window};
    TextFieldMirror fieldMirror;
    TextViewMirror viewMirror;
    ButtonMirror buttonMirror;
};

enum class Front { none, readOnly, editable };

/// What a model holds is exact, whether it is shown or not and whatever shows it.
class ModelContract : public testing::TestWithParam<Front> {
protected:
    void SetUp() override {
        if (GetParam() != Front::none) {
            tests::application();
            window_ = std::make_unique<ShownWindow>(field, view, button, GetParam() == Front::readOnly);
        }
        settle();
    }

    void settle() const {
        if (window_) {
            QApplication::processEvents();
        }
    }

    TextField field;
    TextView view;
    Button button;

private:
    std::unique_ptr<ShownWindow> window_;
};

TEST_P(ModelContract, aFieldHoldsWhatWasSetEvenWhenItIsSelected) {
    for (const auto& [name, bytes] : nastyTexts()) {
        SCOPED_TRACE(name);
        field.setStringValue(bytes);
        settle();
        EXPECT_TRUE(field.stringValue() == bytes);
        field.selectText(nullptr);
        settle();
        EXPECT_TRUE(field.stringValue() == bytes);
    }
}

TEST_P(ModelContract, aFieldReportsEachChangeOnce) {
    int changes = 0;
    const Subscription subscription = field.observe([&] { ++changes; });
    field.setStringValue("a\r");
    field.setStringValue("a\r");
    settle();
    EXPECT_EQ(changes, 2);
}

TEST_P(ModelContract, aStorageHoldsWhatWasAppended) {
    for (const auto& [name, bytes] : nastyTexts()) {
        SCOPED_TRACE(name);
        AttributedString expected;
        view.textStorage()->setAttributedString({});
        for (const TextAttributes& attributes : {large, colored, TextAttributes(), TextAttributes()}) {
            view.textStorage()->appendAttributedString({bytes, attributes});
            expected.append({bytes, attributes});
        }
        settle();
        EXPECT_TRUE(view.textStorage()->attributedString() == expected);
    }
}

TEST_P(ModelContract, attributesMayChangeInsideACharacter) {
    AttributedString content("a\xF0\x9F", large);
    content.append({"\x98\x80 b", colored});
    view.textStorage()->setAttributedString(content);
    settle();
    EXPECT_EQ(view.textStorage()->attributedString(), content);
}

TEST_P(ModelContract, aStorageHoldsTextAndAttributesWhichSetStringKeeps) {
    for (const auto& [name, bytes] : nastyTexts()) {
        SCOPED_TRACE(name);
        for (const bool setsStringAlone : {false, true}) {
            view.textStorage()->setAttributedString({setsStringAlone ? "before" : bytes, large});
            if (setsStringAlone) {
                view.setString(bytes);
            }
            settle();
            EXPECT_TRUE(view.string() == bytes);
            EXPECT_TRUE(view.textStorage()->attributedString() == AttributedString(bytes, large));
        }
    }
}

TEST_P(ModelContract, aStorageReportsEachChangeOnce) {
    int changes = 0;
    const Subscription subscription = view.textStorage()->observe([&] { ++changes; });
    view.textStorage()->setAttributedString({"a\r", large});
    view.textStorage()->appendAttributedString({"\u2028", colored});
    view.setString("\r\n");
    settle();
    EXPECT_EQ(changes, 3);
}

TEST_P(ModelContract, anObserverMayChangeTheTextAgain) {
    const Subscription subscription = view.textStorage()->observe([&] {
        if (view.string() == "a\rb") {
            view.setString("ab");
        }
    });
    view.setString("a\rb");
    settle();
    EXPECT_EQ(view.string(), "ab");
}

TEST_P(ModelContract, aButtonHoldsItsState) {
    int changes = 0;
    const Subscription subscription = button.observe([&] { ++changes; });
    for (const ButtonState state : {ButtonState::on, ButtonState::on, ButtonState::off, ButtonState::on}) {
        button.setState(state);
        settle();
        EXPECT_EQ(button.state(), state);
    }
    EXPECT_EQ(changes, 3);
}

TEST_P(ModelContract, aViewWithoutStorageStaysEmpty) {
    view.removeTextStorage();
    view.setString("a");
    settle();
    EXPECT_EQ(view.string(), "");
}

INSTANTIATE_TEST_SUITE_P(
    Models,
    ModelContract,
    testing::Values(Front::none, Front::readOnly, Front::editable),
    [](const auto& front) {
        return front.param == Front::none       ? "bare"
               : front.param == Front::readOnly ? "shown"
                                                : "shownForEditing";
    });

} // namespace
} // namespace tolvane::platform
