#include "platform/qt/panels/QtAlerts.h"

#include "tests/platform/qt/panels/DialogTest.h"

#include <QTimer>

#include <cstddef>
#include <utility>
#include <vector>

namespace tolvane::tests {
namespace {

using platform::AlertBox;
using platform::AlertStyle;
using platform::QtAlerts;

class QtAlertsTest : public DialogTest {
protected:
    static int alertsOnTheScreen() {
        int count = 0;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            count += dynamic_cast<AlertBox*>(widget) != nullptr && widget->isVisible() ? 1 : 0;
        }
        return count;
    }

    static QString shownMessage() {
        const AlertBox* box = shownDialog<AlertBox>();
        return box == nullptr ? QString() : box->text();
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
    EXPECT_EQ(alertsOnTheScreen(), 1);
    EXPECT_EQ(shownMessage(), "one");
    EXPECT_EQ(theShownDialog<AlertBox>().informativeText(), "because");
    EXPECT_EQ(theShownDialog<AlertBox>().detailedText(), "a: reason\nb: reason\n");
    EXPECT_EQ(theShownDialog<AlertBox>().windowModality(), Qt::ApplicationModal);
    answerAlert(0);
    EXPECT_EQ(alertsOnTheScreen(), 1);
    EXPECT_EQ(shownMessage(), "two");
    EXPECT_EQ(theShownDialog<AlertBox>().detailedText(), "");
    shownDialog<AlertBox>()->close();
    EXPECT_EQ(shownMessage(), "three");
    answerAlert(0);
    EXPECT_EQ(alertsOnTheScreen(), 0);
    alerts.presentError("four", "");
    EXPECT_EQ(shownMessage(), "four");
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
    const auto show = [&](const std::vector<const char*>& messages) {
        for (const char* const message : messages) {
            alerts.runModal({message, "", AlertStyle::critical, {"OK"}});
        }
    };
    bool isAsked = false;
    bool isDone = false;
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, &user, [&] {
        if (shownDialog<AlertBox>() == nullptr) {
            return;
        }
        EXPECT_EQ(alertsOnTheScreen(), 1) << shownMessage().toStdString();
        order << shownMessage();
        if (!std::exchange(isAsked, true)) {
            alerts.inTurn([&] { show({"c", "d"}); });
            alerts.presentError("error", "");
            alerts.inTurn([&] {
                show({"e"});
                isDone = true;
            });
            EXPECT_TRUE(alerts.hasWaiting());
        }
        QTest::keyClick(shownDialog<AlertBox>(), Qt::Key_Return);
    });
    user.start(1);
    alerts.inTurn([&] { show({"a", "b"}); });
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
        EXPECT_EQ(shownMessage(), "first");
        answerAlert(0);
    });
    alerts.runModal({"first", "", AlertStyle::warning, {"OK"}});
    EXPECT_EQ(calls, 0) << "not before runModal has returned";
    EXPECT_TRUE(eventually([&] { return calls == 1; }));
    EXPECT_TRUE(eventually([] { return shownMessage() == "error"; }));
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
                answers.push_back(alerts.runModal({"m", "", AlertStyle::informational, {"First", "Second"}}));
            }
        });
    });
    QTimer end;
    QObject::connect(&end, &QTimer::timeout, &end, [] {
        if (shownDialog<AlertBox>() != nullptr) {
            QCoreApplication::quit();
        }
    });
    end.start(1);
    QApplication::exec();
    end.stop();
    EXPECT_EQ(answers, (std::vector<std::size_t>{1, 1, 1}));
    EXPECT_EQ(alertsOnTheScreen(), 0);
    // If the program goes on after all, so do alerts.
    QTimer::singleShot(0, [] { answerAlert(0); });
    EXPECT_EQ(alerts.runModal({"m", "", AlertStyle::informational, {"First", "Second"}}), 0U);
}

TEST_F(QtAlertsTest, losesNoFunctionWhoseTurnComesWhenTheProgramEnds) {
    int calls = 0;
    int answers = 0;
    QTimer::singleShot(0, [&] {
        QCoreApplication::exit();
        alerts.inTurn([&] {
            ++calls;
            for (int i = 0; i < 2; ++i) {
                alerts.runModal({"m", "", AlertStyle::critical, {"OK"}});
            }
        });
    });
    QApplication::exec();
    EXPECT_EQ(calls, 1);
    EXPECT_TRUE(alerts.hasWaiting());
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, &user, [&] {
        if (shownDialog<AlertBox>() != nullptr) {
            ++answers;
            QTest::keyClick(shownDialog<AlertBox>(), Qt::Key_Return);
        }
    });
    user.start(1);
    EXPECT_TRUE(eventually([&] { return answers == 2; }));
    EXPECT_TRUE(eventually([] { return alertsOnTheScreen() == 0; }));
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
    EXPECT_EQ(alertsOnTheScreen(), 0);
}

} // namespace
} // namespace tolvane::tests
