#include "platform/qt/panels/QtPanels.h"

#include "platform/model/Window.h"
#include "tests/platform/qt/panels/DialogTest.h"

#include <QWidget>

#include <memory>
#include <optional>
#include <vector>

namespace tolvane::tests {
namespace {

using platform::OpenDocumentsPanel;
using platform::OpenFileDialog;
using platform::QtOpenPanels;
using platform::QtSavePanels;
using platform::SaveFileDialog;
using platform::URL;

/// A panel that only its handler keeps alive, and what the handler got.
class QtPanelsTest : public DialogTest {
protected:
    template <typename Panel>
    platform::PanelCompletionHandler handlerOf(const std::shared_ptr<Panel>& panel) {
        watched = panel;
        return [this, panel](int response) {
            responses.push_back(response);
            chosen = panel->chosenURL();
        };
    }

    void expectReleasedUnanswered() const {
        EXPECT_EQ(responses, std::vector<int>{});
        EXPECT_TRUE(watched.expired());
        EXPECT_EQ(shownDialog<QFileDialog>(), nullptr);
    }

    static void press(const QFileDialog& dialog, QDialogButtonBox::StandardButton which) {
        QTest::mouseClick(&button(dialog, which), Qt::LeftButton);
    }

    URL here(const std::string& name) const { return URL::fileURLWithPath(folder.path(name)); }

    std::weak_ptr<void> watched;
    std::vector<int> responses;
    std::optional<URL> chosen;
};

class QtOpenPanelTest : public QtPanelsTest {
protected:
    QtOpenPanelTest() { widget->show(); }

    OpenFileDialog& open() {
        const auto panel = panels->openPanel();
        panel->setAllowsMultipleSelection(false);
        panel->setCanChooseDirectories(true);
        panel->setShowsHiddenFiles(true);
        panel->setTreatsFilePackagesAsDirectories(true);
        panel->setResolvesAliases(false);
        panel->beginSheetModalForWindow(*modelWindow, handlerOf(panel));
        auto& dialog = theShownDialog<OpenFileDialog>();
        dialog.setDirectory(QString::fromStdString(folder.path()));
        return dialog;
    }

    std::unique_ptr<QWidget> widget = std::make_unique<QWidget>();
    std::shared_ptr<platform::Window> modelWindow =
        platform::Window::initWithContentRect({}, {}, platform::BackingStore::buffered, true);
    const platform::Window* asked = nullptr;
    std::unique_ptr<QtOpenPanels> panels = std::make_unique<QtOpenPanels>([this](platform::Window& window) {
        asked = &window;
        return widget.get();
    });
};

TEST_F(QtOpenPanelTest, isASheetOnTheWindowsWidget) {
    const OpenFileDialog& dialog = open();
    EXPECT_EQ(asked, modelWindow.get());
    EXPECT_EQ(dialog.parentWidget(), widget.get());
    EXPECT_TRUE(dialog.isWindow());
    EXPECT_EQ(dialog.windowModality(), Qt::WindowModal);
    EXPECT_EQ(dialog.fileMode(), QFileDialog::ExistingFile);
    EXPECT_TRUE(dialog.filter().testFlag(QDir::Hidden));
}

TEST_F(QtOpenPanelTest, answersAFolderOnceAndLetsItsHandlerGo) {
    folder.folder(".inner");
    const OpenFileDialog& dialog = open();
    click(dialog, ".inner");
    press(dialog, QDialogButtonBox::Open);
    EXPECT_EQ(responses, std::vector<int>{platform::modalResponseOK});
    EXPECT_EQ(chosen, here(".inner"));
    EXPECT_TRUE(watched.expired());
    settle();
    EXPECT_TRUE(widget->findChildren<QFileDialog*>().empty());
}

TEST_F(QtOpenPanelTest, entersPackagesAndChoosesAmongTheirContents) {
    folder.folder("Notes.app");
    folder.folder("Notes.app/Contents");
    folder.file("Notes.app/Contents/.alias");
    const OpenFileDialog& dialog = open();
    for (const char* const entered : {"Notes.app", "Contents"}) {
        doubleClick(dialog, entered);
        ASSERT_TRUE(responses.empty()) << entered;
    }
    click(dialog, ".alias");
    press(dialog, QDialogButtonBox::Open);
    EXPECT_EQ(chosen, here("Notes.app/Contents/.alias"));
}

TEST_F(QtOpenPanelTest, choosesAnAliasItselfAsConfigured) {
    folder.symlink("link", folder.file("real"));
    const OpenFileDialog& dialog = open();
    click(dialog, "link");
    press(dialog, QDialogButtonBox::Open);
    EXPECT_EQ(chosen, here("link"));
}

TEST_F(QtOpenPanelTest, answersNoOnEscapeAndWhenItsWindowIsClosed) {
    QTest::keyClick(&open(), Qt::Key_Escape);
    EXPECT_EQ(responses, std::vector<int>{0});
    settle();
    open().close();
    EXPECT_EQ(responses, (std::vector<int>{0, 0}));
    EXPECT_EQ(chosen, std::nullopt);
    EXPECT_TRUE(watched.expired());
}

TEST_F(QtOpenPanelTest, goesUnansweredWithTheWidgetOfItsWindow) {
    open();
    widget.reset();
    expectReleasedUnanswered();
}

TEST_F(QtOpenPanelTest, goesUnansweredWhenTheWindowUnderItIsClosed) {
    modelWindow->makeKeyAndOrderFront();
    open();
    modelWindow->close();
    expectReleasedUnanswered();
}

TEST_F(QtOpenPanelTest, isOutOfTheWayOfItsWindowOnceAnswered) {
    modelWindow->makeKeyAndOrderFront();
    open().reject();
    modelWindow->close();
    EXPECT_EQ(responses, std::vector<int>{0});
}

TEST_F(QtOpenPanelTest, isReleasedUnansweredWhenThePanelsGo) {
    open();
    panels.reset();
    expectReleasedUnanswered();
    EXPECT_TRUE(widget->findChildren<QFileDialog*>().empty());
}

TEST_F(QtOpenPanelTest, standsFreeForAWindowWithoutAWidget) {
    widget.reset();
    OpenFileDialog& dialog = open();
    EXPECT_EQ(dialog.windowModality(), Qt::NonModal);
    dialog.reject();
    EXPECT_EQ(responses, std::vector<int>{0});
}

class OpenDocumentsPanelTest : public DialogTest {
protected:
    OpenFileDialog& open() {
        documentsPanel->setDirectoryURL(URL::fileURLWithPath(folder.path()));
        documentsPanel->begin(
            [this, kept = token](const std::vector<URL>& chosen) { answers.push_back(chosen); });
        return theShownDialog<OpenFileDialog>();
    }

