#include "platform/qt/panels/AlertTurns.h"

#include "tests/platform/qt/panels/DialogTest.h"

#include <QTimer>

#include <functional>
#include <string>
#include <utility>

namespace tolvane::tests {
namespace {

using platform::AlertBox;
using platform::AlertStyle;
using platform::AlertTurns;
using platform::QtAlerts;

/// Runs work when it is told to.
class HeldQueue final : public platform::MainQueue {
public:
    void async(std::function<void()> work) override { held = std::move(work); }
    std::function<void()> held;
};

class AlertTurnsTest : public DialogTest {
protected:
    void show(const std::string& message) { alerts.runModal({message, "", AlertStyle::critical, {"OK"}}); }

    static QString message() {
        const auto* const box = shownDialog<AlertBox>();
        return box == nullptr ? QString() : box->text();
    }

    QtAlerts alerts;
    HeldQueue queue;
    AlertTurns turns{queue, alerts};
};

TEST_F(AlertTurnsTest, runWorkAtOnceWhenNoAlertIsShown) {
    int calls = 0;
    turns.async([&] { ++calls; });
    EXPECT_EQ(calls, 0) << "the main queue decides when";
    queue.held();
    EXPECT_EQ(calls, 1);
}

TEST_F(AlertTurnsTest, doNotComeBetweenTheAlertsOfAFunction) {
    QStringList order;
    bool isDone = false;
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, &user, [&] {
        if (shownDialog<AlertBox>() == nullptr) {
            return;
        }
        order << message();
        if (order.size() == 1) {
            turns.async([&] {
                show("update");
                isDone = true;
            });
            queue.held();
            EXPECT_TRUE(alerts.hasOptional());
            EXPECT_FALSE(alerts.hasWaiting());
        }
        QTest::keyClick(shownDialog<AlertBox>(), Qt::Key_Return);
    });
    user.start(1);
    alerts.inTurn([&] {
        show("one");
        show("two");
        show("three");
    });
    EXPECT_TRUE(eventually([&] { return isDone; }));
    EXPECT_EQ(order, QStringList({"one", "two", "three", "update"}));
    EXPECT_FALSE(alerts.hasOptional());
}

TEST_F(AlertTurnsTest, areNotTakenAgainWhenTheProgramEnds) {
    int calls = 0;
    QTimer::singleShot(0, [&] {
        turns.async([&] {
            ++calls;
            QCoreApplication::quit();
            show("update");
        });
        queue.held();
    });
    QApplication::exec();
    EXPECT_FALSE(alerts.hasWaiting());
    EXPECT_FALSE(alerts.hasOptional());
    settle();
    EXPECT_EQ(calls, 1);
}

} // namespace
} // namespace tolvane::tests
