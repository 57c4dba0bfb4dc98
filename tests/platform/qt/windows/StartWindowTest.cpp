#include "platform/qt/windows/StartWindow.h"

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
        auto list = std::make_unique<QListWidget>();
        list->setObjectName("recentDocuments");
        window.setCentralWidget(list.release());
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

} // namespace
} // namespace tolvane::tests
