#include "platform/model/Controls.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace tolvane::platform {
namespace {

const TextAttributes coloredText{Color::textColor, {}};

TEST(Button, isOffUntilItIsSetAndNotifiesObserversWhenItsStateChanges) {
    Button button;
    EXPECT_EQ(button.state(), ButtonState::off);
    EXPECT_EQ(static_cast<int>(ButtonState::off), 0) << "as the platform numbers its states";
    EXPECT_EQ(static_cast<int>(ButtonState::on), 1);
    std::string seen;
    const Subscription subscription =
        button.observe([&] { seen += button.state() == ButtonState::on ? '+' : '-'; });
    button.setState(ButtonState::off);
    button.setState(ButtonState::on);
    button.setState(ButtonState::on);
    button.setState(ButtonState::off);
    EXPECT_EQ(seen, "+-");
}

TEST(Button, mayBeDestroyedByAnObserver) {
    auto button = std::make_unique<Button>();
    const Subscription subscription = button->observe([&] { button.reset(); });
    button->setState(ButtonState::on);
    EXPECT_EQ(button, nullptr);
}

TEST(TextField, holdsTextToTheByte) {
    TextField field;
    EXPECT_EQ(field.stringValue(), "");
    for (const std::string& text :
         {std::string("a\r\n\0b\u00A0\xFF", 8), std::string(40'000, 'x'), std::string()}) {
        field.setStringValue(text);
        EXPECT_EQ(field.stringValue(), text);
    }
}

TEST(TextField, mayBeDestroyedByAnObserver) {
    auto field = std::make_unique<TextField>();
    const Subscription subscription = field->observe([&] { field.reset(); });
    field->setStringValue("a");
    EXPECT_EQ(field, nullptr);
}

TEST(TextField, notifiesOfEachNewTextAndOfSelectionsApart) {
    TextField field;
    std::string seen;
    int selections = 0;
    const Subscription change = field.observe([&] { seen += field.stringValue() + ";"; });
    const Subscription selection = field.observeSelection([&] { ++selections; });
    field.setStringValue("a");
    field.setStringValue("a");
    EXPECT_EQ(selections, 0);
    field.selectText(nullptr);
    field.selectText(&field);
    EXPECT_EQ(selections, 2);
    EXPECT_EQ(seen, "a;a;");
    EXPECT_EQ(field.stringValue(), "a");
}

TEST(TextStorage, notifiesObserversOnceForEachChange) {
    TextStorage storage;
    EXPECT_EQ(storage.string(), "");
    std::string seen;
    const Subscription subscription = storage.observe([&] { seen += storage.string() + ";"; });
    storage.setAttributedString({"a\r\n\u00A0", {}});
    storage.appendAttributedString({"b", coloredText});
    storage.appendAttributedString({});
    EXPECT_EQ(seen, "a\r\n\u00A0;a\r\n\u00A0b;a\r\n\u00A0b;");
    EXPECT_EQ(storage.attributedString().runs().size(), 2U);
    storage.setAttributedString({"new", {}});
    EXPECT_EQ(storage.attributedString(), AttributedString("new", {})) << "nothing of the old text is left";
}

TEST(TextStorage, mayBeRemovedByAnObserver) {
    TextView view;
    Subscription subscription = view.textStorage()->observe([&] { view.removeTextStorage(); });
    view.textStorage()->setAttributedString({"a", {}});
    EXPECT_EQ(view.textStorage(), nullptr);

    TextView other;
    subscription = other.textStorage()->observe([&] { other.removeTextStorage(); });
    other.textStorage()->appendAttributedString({"a", {}});
    EXPECT_EQ(other.textStorage(), nullptr);
}

TEST(TextView, hasAnEmptyTextUntilItsStorageIsFilledAndAfterItIsRemoved) {
    TextView view;
    ASSERT_NE(view.textStorage(), nullptr);
    EXPECT_EQ(view.textStorage()->attributedString(), AttributedString());
    EXPECT_EQ(view.string(), "");
    view.textStorage()->setAttributedString({"a\nb", coloredText});
    view.textStorage()->appendAttributedString({"c", {}});
    EXPECT_EQ(view.string(), "a\nbc");
    for (int i = 0; i < 2; ++i) {
        view.removeTextStorage();
        EXPECT_EQ(view.textStorage(), nullptr);
        EXPECT_EQ(view.string(), "");
        view.setString("lost");
    }
    EXPECT_EQ(view.string(), "");
}

TEST(TextView, keepsTheFirstAttributesWhenItsTextIsReplaced) {
    TextView view;
    view.setString("plain");
    EXPECT_EQ(view.textStorage()->attributedString(), AttributedString("plain", {}));
    view.textStorage()->setAttributedString({"old", coloredText});
    view.textStorage()->appendAttributedString({"rest", {}});
    view.setString("new");
    EXPECT_EQ(view.textStorage()->attributedString(), AttributedString("new", coloredText));
}

} // namespace
} // namespace tolvane::platform
