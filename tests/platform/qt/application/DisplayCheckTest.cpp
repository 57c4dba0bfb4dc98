#include "platform/qt/application/QtApplication.h"

#include <QtGlobal>
#include <gtest/gtest.h>

namespace tolvane::platform {
namespace {

TEST(DisplayCheckDeathTest, endsWithASentenceWhenQtGivesUp) {
    EXPECT_EXIT(
        {
            const DisplayCheck check;
            qWarning("a long story");
            qFatal("no platform plugin");
        },
        testing::ExitedWithCode(1), "^tolvane: there is no display[^\n]*tolvane-cli report FILE[^\n]*\n$");
}

TEST(DisplayCheckDeathTest, leavesLaterMessagesAsTheyWere) {
    EXPECT_DEATH(
        {
            { const DisplayCheck check; }
            qFatal("something else");
        },
        "something else");
}

} // namespace
} // namespace tolvane::platform
