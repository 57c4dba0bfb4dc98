#include "platform/qt/windows/MainWindow.h"
#include "tests/platform/qt/Shell.h"

#include <QScreen>
#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace tolvane::tests {
namespace {

class WindowOnScreen : public testing::Test {
protected:
    std::unique_ptr<platform::MainWindow> open(QSize size) {
        auto window = std::make_unique<platform::MainWindow>(shell.application, "Kind");
        window->resize(size);
        window->formIsComplete();
        window->show();
        return window;
    }

    static QRect area() { return QGuiApplication::primaryScreen()->availableGeometry(); }

    Shell shell;
};

TEST_F(WindowOnScreen, isNoLargerThanTheScreen) {
    const auto window = open({5000, 3000});
    EXPECT_TRUE(area().contains(window->frameGeometry()));
    EXPECT_LT(window->height(), area().height());
}

TEST_F(WindowOnScreen, isNoLargerThanTheScreenWhenItWasRememberedOnALargerOne) {
    {
        const auto window = open({500, 400});
        window->resize(5000, 3000);
        window->hide();
    }
    const auto window = open({500, 400});
    EXPECT_TRUE(area().contains(window->frameGeometry()));
}

TEST_F(WindowOnScreen, cascadesWithOthersOfItsKind) {
    std::vector<std::unique_ptr<platform::MainWindow>> windows;
    for (int i = 0; i < 8; ++i) {
        windows.push_back(open({500, 400}));
        EXPECT_TRUE(area().contains(windows.back()->frameGeometry()));
        for (int j = 0; j < i; ++j) {
            EXPECT_GE(
                (windows.back()->pos() - windows[static_cast<std::size_t>(j)]->pos()).manhattanLength(), 28);
        }
    }
}

TEST_F(WindowOnScreen, staysAsLargeAsTheScreenWhenItWasMaximised) {
    {
        const auto window = open({500, 400});
        window->showMaximized();
        window->hide();
    }
    EXPECT_TRUE(open({500, 400})->isMaximized());
}

TEST_F(WindowOnScreen, isPlacedOnceOnly) {
    const auto window = open({300, 200});
    window->move(13, 17);
    window->hide();
    window->show();
    EXPECT_EQ(window->pos(), QPoint(13, 17));
}

} // namespace
} // namespace tolvane::tests
