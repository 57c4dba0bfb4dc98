#include "platform/linux/types/ComposedText.h"

#include <gtest/gtest.h>

namespace tolvane::platform {
namespace {

TEST(ComposedText, isTheSameForEveryFormOfAName) {
    EXPECT_EQ(composedText("cafe\u0301"), "caf\u00E9");
    EXPECT_EQ(composedText("caf\u00E9"), "caf\u00E9");
    EXPECT_EQ(composedText("\u1112\u1161\u11AB"), "\uD55C");
    EXPECT_EQ(composedText("plain"), "plain");
    EXPECT_EQ(composedText(""), "");
}

TEST(ComposedText, isOfUtf8Alone) {
    EXPECT_EQ(composedText("caf\xE9"), std::nullopt);
}

} // namespace
} // namespace tolvane::platform
