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
class ShownWindow {
public:
    ShownWindow(TextField& field, TextView& view, Button& button, bool isReadOnly)
        : fieldWidget_(makeChild<TextFieldWidget>(&window_))
        , viewWidget_(makeChild<TextViewWidget>(&window_))
        , buttonWidget_(makeChild<QCheckBox>(&window_)) {
        auto& layout = makeChild<QVBoxLayout>(&window_);
        layout.addWidget(&fieldWidget_);
        layout.addWidget(&viewWidget_);
        layout.addWidget(&buttonWidget_);
        viewWidget_.setReadOnly(isReadOnly);
        fieldMirror_ = std::make_unique<TextFieldMirror>(field, fieldWidget_);
        viewMirror_ = std::make_unique<TextViewMirror>(view, viewWidget_);
        buttonMirror_ = std::make_unique<ButtonMirror>(button, buttonWidget_);
        window_.show();
    }

private:
    QWidget window_;
    TextFieldWidget& fieldWidget_;
    TextViewWidget& viewWidget_;
    QCheckBox& buttonWidget_;
    std::unique_ptr<TextFieldMirror> fieldMirror_;
    std::unique_ptr<TextViewMirror> viewMirror_;
    std::unique_ptr<ButtonMirror> buttonMirror_;
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

    /// Lets widgets draw and do what they put off.
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

TEST_P(ModelContract, aFieldTellsOfEachChangeOnce) {
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
    content.append(
        {"\x98\x80"
         "b",
         colored});
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

TEST_P(ModelContract, aStorageTellsOfEachChangeOnce) {
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

std::string frontName(const testing::TestParamInfo<Front>& information) {
    switch (information.param) {
    case Front::none:
        return "bare";
    case Front::readOnly:
        return "shown";
    case Front::editable:
        break;
    }
    return "shownForEditing";
}

INSTANTIATE_TEST_SUITE_P(
    Models, ModelContract, testing::Values(Front::none, Front::readOnly, Front::editable), frontName);

} // namespace
} // namespace tolvane::platform
