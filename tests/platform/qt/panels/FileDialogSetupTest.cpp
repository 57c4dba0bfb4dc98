#include "platform/qt/panels/FileDialogSetup.h"

#include "platform/qt/text/VisibleText.h"
#include "tests/platform/qt/panels/DialogTest.h"

namespace tolvane::tests {
namespace {

using FileDialogSetupTest = DialogTest;

TEST_F(FileDialogSetupTest, usesQtsDialogWithLinksAsThemselvesAndVisibleTexts) {
    QFileDialog dialog;
    platform::setUpFileDialog(dialog);
    EXPECT_TRUE(dialog.testOption(QFileDialog::DontUseNativeDialog));
    EXPECT_TRUE(dialog.testOption(QFileDialog::DontResolveSymlinks));
    EXPECT_TRUE(dialog.testOption(QFileDialog::DontUseCustomDirectoryIcons));
    const auto views = platform::folderViewsOf(dialog);
    EXPECT_EQ(views.size(), 2U);
    for (const auto* const view : views) {
        EXPECT_NE(dynamic_cast<platform::VisibleTextDelegate*>(view->itemDelegate()), nullptr);
    }
}

} // namespace
} // namespace tolvane::tests
