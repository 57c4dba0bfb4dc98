#include "platform/qt/application/UserEvents.h"

#include "tests/platform/qt/QtTest.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPushButton>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tolvane::tests {
namespace {

using testing::EndsWith;

class UserEventsTest : public testing::Test {
protected:
    UserEventsTest() { application(); }

    void click(quint64 time) {
        QMouseEvent press(
            QEvent::MouseButtonPress, QPointF(1, 1), QPointF(1, 1), Qt::LeftButton, Qt::LeftButton, {});
        press.setTimestamp(time);
        QCoreApplication::sendEvent(&button, &press);
    }

    QPushButton button;
};

TEST_F(UserEventsTest, makeIdsThatEndWithTheTimeOfTheLatest) {
    platform::UserEvents events(true);
    EXPECT_EQ(events.startupId(), "") << "there was none";
    click(4294967295);
    EXPECT_THAT(events.startupId(), EndsWith("_TIME4294967295"));
    QKeyEvent key(QEvent::ShortcutOverride, Qt::Key_R, Qt::ControlModifier);
    key.setTimestamp(17);
    QCoreApplication::sendEvent(&button, &key);
    const std::string first = events.startupId();
    EXPECT_THAT(first, EndsWith("_TIME17"));
    click(0);
    const std::string second = events.startupId();
    EXPECT_THAT(second, EndsWith("_TIME17")) << "the program made the latest itself";
    EXPECT_NE(second, first);
}

TEST_F(UserEventsTest, makeNoIdWithoutAnXServer) {
    platform::UserEvents events;
    click(17);
    EXPECT_EQ(events.startupId(), "");
}

} // namespace
} // namespace tolvane::tests
