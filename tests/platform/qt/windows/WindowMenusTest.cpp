#include "platform/qt/windows/WindowMenus.h"

#include "platform/qt/windows/MainWindow.h"
#include "tests/platform/qt/Shell.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tolvane::tests {
namespace {

using platform::URL;
using testing::ElementsAre;

class WindowMenusTest : public testing::Test {
protected:
    QMenu& menuNamed(const char* name) {
        QMenu& menu = *window.menuBar()->addMenu("Menu");
        menu.setObjectName(name);
        menu.addAction("Fixed");
        window.formIsComplete();
        return menu;
    }

    void addRecent(const std::string& path) { shell.recentDocuments.add(URL::fileURLWithPath(path)); }

    Shell shell;
    platform::MainWindow window{shell.application, "Test"};
};

TEST_F(WindowMenusTest, listRecentDocumentsBeforeTheFormsItems) {
    QMenu& menu = menuNamed("recentMenu");
    addRecent("/a & b");
    addRecent("/c");
    emit menu.aboutToShow();
    emit menu.aboutToShow();
    EXPECT_THAT(itemsOf(menu), ElementsAre("/c", "/a && b", "Fixed"));
    menu.actions().at(1)->trigger();
    EXPECT_THAT(shell.opened, ElementsAre(URL::fileURLWithPath("/a & b")));
}

TEST_F(WindowMenusTest, shortenLongPathsAndShowThemWholeInTheToolTip) {
    QMenu& menu = menuNamed("recentMenu");
    const std::string folders = "/" + std::string(200, 'x') + "/";
    const std::string rest = "/" + std::string(200, 'y') + "/a & <b>";
    addRecent(folders + "one" + rest);
    addRecent(folders + "two" + rest);
    emit menu.aboutToShow();
    const QAction& newest = *menu.actions().at(0);
    EXPECT_NE(newest.text(), menu.actions().at(1)->text());
    EXPECT_TRUE(newest.text().contains("two")) << newest.text().toStdString();
    EXPECT_TRUE(newest.text().endsWith("a && <b>")) << newest.text().toStdString();
    EXPECT_LT(newest.text().size(), 120);
    EXPECT_TRUE(menu.toolTipsVisible());
    const std::string toolTip = newest.toolTip().remove(QChar(0x200B)).toStdString();
    EXPECT_TRUE(toolTip.contains(folders + "two/" + std::string(200, 'y') + "/a &amp; &lt;b&gt;")) << toolTip;
    menu.actions().at(1)->trigger();
    EXPECT_THAT(shell.opened, ElementsAre(URL::fileURLWithPath(folders + "one" + rest)));
}

TEST_F(WindowMenusTest, distinguishPathsThatLookTheSame) {
    QMenu& menu = menuNamed("recentMenu");
    addRecent("/a\xFE");
    addRecent("/a\xFF");
    addRecent("/b\n");
    emit menu.aboutToShow();
    EXPECT_THAT(itemsOf(menu), ElementsAre("/b⟨LF⟩", "file:///a%FF", "file:///a%FE", "Fixed"));
}

TEST_F(WindowMenusTest, listTheVisibleWindowsAfterTheFormsItems) {
    QMenu& menu = menuNamed("windowMenu");
    platform::MainWindow other(shell.application, "Test");
    const platform::MainWindow hidden(shell.application, "Test");
    window.setWindowTitle("one");
    other.setWindowTitle("two[*][*]");
    window.show();
    other.show();
    emit menu.aboutToShow();
    emit menu.aboutToShow();
    EXPECT_EQ(itemsOf(menu).front(), "Fixed");
    EXPECT_THAT(itemsOf(menu), testing::UnorderedElementsAre("Fixed", "one", "two[*]"));
    for (const QAction* const item : menu.actions()) {
        EXPECT_EQ(item->isChecked(), item->text() == "one");
    }
}

TEST_F(WindowMenusTest, bringAWindowBack) {
    QMenu& menu = menuNamed("windowMenu");
    window.setWindowTitle("one");
    window.show();
    window.showMinimized();
    emit menu.aboutToShow();
    menu.actions().back()->trigger();
    EXPECT_FALSE(window.isMinimized());
}

class HelpMenuTest : public testing::Test {
protected:
    /// A window with the items of one form in its help menu.
    class HelpWindow : public platform::MainWindow {
    public:
        explicit HelpWindow(Shell& shell) : platform::MainWindow(shell.application, "Test") {
            QMenu& menu = *menuBar()->addMenu("&Help");
            menu.setObjectName("helpMenu");
            for (const char* const text : {"&First", "Second", "Q && A"}) {
                QAction& item = *menu.addAction(text);
                item.setObjectName(QString("item") + QString(text).back());
                menu.addSeparator();
            }
            formIsComplete();
        }
        QAction& item(qsizetype index) const {
            return *findChild<QMenu*>("helpMenu")->actions().at(2 * index);
        }
    };

    platform::Menu& model() { return *shell.application.helpMenu(); }

    Shell shell;
};

TEST_F(HelpMenuTest, hasItsItemsFromTheFirstWindow) {
    EXPECT_EQ(model().itemWithTitle("First"), nullptr);
    const HelpWindow window(shell);
    for (const char* const title : {"First", "Second", "Q & A"}) {
        EXPECT_NE(model().itemWithTitle(title), nullptr) << title;
    }
    EXPECT_EQ(window.item(0).text(), "&First") << "the key stays marked";
    EXPECT_FALSE(window.item(0).isCheckable());
}

TEST_F(HelpMenuTest, showsWhatItsModelHadBeforeAnyWindow) {
    platform::MenuItem& item = shell.application.helpMenuItem("itemd", "Second");
    item.setState(platform::MenuItemState::on);
    item.setTitle("Done");
    const HelpWindow window(shell);
    EXPECT_EQ(window.item(1).text(), "Done");
    EXPECT_TRUE(window.item(1).isChecked());
    EXPECT_EQ(model().itemWithTitle("Second"), nullptr);
}

TEST_F(HelpMenuTest, showsItsModelInEveryWindow) {
    const HelpWindow first(shell);
    const HelpWindow second(shell);
    platform::MenuItem& item = *model().itemWithTitle("Second");
    item.setState(platform::MenuItemState::on);
    item.setTitle("A & B");
    const HelpWindow later(shell);
    for (const HelpWindow* const window : {&first, &second, &later}) {
        EXPECT_EQ(window->item(1).text(), "A && B");
        EXPECT_TRUE(window->item(1).isCheckable());
        EXPECT_TRUE(window->item(1).isChecked());
        EXPECT_EQ(window->item(0).text(), "&First");
        EXPECT_FALSE(window->item(0).isChecked());
    }
    EXPECT_EQ(model().itemWithTitle("Second"), nullptr) << "a later window adds nothing";
    item.setState(platform::MenuItemState::off);
    EXPECT_FALSE(later.item(1).isChecked());
    EXPECT_FALSE(later.item(1).isCheckable());
}

TEST_F(HelpMenuTest, outlivesItsWindows) {
    { const HelpWindow window(shell); }
    model().itemWithTitle("Second")->setTitle("Third");
    EXPECT_EQ(HelpWindow(shell).item(1).text(), "Third");
}

} // namespace
} // namespace tolvane::tests
