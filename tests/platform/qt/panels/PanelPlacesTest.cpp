#include "platform/model/Window.h"
#include "platform/qt/panels/FileDialogSetup.h"
#include "platform/qt/panels/QtPanels.h"
#include "tests/platform/qt/panels/DialogTest.h"

#include <QListView>
#include <QSplitter>

#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using platform::URL;

class PanelPlaces : public DialogTest {
protected:
    platform::PlacesOfDesktop places() {
        return [this] {
            ++asked;
            return std::vector<URL>{
                URL::fileURLWithPath(folder.path()), URL::fileURLWithPath("/media/caf\xE9"),
                URL::fileURLWithPath("/media/a b%")};
        };
    }

    void expectListedIn(const QFileDialog* dialog) const {
        ASSERT_NE(dialog, nullptr);
        EXPECT_THAT(
            dialog->sidebarUrls(), testing::ElementsAre(
                                       QUrl::fromLocalFile(QString::fromStdString(folder.path())),
                                       QUrl::fromLocalFile("/media/a b%"), QUrl("file:")));
    }

    platform::Window window;
    int asked = 0;
};

TEST_F(PanelPlaces, areBesideTheFolderToOpenFrom) {
    platform::QtOpenPanels panels({}, places());
    const auto panel = panels.openPanel();
    panel->beginSheetModalForWindow(window, {});
    expectListedIn(shownDialog<platform::OpenFileDialog>());
}

TEST_F(PanelPlaces, areBesideTheFolderOfTheOpenCommand) {
    platform::OpenDocumentsPanel panel(places());
    panel.begin({});
    expectListedIn(shownDialog<platform::OpenFileDialog>());
}

TEST_F(PanelPlaces, areBesideTheFolderToSaveIn) {
    platform::QtSavePanels panels(places());
    const auto panel = panels.savePanel();
    panel->beginWithCompletionHandler({});
    expectListedIn(shownDialog<platform::SaveFileDialog>());
}

TEST_F(PanelPlaces, areWideEnoughToBeRead) {
    QFileDialog dialog;
    platform::setUpFileDialog(
        dialog, {URL::fileURLWithPath(folder.folder("me")),
                 URL::fileURLWithPath(folder.folder("Letters, answers and notes"))});
    dialog.show();
    const auto& list = *dialog.findChild<QSplitter*>()->findChild<QListView*>();
    EXPECT_EQ(list.model()->index(1, 0).data().toString(), "Letters, answers and notes");
    EXPECT_GE(list.viewport()->width(), list.sizeHintForColumn(0));
}

TEST_F(PanelPlaces, leaveRoomForTheFolderWhateverTheirNames) {
    QFileDialog dialog;
    platform::setUpFileDialog(dialog, {URL::fileURLWithPath(folder.folder(std::string(200, 'W')))});
    dialog.show();
    const auto& list = *dialog.findChild<QSplitter*>()->findChild<QListView*>();
    EXPECT_LE(list.width(), dialog.width() / 3);
}

TEST_F(PanelPlaces, areAskedForAnewByEachPanel) {
    platform::QtSavePanels panels(places());
    EXPECT_EQ(asked, 0);
    panels.savePanel();
    panels.savePanel();
    EXPECT_EQ(asked, 2);
}

} // namespace
} // namespace tolvane::tests
