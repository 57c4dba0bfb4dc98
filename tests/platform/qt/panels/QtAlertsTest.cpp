#include "platform/qt/panels/QtAlerts.h"

#include "platform/qt/panels/AlertTurns.h"
#include "tests/platform/qt/panels/DialogTest.h"

#include <QTimer>

#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

namespace tolvane::tests {
namespace {

using platform::AlertBox;
using platform::AlertStyle;
using platform::QtAlerts;

/// Does something with each alert that comes on the screen.
class User {
public:
    explicit User(std::function<void(AlertBox&)> act) {
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [act = std::move(act)] {
            if (auto* const box = shownDialog<AlertBox>()) {
                act(*box);
            }
        });
        timer_.start(1);
    }

private:
    QTimer timer_;
};

class QtAlertsTest : public DialogTest {
protected:
    static QStringList shownMessages() {
        QStringList messages;
        for (const QWidget* const widget : QApplication::topLevelWidgets()) {
            const auto* const box = dynamic_cast<const AlertBox*>(widget);
            if (box != nullptr && box->isVisible()) {
                messages << box->text();
            }
        }
        return messages;
    }

    std::size_t show(const std::string& message) {
        return alerts.runModal({message, "", AlertStyle::critical, {"First", "Second"}});
    }

    QtAlerts alerts;
};

TEST_F(QtAlertsTest, waitsForTheAnswer) {
    for (const int index : {0, 1, 2}) {
        QTimer::singleShot(0, [index] {
            EXPECT_EQ(theShownDialog<AlertBox>().windowModality(), Qt::ApplicationModal);
            answerAlert(index);
        });
        const std::size_t answer =
            alerts.runModal({"m", "", AlertStyle::informational, {"First", "Second", "Third"}});
        EXPECT_EQ(answer, static_cast<std::size_t>(index));
        EXPECT_EQ(shownDialog<AlertBox>(), nullptr);
    }
}

TEST_F(QtAlertsTest, presentsErrorsOneAfterTheOther) {
    alerts.presentError("one", "because", "a: reason\nb: reason\n");
    alerts.presentError("two", "");
    alerts.presentError("three", "");
    EXPECT_EQ(shownMessages(), QStringList{"one"});
    EXPECT_EQ(theShownDialog<AlertBox>().informativeText(), "because");
    EXPECT_EQ(theShownDialog<AlertBox>().detailedText(), "a: reason\nb: reason\n");
    EXPECT_EQ(theShownDialog<AlertBox>().windowModality(), Qt::ApplicationModal);
    answerAlert(0);
    EXPECT_EQ(shownMessages(), QStringList{"two"});
    EXPECT_EQ(theShownDialog<AlertBox>().detailedText(), "");
    shownDialog<AlertBox>()->close();
    EXPECT_EQ(shownMessages(), QStringList{"three"});
    answerAlert(0);
    EXPECT_EQ(shownMessages(), QStringList());
    alerts.presentError("four", "");
    EXPECT_EQ(shownMessages(), QStringList{"four"});
}

TEST_F(QtAlertsTest, callsAFunctionAtOnceWhenNothingIsShown) {
    int calls = 0;
    alerts.inTurn([&] { ++calls; });
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(alerts.hasWaiting());
    alerts.inTurn([&] { ++calls; });
    EXPECT_TRUE(eventually([&] { return calls == 2; }));
}

TEST_F(QtAlertsTest, keepsTheAlertsOfTwoFunctionsApart) {
    QStringList order;
    bool isAsked = false;
    bool isDone = false;
    const User user([&](AlertBox& box) {
        order << shownMessages();
        if (!std::exchange(isAsked, true)) {
            alerts.inTurn([&] {
                show("c");
                show("d");
            });
            alerts.presentError("error", "");
            alerts.inTurn([&] {
                show("e");
                isDone = true;
            });
            EXPECT_TRUE(alerts.hasWaiting());
        }
        QTest::keyClick(&box, Qt::Key_Return);
    });
    alerts.inTurn([&] {
        show("a");
        show("b");
    });
    EXPECT_TRUE(eventually([&] { return isDone; }));
    EXPECT_EQ(order, QStringList({"a", "b", "c", "d", "error", "e"}));
    EXPECT_FALSE(alerts.hasWaiting());
}

TEST_F(QtAlertsTest, hasFunctionsWaitForAnyAlert) {
    int calls = 0;
    QTimer::singleShot(0, [&] {
        alerts.inTurn([&] { ++calls; });
        alerts.presentError("error", "");
        settle();
        EXPECT_EQ(calls, 0);
        EXPECT_EQ(shownMessages(), QStringList{"first"});
        answerAlert(0);
    });
    show("first");
    EXPECT_EQ(calls, 0) << "not before runModal has returned";
    EXPECT_TRUE(eventually([&] { return calls == 1; }));
    EXPECT_TRUE(eventually([] { return shownMessages() == QStringList{"error"}; }));
    alerts.inTurn([&] { ++calls; });
    settle();
    EXPECT_EQ(calls, 1);
    answerAlert(0);
    EXPECT_TRUE(eventually([&] { return calls == 2; }));
}

TEST_F(QtAlertsTest, answersWhatFollowsWhenTheProgramEnds) {
    std::vector<std::size_t> answers;
    QTimer::singleShot(0, [&] {
        alerts.inTurn([&] {
            for (int i = 0; i < 3; ++i) {
                answers.push_back(show("m"));
            }
        });
    });
    {
        const User user([](const AlertBox& /*box*/) { QCoreApplication::quit(); });
        QApplication::exec();
    }
    EXPECT_EQ(answers, (std::vector<std::size_t>{1, 1, 1}));
    EXPECT_EQ(shownMessages(), QStringList());
    // If the program goes on after all, so do alerts.
    QTimer::singleShot(0, [] { answerAlert(0); });
    EXPECT_EQ(show("m"), 0U);
}

TEST_F(QtAlertsTest, losesNoFunctionWhoseTurnComesWhenTheProgramEnds) {
    int calls = 0;
    int answers = 0;
    QTimer::singleShot(0, [&] {
        QCoreApplication::exit();
        alerts.inTurn([&] {
            ++calls;
            show("one");
            show("two");
        });
    });
    QApplication::exec();
    EXPECT_EQ(calls, 1);
    EXPECT_TRUE(alerts.hasWaiting());
    const User user([&](AlertBox& box) {
        ++answers;
        QTest::keyClick(&box, Qt::Key_Return);
    });
    EXPECT_TRUE(eventually([&] { return answers == 2; }));
    EXPECT_TRUE(eventually([] { return shownMessages().empty(); }));
    EXPECT_EQ(calls, 2);
    EXPECT_FALSE(alerts.hasWaiting());
}

TEST_F(QtAlertsTest, takesItsErrorsAlong) {
    {
        QtAlerts shortLived;
        shortLived.presentError("one", "");
        shortLived.presentError("two", "");
    }
    settle();
    EXPECT_EQ(shownMessages(), QStringList());
}

/// Runs work when the test says so.
class HeldQueue final : public platform::MainQueue {
public:
    void async(std::function<void()> work) override { held = std::move(work); }
    std::function<void()> held;
};

class AlertTurnsTest : public QtAlertsTest {
protected:
    HeldQueue queue;
    platform::AlertTurns turns{queue, alerts};
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
    const User user([&](AlertBox& box) {
        order << shownMessages();
        if (order.size() == 1) {
            turns.async([&] {
                show("update");
                isDone = true;
            });
            queue.held();
            EXPECT_TRUE(alerts.hasOptional());
            EXPECT_FALSE(alerts.hasWaiting());
        }
        QTest::keyClick(&box, Qt::Key_Return);
    });
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
