#include "platform/qt/windows/MainWindow.h"

#include "platform/qt/application/MakeChild.h"
#include "platform/qt/text/TextViewWidget.h"
#include "platform/qt/windows/Mirrors.h"
#include "tests/platform/qt/Drops.h"
#include "tests/platform/qt/Shell.h"

#include <QScreen>
#include <QSplitter>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tolvane::tests {
namespace {

using platform::URL;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> pathsIn(std::string_view list) {
    std::vector<std::string> paths;
    for (const URL& url : platform::fileURLsInList(list)) {
        paths.push_back(url.path());
    }
    return paths;
}

TEST(DroppedFiles, areOneALineOfAnyBytes) {
    EXPECT_THAT(
        pathsIn("file:///a\r\nfile:///b%20c\r\n# why\r\n\r\nfile:///d"), ElementsAre("/a", "/b c", "/d"));
    EXPECT_THAT(pathsIn("file:///a\nfile:///b\n"), ElementsAre("/a", "/b"));
    EXPECT_THAT(pathsIn("file:///%FF%0A\r\n"), ElementsAre("/\xff\n"));
    EXPECT_THAT(pathsIn("file:///\xff\r\n"), ElementsAre("/\xff"));
}

TEST(DroppedFiles, areOnThisMachine) {
    EXPECT_THAT(pathsIn("https://example.org/a\nfile://elsewhere/a\nnonsense\nfile:///a%00b\n"), IsEmpty());
    EXPECT_THAT(pathsIn(""), IsEmpty());
    EXPECT_THAT(pathsIn("\r\n"), IsEmpty());
}

class MainWindowTest : public testing::Test {
protected:
    void perform(const QString& selector) {
        QAction& item = addItem(menu, selector);
        window.formIsComplete();
        item.trigger();
    }

