#include "platform/qt/panels/QtPanels.h"
#include "tests/platform/qt/panels/DialogTest.h"

#include <memory>
#include <optional>
#include <vector>

namespace tolvane::tests {
namespace {

using platform::QtSavePanels;
using platform::SaveFileDialog;
using platform::URL;

class QtSavePanelTest : public DialogTest {
protected:
    /// Opens a panel that only its handler keeps alive.
    SaveFileDialog& open() {
        const auto panel = panels->savePanel();
        watched = panel;
        panel->setCanCreateDirectories(true);
        panel->setAllowedFileTypes({"text", "txt"});
        panel->setDirectoryURL(URL::fileURLWithPath(folder.path()));
        panel->setNameFieldStringValue("report.text");
        EXPECT_EQ(panel->chosenURL(), std::nullopt);
        panel->beginWithCompletionHandler([this, panel](int response) {
            responses.push_back(response);
            chosen = panel->chosenURL();
        });
        return theShownDialog<SaveFileDialog>();
    }

    std::unique_ptr<QtSavePanels> panels = std::make_unique<QtSavePanels>();
    std::weak_ptr<platform::SavePanel> watched;
    std::vector<int> responses;
    std::optional<URL> chosen;
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
    SaveFileDialog& dialog = open();
    QTest::mouseClick(&button(dialog, QDialogButtonBox::Save), Qt::LeftButton);
    EXPECT_EQ(responses, std::vector<int>{platform::modalResponseOK});
    EXPECT_EQ(chosen, URL::fileURLWithPath(folder.path("report.text")));
    EXPECT_TRUE(watched.expired());
    settle();
    EXPECT_EQ(shownDialog<SaveFileDialog>(), nullptr);
    EXPECT_EQ(responses.size(), 1U);
}

TEST_F(QtSavePanelTest, answersNoWhenCancelledAndWhenItsWindowIsClosed) {
    QTest::mouseClick(&button(open(), QDialogButtonBox::Cancel), Qt::LeftButton);
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
    EXPECT_EQ(responses, std::vector<int>{});
    EXPECT_TRUE(watched.expired());
    EXPECT_EQ(shownDialog<SaveFileDialog>(), nullptr);
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

} // namespace
} // namespace tolvane::tests
