#include "platform/qt/panels/FileDialogSetup.h"

#include "platform/qt/text/VisibleText.h"
#include "tests/platform/qt/panels/DialogTest.h"

namespace tolvane::tests {
namespace {

class FileDialogSetupTest : public DialogTest {};

TEST_F(FileDialogSetupTest, usesQtsDialogAndShowsLinksAsThemselves) {
    QFileDialog dialog;
    platform::setUpFileDialog(dialog);
    EXPECT_TRUE(dialog.testOption(QFileDialog::DontUseNativeDialog));
    EXPECT_TRUE(dialog.testOption(QFileDialog::DontResolveSymlinks));
    EXPECT_TRUE(dialog.testOption(QFileDialog::DontUseCustomDirectoryIcons));
}

TEST_F(FileDialogSetupTest, writesOutWhatSteersTextInBothLists) {
    QFileDialog dialog;
    platform::setUpFileDialog(dialog);
    const auto views = platform::folderViewsOf(dialog);
    EXPECT_EQ(views.size(), 2U);
    for (const auto* const view : views) {
        EXPECT_NE(dynamic_cast<platform::VisibleTextDelegate*>(view->itemDelegate()), nullptr);
    }
}

} // namespace
} // namespace tolvane::tests
