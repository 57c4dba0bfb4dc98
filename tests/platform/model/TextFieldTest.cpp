#include "platform/model/TextField.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace tolvane::platform {
namespace {

TEST(TextField, holdsTextToTheByte) {
    TextField field;
    EXPECT_EQ(field.stringValue(), "");
    for (const std::string& text :
         {std::string("a\r\n\0b\u00A0\xFF", 8), std::string(40'000, 'x'), std::string()}) {
        field.setStringValue(text);
        EXPECT_EQ(field.stringValue(), text);
    }
}

TEST(TextField, notifiesObserversOfEachNewText) {
    TextField field;
    std::string seen;
    const Subscription subscription = field.observe([&] { seen += field.stringValue() + ";"; });
    field.setStringValue("a");
    field.setStringValue("a");
    EXPECT_EQ(seen, "a;a;");
}

TEST(TextField, mayBeDestroyedByAnObserver) {
    auto field = std::make_unique<TextField>();
    const Subscription subscription = field->observe([&] { field.reset(); });
    field->setStringValue("a");
    EXPECT_EQ(field, nullptr);
}

TEST(TextField, notifiesOfSelectionsApartFromItsText) {
    TextField field;
    field.setStringValue("a");
    int selections = 0;
    int changes = 0;
    const Subscription selection = field.observeSelection([&] { ++selections; });
    const Subscription change = field.observe([&] { ++changes; });
    field.selectText(nullptr);
    field.selectText(&field);
    EXPECT_EQ(selections, 2);
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(field.stringValue(), "a");
    field.setStringValue("b");
    EXPECT_EQ(selections, 2);
}

} // namespace
} // namespace tolvane::platform
