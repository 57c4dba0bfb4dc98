#include "platform/qt/windows/MainWindow.h"

#include "tests/platform/qt/Shell.h"

#include <QDropEvent>
#include <QMimeData>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tolvane::tests {
namespace {

using testing::ElementsAre;

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

TEST_F(MainWindowTest, asksItsContentFirst) {
    Recorder application{{"both:", "application:"}};
    shell.application.addTarget(application);
    const auto content = std::make_shared<Recorder>(std::vector<std::string>{"both:", "content:"});
    window.setFirstResponder(content);
    for (const char* const selector : {"both:", "content:", "application:"}) {
        addItem(menu, selector);
    }
    window.formIsComplete();
    for (QAction* const item : menu.actions()) {
        item->trigger();
    }
    EXPECT_EQ(content->journal, "both:content:");
    EXPECT_EQ(application.journal, "application:");
}

TEST_F(MainWindowTest, asksContentThatIsGoneNoLonger) {
    auto content = std::make_shared<Recorder>(std::vector<std::string>{"content:"});
    window.setFirstResponder(content);
    QAction& item = addItem(menu, "content:");
    window.formIsComplete();
    content.reset();
    item.trigger();
    SUCCEED();
}

TEST_F(MainWindowTest, leavesClosingToItsModel) {
    int asked = 0;
    window.setCloseHandler([&] { ++asked; });
    window.show();
    window.close();
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(window.isVisible());
    perform("performClose:");
    EXPECT_EQ(asked, 2);
}

TEST_F(MainWindowTest, isClosedOnceItsModelHasHiddenIt) {
    bool agrees = false;
    window.setCloseHandler([&] { window.setVisible(!agrees); });
    window.show();
    EXPECT_FALSE(window.close());
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

TEST_F(MainWindowTest, remembersItsSizeUnderItsName) {
    {
        platform::MainWindow first(shell.application, "Kind A");
        first.formIsComplete();
        first.resize(523, 411);
        first.show();
        first.hide();
    }
    platform::MainWindow same(shell.application, "Kind A");
    same.formIsComplete();
    EXPECT_EQ(same.size(), QSize(523, 411));
    platform::MainWindow other(shell.application, "Kind B");
    other.formIsComplete();
    EXPECT_NE(other.size(), QSize(523, 411));
}

TEST_F(MainWindowTest, doesNotCoverAnother) {
    platform::MainWindow first(shell.application, "Kind");
    platform::MainWindow second(shell.application, "Kind");
    first.resize(200, 100);
    second.resize(200, 100);
    first.show();
    second.show();
    EXPECT_GT((second.pos() - first.pos()).manhattanLength(), 20);
}

TEST_F(MainWindowTest, opensFilesThatAreDroppedOnIt) {
    window.show();
    QMimeData data;
    data.setData("text/uri-list", "file:///a%20b\r\nfile:///%FF\r\n");
    QDragEnterEvent enter(
        QPoint(1, 1), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(1, 1), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &drop);
    EXPECT_TRUE(drop.isAccepted());
    EXPECT_EQ(drop.dropAction(), Qt::CopyAction);
    EXPECT_THAT(
        shell.opened,
        ElementsAre(platform::URL::fileURLWithPath("/a b"), platform::URL::fileURLWithPath("/\xff")));
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

} // namespace
} // namespace tolvane::tests
