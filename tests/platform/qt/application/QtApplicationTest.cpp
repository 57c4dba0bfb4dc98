#include "platform/qt/application/QtApplication.h"

#include "platform/model/Window.h"
#include "platform/qt/application/MakeChild.h"
#include "platform/qt/windows/MainWindow.h"
#include "tests/platform/qt/Shell.h"

#include <QDialog>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <QtGlobal>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>

namespace tolvane::tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class QtApplicationTest : public testing::Test {
protected:
    QtApplicationTest() { window.show(); }

    /// Runs the event loop; true if the program ends by itself.
    bool ends() {
        bool gaveUp = false;
        QTimer limit;
        limit.callOnTimeout([&] {
            gaveUp = true;
            QCoreApplication::exit();
        });
        limit.start(20'000);
        QApplication::exec();
        return !gaveUp;
    }

    static void onceRunning(const std::function<void()>& step) { QTimer::singleShot(0, qApp, step); }

    /// Runs the step once nothing is pending.
    static void afterTurns(const std::function<void()>& step) {
        auto& turns = platform::makeChild<QTimer>(qApp);
        QObject::connect(&turns, &QTimer::timeout, &turns, [&turns, step, left = 3]() mutable {
            if (--left == 0) {
                turns.stop();
                turns.deleteLater();
                step();
            }
        });
        turns.start(0);
    }

    Shell shell;
    QMainWindow window;
};

TEST_F(QtApplicationTest, asksItsTargetsInOrderAndItselfLast) {
    Recorder first{{"a:"}};
    Recorder second{{"a:", "b:", "terminate:"}};
    shell.application.addTarget(first);
    shell.application.addTarget(second);
    EXPECT_EQ(shell.application.responderTo("a:"), &first);
    EXPECT_EQ(shell.application.responderTo("b:"), &second);
    EXPECT_EQ(shell.application.responderTo("terminate:"), &second);
    EXPECT_EQ(shell.application.responderTo("clearRecentDocuments:"), &shell.application);
    EXPECT_EQ(shell.application.responderTo("c:"), nullptr);
}

TEST_F(QtApplicationTest, opensFilesOnceThereIsAnOpener) {
    shell.application.setFileOpener({});
    shell.application.openFiles({platform::URL::fileURLWithPath("/a")});
    EXPECT_THAT(shell.opened, IsEmpty());
    int calls = 0;
    shell.application.setFileOpener([&](const auto& urls) {
        ++calls;
        shell.opened = urls;
    });
    shell.application.openFiles({});
    EXPECT_EQ(calls, 0);
    shell.application.openFiles({platform::URL::fileURLWithPath("/a")});
    EXPECT_THAT(shell.opened, ElementsAre(platform::URL::fileURLWithPath("/a")));
}

TEST_F(QtApplicationTest, knowsTheWidgetOfAWindow) {
    const platform::Window model;
    EXPECT_EQ(shell.application.widgetOf(model), nullptr);
    shell.application.setWidget(model, &window);
    EXPECT_EQ(shell.application.widgetOf(model), &window);
    shell.application.setWidget(model, nullptr);
    EXPECT_EQ(shell.application.widgetOf(model), nullptr);
}

TEST_F(QtApplicationTest, keepsTheServicesProviderNoLongerThanItsOwner) {
    class Provider final : public platform::ServicesProvider {
        void handleServicesWithPboard(
            const platform::ServicesPasteboard&, std::string_view, platform::Error*) override {}
    };
    auto provider = std::make_shared<Provider>();
    shell.application.setServicesProvider(provider);
    EXPECT_EQ(shell.application.servicesProvider(), provider);
    provider.reset();
    EXPECT_EQ(shell.application.servicesProvider(), nullptr);
}

TEST_F(QtApplicationTest, endsWhenTheLastWindowOrPanelIsHidden) {
    QMainWindow second;
    QDialog panel;
    for (QWidget* const last : std::initializer_list<QWidget*>{&second, &panel}) {
        window.show();
        last->show();
        bool outlivedTheFirst = false;
        onceRunning([&] {
            window.hide();
            afterTurns([&] {
                outlivedTheFirst = last->isVisible();
                last->hide();
            });
        });
        EXPECT_TRUE(ends()) << last->metaObject()->className();
        EXPECT_TRUE(outlivedTheFirst) << last->metaObject()->className();
    }
}

TEST_F(QtApplicationTest, runsUntilItExits) {
    onceRunning([] { QCoreApplication::exit(3); });
    onceRunning([&] { window.hide(); });
    EXPECT_EQ(shell.application.run([] { return false; }), 3);
}

TEST_F(QtApplicationTest, doesWhatItWasAskedForBeforeItEnds) {
    bool isWorkLeft = false;
    int done = 0;
    onceRunning([&] {
        isWorkLeft = true;
        window.hide();
        QCoreApplication::quit();
        onceRunning([&] {
            isWorkLeft = false;
            ++done;
        });
    });
    shell.application.run([&] { return isWorkLeft; });
    EXPECT_EQ(done, 1);
}

TEST_F(QtApplicationTest, goesOnWithoutAWindowWhileItIsAskedForSomething) {
    bool isWorkLeft = true;
    bool wasQuitting = false;
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, &window, [&] { wasQuitting = isWorkLeft; });
    onceRunning([&] {
        window.hide();
        afterTurns([&] { isWorkLeft = false; });
    });
    shell.application.run([&] { return isWorkLeft; });
    EXPECT_FALSE(isWorkLeft);
    EXPECT_FALSE(wasQuitting);
}