    std::unique_ptr<OpenDocumentsPanel> documentsPanel = std::make_unique<OpenDocumentsPanel>();
    std::shared_ptr<int> token = std::make_shared<int>();
    std::vector<std::vector<URL>> answers;
};

TEST_F(OpenDocumentsPanelTest, answersFilesAndFoldersTogether) {
    const auto file = URL::fileURLWithPath(folder.file("file"));
    const auto inner = URL::fileURLWithPath(folder.folder("folder"));
    const OpenFileDialog& dialog = open();
    EXPECT_FALSE(dialog.isModal());
    click(dialog, "file");
    click(dialog, "folder", Qt::ControlModifier);
    QTest::mouseClick(&button(dialog, QDialogButtonBox::Open), Qt::LeftButton);
    EXPECT_THAT(answers, testing::ElementsAre(testing::UnorderedElementsAre(file, inner)));
    EXPECT_EQ(token.use_count(), 1);
}

TEST_F(OpenDocumentsPanelTest, answersNothingWhenCancelled) {
    open().reject();
    EXPECT_EQ(answers, std::vector<std::vector<URL>>{{}});
}

TEST_F(OpenDocumentsPanelTest, isOnTheScreenOnceAtMost) {
    OpenFileDialog& dialog = open();
    EXPECT_EQ(&open(), &dialog);
    dialog.reject();
    EXPECT_EQ(answers.size(), 1U);
    settle();
    EXPECT_EQ(shownDialog<OpenFileDialog>(), nullptr);
    EXPECT_TRUE(open().isVisible()) << "it can be shown again";
}

TEST_F(OpenDocumentsPanelTest, isReleasedUnansweredAtTheEnd) {
    open();
    documentsPanel.reset();
    EXPECT_TRUE(answers.empty());
    EXPECT_EQ(token.use_count(), 1);
    EXPECT_EQ(shownDialog<OpenFileDialog>(), nullptr);
}

class QtSavePanelTest : public QtPanelsTest {
protected:
    SaveFileDialog& open() {
        const auto panel = panels->savePanel();
        panel->setCanCreateDirectories(true);
        panel->setAllowedFileTypes({"text", "txt"});
        panel->setDirectoryURL(URL::fileURLWithPath(folder.path()));
        panel->setNameFieldStringValue("report.text");
        EXPECT_EQ(panel->chosenURL(), std::nullopt);
        panel->beginWithCompletionHandler(handlerOf(panel));
        return theShownDialog<SaveFileDialog>();
    }