    Shell shell;
    platform::MainWindow window{shell.application, "Test"};
    QMenu& menu = *window.menuBar()->addMenu("Menu");
};

TEST_F(MainWindowTest, asksItsContentFirstUntilThatIsGone) {
    Recorder application{{"both:", "application:"}};
    shell.application.addTarget(application);
    auto content = std::make_shared<Recorder>(std::vector<std::string>{"both:", "content:"});
    window.setFirstResponder(content);
    for (const char* const selector : {"both:", "content:", "application:"}) {
        addItem(menu, selector);
    }
    window.formIsComplete();
    const auto triggerAll = [this] {
        for (QAction* const item : menu.actions()) {
            item->trigger();
        }
    };
    triggerAll();
    EXPECT_EQ(content->journal, "both:content:");
    EXPECT_EQ(application.journal, "application:");
    content.reset();
    triggerAll();
    EXPECT_EQ(application.journal, "application:both:application:");
}

TEST_F(MainWindowTest, leavesClosingToItsModelAndIsClosedOnceThatHasHiddenIt) {
    int asked = 0;
    bool agrees = false;
    window.setCloseHandler([&] {
        ++asked;
        if (agrees) {
            window.hide();
        }
    });
    window.show();
    EXPECT_FALSE(window.close());
    perform("performClose:");
    EXPECT_EQ(asked, 2);
    EXPECT_TRUE(window.isVisible());
    agrees = true;
    EXPECT_TRUE(window.close());
}

TEST_F(MainWindowTest, closesByItselfWithoutAModel) {
    window.show();
    perform("performClose:");
    EXPECT_FALSE(window.isVisible());
}

TEST_F(MainWindowTest, fillsTheScreenAndBack) {
    window.show();
    perform("toggleFullScreen:");
    EXPECT_TRUE(window.isFullScreen());
    perform("toggleFullScreen:");
    EXPECT_FALSE(window.isFullScreen());
}

TEST_F(MainWindowTest, isRestoredToTheFront) {
    window.show();
    perform("performMiniaturize:");
    EXPECT_TRUE(window.isMinimized());
    window.bringToFront();
    EXPECT_FALSE(window.isMinimized());
    EXPECT_TRUE(window.isVisible());
}

TEST_F(MainWindowTest, opensFilesThatAreDroppedOnIt) {
    window.show();
    dropFiles("file:///a%20b\r\nfile:///%FF\r\n", window);
    EXPECT_THAT(shell.opened, ElementsAre(URL::fileURLWithPath("/a b"), URL::fileURLWithPath("/\xff")));
}

TEST_F(MainWindowTest, takesNothingButFiles) {
    window.show();
    QMimeData data;
    data.setText("file:///a");
    QDragEnterEvent enter(QPoint(1, 1), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    QApplication::sendEvent(&window, &enter);
    EXPECT_FALSE(enter.isAccepted());
}

class DropOnText : public MainWindowTest {
protected:
    DropOnText() {
        view.setFilesHandler([this](const std::vector<URL>& files) { taken = files; });
        window.setCentralWidget(&content);
        window.resize(300, 300);
        window.show();
    }

    QSplitter& content = platform::makeChild<QSplitter>(&window);
    platform::TextViewWidget& box = platform::makeChild<platform::TextViewWidget>(&content);
    platform::TextViewWidget& plainBox = platform::makeChild<platform::TextViewWidget>(&content);
    platform::TextView view;
    platform::TextView plainView;
    std::optional<platform::TextViewMirror> mirror{std::in_place, view, box};
    platform::TextViewMirror plainMirror{plainView, plainBox};
    std::vector<URL> taken;
};

TEST_F(DropOnText, givesTheFilesToATextThatTakesThem) {
    dropFiles("file:///a%20b\r\n", *box.viewport());
    EXPECT_THAT(taken, ElementsAre(URL::fileURLWithPath("/a b")));
    EXPECT_THAT(shell.opened, IsEmpty());
    EXPECT_EQ(view.string(), "");
}

TEST_F(DropOnText, opensTheFilesElsewhereAndWhenTheModelIsGone) {
    dropFiles("file:///elsewhere\r\n", *plainBox.viewport());
    EXPECT_THAT(shell.opened, ElementsAre(URL::fileURLWithPath("/elsewhere")));
    mirror.reset();
    dropFiles("file:///gone\r\n", *box.viewport());
    EXPECT_THAT(shell.opened, ElementsAre(URL::fileURLWithPath("/elsewhere"), URL::fileURLWithPath("/gone")));
    EXPECT_THAT(taken, IsEmpty());
}

class WindowOnScreen : public testing::Test {
protected:
    std::unique_ptr<platform::MainWindow> open(QSize size, const char* kind = "Kind") {
        auto window = std::make_unique<platform::MainWindow>(shell.application, kind);
        window->resize(size);
        window->formIsComplete();
        window->show();
        return window;
    }

    static QRect area() { return QGuiApplication::primaryScreen()->availableGeometry(); }

    Shell shell;
};

TEST_F(WindowOnScreen, hasTheSizeLastSeenOfItsKind) {
    {
        const auto first = open({500, 400});
        first->resize(523, 411);
        first->hide();
    }
    EXPECT_EQ(open({500, 400})->size(), QSize(523, 411));
    EXPECT_NE(open({500, 400}, "Other kind")->size(), QSize(523, 411));
}

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
    EXPECT_TRUE(area().contains(open({500, 400})->frameGeometry()));
}

TEST_F(WindowOnScreen, cascadesWithOthersOfItsKind) {
    std::vector<std::unique_ptr<platform::MainWindow>> windows;
    for (int i = 0; i < 8; ++i) {
        auto window = open({500, 400});
        EXPECT_TRUE(area().contains(window->frameGeometry()));
        for (const auto& other : windows) {
            EXPECT_GE((window->pos() - other->pos()).manhattanLength(), 28);
        }
        windows.push_back(std::move(window));
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
