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

TEST_F(FileDialogSetupTest, listsWhatIsBesideANameThatIsNotUtf8) {
    // In any order of the folder, some come after the name.
    const QStringList names{"a", "b", "c", "d", "e", "f", "g", "h"};
    folder.file("caf\xE9");
    for (const QString& name : names) {
        folder.file(name.toStdString());
    }
    folder.file("nai\xEFve");
    folder.file(".hidden");
    QFileDialog dialog;
    platform::setUpFileDialog(dialog);
    dialog.setDirectory(QString::fromStdString(folder.path()));
    dialog.show();
    for (const QString& name : names) {
        EXPECT_TRUE(eventually([&] { return row(dialog, name).isValid(); })) << name.toStdString();
    }
    EXPECT_FALSE(row(dialog, ".hidden").isValid());
}

} // namespace
} // namespace tolvane::tests
