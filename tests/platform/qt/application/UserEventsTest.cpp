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

TEST_F(UserEventsTest, makeNoIdBeforeTheFirst) {
    platform::UserEvents events(true);
    EXPECT_EQ(events.startupId(), "");
}

TEST_F(UserEventsTest, endsAnIdWithTheTimeOfTheLatest) {
    platform::UserEvents events(true);
    click(4294967295);
    EXPECT_THAT(events.startupId(), EndsWith("_TIME4294967295"));
    QKeyEvent key(QEvent::ShortcutOverride, Qt::Key_R, Qt::ControlModifier);
    key.setTimestamp(17);
    QCoreApplication::sendEvent(&button, &key);
    EXPECT_THAT(events.startupId(), EndsWith("_TIME17"));
}

TEST_F(UserEventsTest, makeEachIdOnce) {
    platform::UserEvents events(true);
    click(17);
    const std::string first = events.startupId();
    EXPECT_NE(events.startupId(), first);
}

TEST_F(UserEventsTest, passOverThoseThatTheProgramMadeItself) {
    platform::UserEvents events(true);
    click(17);
    click(0);
    EXPECT_THAT(events.startupId(), EndsWith("_TIME17"));
}

TEST_F(UserEventsTest, makeNoIdWithoutAnXServer) {
    platform::UserEvents events;
    click(17);
    EXPECT_EQ(events.startupId(), "");
}

} // namespace
} // namespace tolvane::tests
