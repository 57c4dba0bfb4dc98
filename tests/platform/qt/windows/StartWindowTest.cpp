#include "platform/qt/windows/StartWindow.h"

#include "platform/qt/application/MakeChild.h"
#include "tests/platform/qt/Drops.h"
#include "tests/platform/qt/Shell.h"

#include <QListWidget>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tolvane::tests {
namespace {

using platform::URL;
using testing::ElementsAre;

class StartWindowTest : public testing::Test {
protected:
    static void fillForm(QMainWindow& window) {
        platform::makeChild<QListWidget>(&window).setObjectName("recentDocuments");
        auto& area = platform::makeChild<QWidget>(&window);
        area.setObjectName("bookmarkArea");
        area.setGeometry(0, 0, 100, 100);
    }

    std::vector<std::string> listed() const {
        std::vector<std::string> texts;
        texts.reserve(static_cast<std::size_t>(list.count()));
        for (int row = 0; row < list.count(); ++row) {
            texts.push_back(list.item(row)->text().toStdString());
        }
        return texts;
    }

    Shell shell;
    platform::StartWindow window{shell.application, &fillForm};
    QListWidget& list = *window.findChild<QListWidget*>("recentDocuments");
};

TEST_F(StartWindowTest, listsWhatWasOpenedNewestFirst) {
    shell.recentDocuments.add(URL::fileURLWithPath("/a"));
    shell.recentDocuments.add(URL::fileURLWithPath("/b <c>"));
    EXPECT_THAT(listed(), ElementsAre("/b <c>", "/a"));
    EXPECT_EQ(list.item(0)->toolTip(), "<p style='white-space: pre-wrap'>/b &lt;c&gt;</p>");
    shell.recentDocuments.clear();
    EXPECT_THAT(listed(), ElementsAre());
}

TEST_F(StartWindowTest, opensWhatIsActivated) {
    shell.recentDocuments.add(URL::fileURLWithPath("/\xff"));
    emit list.itemActivated(list.item(0));
    EXPECT_THAT(shell.opened, ElementsAre(URL::fileURLWithPath("/\xff")));
}

TEST_F(StartWindowTest, goesWhenAnotherWindowIsShown) {
    window.show();
    platform::MainWindow other(shell.application, "Other");
    other.show();
    QCoreApplication::processEvents();
    EXPECT_FALSE(window.isVisible());
    EXPECT_TRUE(other.isVisible());
}

TEST_F(StartWindowTest, comesBackWhenItIsWanted) {
    platform::MainWindow other(shell.application, "Other");
    other.show();
    window.bringToFront();
    QCoreApplication::processEvents();
    EXPECT_TRUE(window.isVisible());
}

TEST_F(StartWindowTest, searchesFilesDroppedOnItsAreaForBookmarks) {
    std::vector<URL> searched;
    shell.application.setBookmarkFinder([&searched](const std::vector<URL>& urls) { searched = urls; });
    window.resize(400, 400);
    window.show();
    dropFiles("file:///a%20b\r\n", window, {50, 50});
    EXPECT_THAT(searched, ElementsAre(URL::fileURLWithPath("/a b")));
    EXPECT_TRUE(shell.opened.empty());
    searched.clear();
    dropFiles("file:///elsewhere\r\n", window, {300, 300});
    EXPECT_TRUE(searched.empty());
    EXPECT_THAT(shell.opened, ElementsAre(URL::fileURLWithPath("/elsewhere")));
}

} // namespace
} // namespace tolvane::tests