    std::unique_ptr<QtSavePanels> panels = std::make_unique<QtSavePanels>();
};

TEST_F(QtSavePanelTest, standsFreeAndUsesItsSettings) {
    const SaveFileDialog& dialog = open();
    EXPECT_EQ(dialog.parentWidget(), nullptr);
    EXPECT_EQ(dialog.windowModality(), Qt::NonModal);
    EXPECT_EQ(dialog.directory().absolutePath().toStdString(), folder.path());
    EXPECT_EQ(nameField(dialog).text(), "report.text");
    EXPECT_FALSE(dialog.testOption(QFileDialog::ReadOnly));
    EXPECT_FALSE(watched.expired());
}

TEST_F(QtSavePanelTest, answersOnceAndLetsItsHandlerGo) {
    press(open(), QDialogButtonBox::Save);
    EXPECT_EQ(responses, std::vector<int>{platform::modalResponseOK});
    EXPECT_EQ(chosen, here("report.text"));
    EXPECT_TRUE(watched.expired());
    settle();
    EXPECT_EQ(shownDialog<SaveFileDialog>(), nullptr);
    EXPECT_EQ(responses.size(), 1U);
}

TEST_F(QtSavePanelTest, answersNoWhenCancelledAndWhenItsWindowIsClosed) {
    press(open(), QDialogButtonBox::Cancel);
    EXPECT_EQ(responses, std::vector<int>{0});
    EXPECT_TRUE(watched.expired());
    settle();
    open().close();
    EXPECT_EQ(responses, (std::vector<int>{0, 0}));
    EXPECT_TRUE(watched.expired());
    EXPECT_EQ(chosen, std::nullopt);
}

TEST_F(QtSavePanelTest, isReleasedUnansweredWhenThePanelsGo) {
    open();
    panels.reset();
    expectReleasedUnanswered();
}

TEST_F(QtSavePanelTest, canBeShownAgainFromItsOwnHandler) {
    const auto panel = panels->savePanel();
    panel->setDirectoryURL(URL::fileURLWithPath(folder.path()));
    int answers = 0;
    panel->beginWithCompletionHandler([&](int) {
        ++answers;
        panel->beginWithCompletionHandler([&](int) { ++answers; });
    });
    theShownDialog<SaveFileDialog>().reject();
    theShownDialog<SaveFileDialog>().reject();
    EXPECT_EQ(answers, 2);
}

TEST_F(QtSavePanelTest, goesWithItsLastOwner) {
    auto panel = panels->savePanel();
    panel->beginWithCompletionHandler([this](int response) { responses.push_back(response); });
    ASSERT_NE(shownDialog<SaveFileDialog>(), nullptr);
    panel.reset();
    EXPECT_EQ(shownDialog<SaveFileDialog>(), nullptr);
    EXPECT_EQ(responses, std::vector<int>{});
}

using PanelPlaces = DialogTest;

TEST_F(PanelPlaces, areBesideTheFolderOfEachPanelWhichAsksForThemAnew) {
    int asked = 0;
    const platform::PlacesOfDesktop places = [&] {
        ++asked;
        return std::vector<URL>{
            URL::fileURLWithPath(folder.path()), URL::fileURLWithPath("/media/caf\xE9"),
            URL::fileURLWithPath("/media/a b%")};
    };
    QtOpenPanels openPanels({}, places);
    QtSavePanels savePanels(places);
    OpenDocumentsPanel documentsPanel(places);
    EXPECT_EQ(asked, 0);
    platform::Window window;
    const auto openPanel = openPanels.openPanel();
    openPanel->beginSheetModalForWindow(window, {});
    savePanels.savePanel();
    const auto savePanel = savePanels.savePanel();
    savePanel->beginWithCompletionHandler({});
    documentsPanel.begin({});
    EXPECT_EQ(asked, 4);
    int dialogs = 0;
    for (const QWidget* const widget : QApplication::topLevelWidgets()) {
        if (const auto* const dialog = qobject_cast<const QFileDialog*>(widget)) {
            EXPECT_THAT(
                dialog->sidebarUrls(), testing::ElementsAre(
                                           QUrl::fromLocalFile(QString::fromStdString(folder.path())),
                                           QUrl::fromLocalFile("/media/a b%"), QUrl("file:")))
                << dialog->windowTitle().toStdString();
            ++dialogs;
        }
    }
    EXPECT_EQ(dialogs, 3);
}

} // namespace
} // namespace tolvane::tests
