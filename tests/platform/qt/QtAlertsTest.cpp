#include "platform/qt/QtAlerts.h"

#include "tests/platform/qt/DialogTest.h"

#include <QTimer>

#include <cstddef>
#include <memory>

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
};

TEST_F(QtAlertsTest, waitsForTheAnswer) {
    QtAlerts alerts;
    for (const int index : {0, 1, 2}) {
        QTimer::singleShot(0, [index] {
            ASSERT_NE(shownDialog<AlertBox>(), nullptr);
            EXPECT_EQ(shownDialog<AlertBox>()->windowModality(), Qt::ApplicationModal);
            answerAlert(index);
        });
        const std::size_t answer =
            alerts.runModal({"m", "", AlertStyle::informational, {"First", "Second", "Third"}});
        EXPECT_EQ(answer, static_cast<std::size_t>(index));
        EXPECT_EQ(shownDialog<AlertBox>(), nullptr);
    }
}

TEST_F(QtAlertsTest, presentsErrorsOneAfterTheOther) {
    QtAlerts alerts;
    alerts.presentError("one", "because");
    alerts.presentError("two", "");
    alerts.presentError("three", "");
    EXPECT_EQ(alertsOnTheScreen(), 1);
    EXPECT_EQ(shownMessage(), "one");
    EXPECT_EQ(shownDialog<AlertBox>()->informativeText(), "because");
    EXPECT_EQ(shownDialog<AlertBox>()->windowModality(), Qt::ApplicationModal);
    answerAlert(0);
    EXPECT_EQ(alertsOnTheScreen(), 1);
    EXPECT_EQ(shownMessage(), "two");
    shownDialog<AlertBox>()->close();
    EXPECT_EQ(shownMessage(), "three");
    answerAlert(0);
    EXPECT_EQ(alertsOnTheScreen(), 0);
    alerts.presentError("four", "");
    EXPECT_EQ(shownMessage(), "four");
}

TEST_F(QtAlertsTest, presentsDetailsWhereThereAreAny) {
    QtAlerts alerts;
    alerts.presentError("one", "because", "a: reason\nb: reason\n");
    alerts.presentError("two", "");
    EXPECT_EQ(shownDialog<AlertBox>()->detailedText(), "a: reason\nb: reason\n");
    answerAlert(0);
    EXPECT_EQ(shownMessage(), "two");
    EXPECT_EQ(shownDialog<AlertBox>()->detailedText(), "");
    answerAlert(0);
}

TEST_F(QtAlertsTest, takesItsErrorsAlong) {
    auto alerts = std::make_unique<QtAlerts>();
    alerts->presentError("one", "");
    alerts->presentError("two", "");
    alerts.reset();
    settle();
    EXPECT_EQ(alertsOnTheScreen(), 0);
}

} // namespace
} // namespace tolvane::tests