TEST_F(QtApplicationTest, goesOnWhileItIsAwaitedAndTakesNoTimeOfTheProcessor) {
    bool isAwaited = true;
    int asked = 0;
    shell.application.setAwaited([&] {
        ++asked;
        return isAwaited;
    });
    onceRunning([this] { window.hide(); });
    QTimer::singleShot(500, qApp, [&isAwaited] { isAwaited = false; });
    shell.application.run([] { return false; });
    EXPECT_FALSE(isAwaited);
    EXPECT_LT(asked, 20);
}

TEST_F(QtApplicationTest, endsOnCommandWhileItIsAwaited) {
    bool isAwaited = true;
    shell.application.setAwaited([&isAwaited] { return isAwaited; });
    onceRunning([] { QCoreApplication::quit(); });
    QTimer limit;
    limit.callOnTimeout([&isAwaited] { isAwaited = false; });
    limit.start(20'000);
    shell.application.run([] { return false; });
    EXPECT_TRUE(isAwaited) << "it went on until it was given up";
}

TEST_F(QtApplicationTest, goesOnWithAWindowThatIsShownWhenItEnds) {
    QMainWindow late;
    bool wasShown = false;
    onceRunning([&] {
        QCoreApplication::quit();
        late.show();
        afterTurns([&] {
            wasShown = late.isVisible();
            late.hide();
        });
    });
    shell.application.run([] { return false; });
    EXPECT_TRUE(wasShown);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(QtApplicationTest, endsWhenOnlyAWindowIsLeftThatDoesNotKeepIt) {
    QWidget preview;
    preview.setAttribute(Qt::WA_QuitOnClose, false);
    preview.show();
    onceRunning([&] { window.hide(); });
    EXPECT_TRUE(ends());
}

TEST_F(QtApplicationTest, goesOnWhileAWindowIsOnlyMinimised) {
    QMainWindow other;
    other.show();
    bool restored = false;
    onceRunning([&] {
        window.showMinimized();
        other.hide();
        afterTurns([&] {
            restored = true;
            window.hide();
        });
    });
    EXPECT_TRUE(ends());
    EXPECT_TRUE(restored);
}

TEST_F(QtApplicationTest, endsOnCommandWithWindowsOpen) {
    platform::MainWindow first(shell.application, "Test");
    platform::MainWindow second(shell.application, "Test");
    for (platform::MainWindow* const shown : {&first, &second}) {
        shown->setCloseHandler([shown] { shown->hide(); });
        shown->show();
    }
    onceRunning([&] { shell.application.actionForSelector("terminate:")(nullptr); });
    EXPECT_TRUE(ends());
    EXPECT_FALSE(first.isVisible());
    EXPECT_FALSE(second.isVisible());
}

TEST_F(QtApplicationTest, showsItsVersion) {
    shell.application.actionForSelector("orderFrontStandardAboutPanel:")(nullptr);
    QMessageBox* about = nullptr;
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        if (auto* const box = qobject_cast<QMessageBox*>(widget); box != nullptr && box->isVisible()) {
            about = box;
        }
    }
    ASSERT_NE(about, nullptr);
    EXPECT_THAT(about->text().toStdString(), testing::HasSubstr("1.2.3"));
    about->close();
}

TEST_F(QtApplicationTest, clearsTheRecentDocumentsOnCommand) {
    EXPECT_FALSE(shell.application.isActionEnabled("clearRecentDocuments:"));
    shell.recentDocuments.add(platform::URL::fileURLWithPath("/a"));
    EXPECT_TRUE(shell.application.isActionEnabled("clearRecentDocuments:"));
    shell.application.actionForSelector("clearRecentDocuments:")(nullptr);
    EXPECT_THAT(shell.recentDocuments.documents(), IsEmpty());
}

TEST(DisplayCheckDeathTest, endsWithASentenceWhenQtGivesUp) {
    EXPECT_EXIT(
        {
            const platform::DisplayCheck check;
            qWarning("a long story");
            qFatal("no platform plugin");
        },
        testing::ExitedWithCode(1), "^tolvane: there is no display[^\n]*tolvane-cli report FILE[^\n]*\n$");
}

TEST(DisplayCheckDeathTest, leavesLaterMessagesAsTheyWere) {
    EXPECT_DEATH(
        {
            { const platform::DisplayCheck check; }
            qFatal("something else");
        },
        "something else");
}

} // namespace
} // namespace tolvane::tests
