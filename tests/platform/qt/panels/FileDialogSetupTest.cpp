#include "platform/qt/panels/FileDialogSetup.h"

#include "platform/qt/text/VisibleText.h"
#include "tests/platform/qt/panels/DialogTest.h"

#include <QTreeView>

namespace tolvane::tests {
namespace {

class FileDialogSetupTest : public DialogTest {};

TEST_F(FileDialogSetupTest, usesTheToolkitsDialogAndShowsLinksAsThemselves) {
    QFileDialog dialog;
    platform::setUpFileDialog(dialog);
    EXPECT_TRUE(dialog.testOption(QFileDialog::DontUseNativeDialog));
    EXPECT_TRUE(dialog.testOption(QFileDialog::DontResolveSymlinks));
    EXPECT_TRUE(dialog.testOption(QFileDialog::DontUseCustomDirectoryIcons));
}

TEST_F(FileDialogSetupTest, writesOutWhatSteersTextInBothLists) {
    QFileDialog dialog;
    platform::setUpFileDialog(dialog);
    for (const auto* name : {"listView", "treeView"}) {
        const auto* view = dialog.findChild<QAbstractItemView*>(QLatin1String(name));
        ASSERT_NE(view, nullptr);
        EXPECT_NE(dynamic_cast<platform::VisibleTextDelegate*>(view->itemDelegate()), nullptr) << name;
    }
}

} // namespace
} // namespace tolvane::tests
