#include "platform/qt/application/QtApplication.h"
#include "tests/platform/qt/Shell.h"

#include <QElapsedTimer>
#include <QMainWindow>
#include <QTimer>
#include <gtest/gtest.h>

namespace tolvane::tests {
namespace {

class Awaited : public testing::Test {
protected:
    Shell shell;
    QMainWindow window;
    bool isAwaited = true;
};

TEST_F(Awaited, keepsTheProgramFromEndingByItself) {
    shell.application.setAwaited([this] { return isAwaited; });
    window.show();
    QTimer::singleShot(0, qApp, [this] { window.hide(); });
    bool wentOn = false;
    QTimer::singleShot(300, qApp, [&] {
        wentOn = true;
        isAwaited = false;
    });
    shell.application.run([] { return false; });
    EXPECT_TRUE(wentOn);
}

TEST_F(Awaited, takesNoTimeOfTheProcessor) {
    int asked = 0;
    shell.application.setAwaited([&] {
        ++asked;
        return isAwaited;
    });
    window.show();
    QTimer::singleShot(0, qApp, [this] { window.hide(); });
    QTimer::singleShot(500, qApp, [this] { isAwaited = false; });
    shell.application.run([] { return false; });
    EXPECT_LT(asked, 20);
}

TEST_F(Awaited, doesNotKeepAProgramThatIsToldToEnd) {
    shell.application.setAwaited([this] { return isAwaited; });
    QTimer::singleShot(0, qApp, [] { QCoreApplication::quit(); });
    QTimer limit;
    limit.setSingleShot(true);
    QObject::connect(&limit, &QTimer::timeout, &limit, [this] { isAwaited = false; });
    limit.start(20'000);
    shell.application.run([] { return false; });
    EXPECT_TRUE(isAwaited) << "it went on until it was given up";
}

} // namespace
} // namespace tolvane::tests
