#include "platform/model/Window.h"
#include "platform/qt/panels/QtPanels.h"
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
using platform::URL;

class QtOpenPanelTest : public DialogTest {
protected:
    QtOpenPanelTest() {
        widget->show();
        panels = std::make_unique<QtOpenPanels>([this](platform::Window& window) {
            asked = &window;
            return widget.get();
        });
    }

    /// Opens a panel that only its handler keeps alive.
    OpenFileDialog& open() {
        const auto panel = panels->openPanel();
        watched = panel;
        panel->setAllowsMultipleSelection(false);
        panel->setCanChooseDirectories(true);
        panel->setShowsHiddenFiles(true);
        panel->setTreatsFilePackagesAsDirectories(true);
        panel->setResolvesAliases(false);
        panel->beginSheetModalForWindow(modelWindow, [this, panel](int response) {
            responses.push_back(response);
            chosen = panel->chosenURL();
        });
        auto& dialog = widget ? dynamic_cast<OpenFileDialog&>(*widget->findChildren<QFileDialog*>().last())
                              : theShownDialog<OpenFileDialog>();
        dialog.setDirectory(QString::fromStdString(folder.path()));
        return dialog;
    }

    std::unique_ptr<QWidget> widget = std::make_unique<QWidget>();
    platform::Window modelWindow;
    const platform::Window* asked = nullptr;
    std::unique_ptr<QtOpenPanels> panels;
    std::weak_ptr<platform::OpenPanel> watched;
    std::vector<int> responses;
    std::optional<URL> chosen;
};

TEST_F(QtOpenPanelTest, isASheetOnTheWindowsWidget) {
    const OpenFileDialog& dialog = open();
    EXPECT_EQ(asked, &modelWindow);
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
    QTest::mouseClick(&button(dialog, QDialogButtonBox::Open), Qt::LeftButton);
    EXPECT_EQ(responses, std::vector<int>{platform::modalResponseOK});
    EXPECT_EQ(chosen, URL::fileURLWithPath(folder.path(".inner")));
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
    QTest::mouseClick(&button(dialog, QDialogButtonBox::Open), Qt::LeftButton);
    EXPECT_EQ(chosen, URL::fileURLWithPath(folder.path("Notes.app/Contents/.alias")));
}

TEST_F(QtOpenPanelTest, choosesAnAliasItselfAsConfigured) {
    folder.symlink("link", folder.file("real"));
    const OpenFileDialog& dialog = open();
    click(dialog, "link");
    QTest::mouseClick(&button(dialog, QDialogButtonBox::Open), Qt::LeftButton);
    EXPECT_EQ(chosen, URL::fileURLWithPath(folder.path("link")));
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

TEST_F(QtOpenPanelTest, goesUnansweredWithItsWindowsWidget) {
    open();
    widget.reset();
    EXPECT_EQ(responses, std::vector<int>{});
    EXPECT_TRUE(watched.expired());
}

TEST_F(QtOpenPanelTest, isReleasedUnansweredWhenThePanelsGo) {
    open();
    panels.reset();
    EXPECT_EQ(responses, std::vector<int>{});
    EXPECT_TRUE(watched.expired());
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
    folder.file("file");
    folder.folder("folder");
    const OpenFileDialog& dialog = open();
    EXPECT_FALSE(dialog.isModal());
    click(dialog, "file");
    click(dialog, "folder", Qt::ControlModifier);
    QTest::mouseClick(&button(dialog, QDialogButtonBox::Open), Qt::LeftButton);
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_THAT(
        answers[0],
        testing::UnorderedElementsAre(
            URL::fileURLWithPath(folder.path("file")), URL::fileURLWithPath(folder.path("folder"))));
    EXPECT_EQ(token.use_count(), 1);
}

TEST_F(OpenDocumentsPanelTest, answersNothingWhenCancelled) {
    OpenFileDialog& dialog = open();
    dialog.reject();
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

} // namespace
} // namespace tolvane::tests
