#include "platform/qt/panels/FileDialogSetup.h"

#include "platform/qt/text/VisibleText.h"
#include "tests/platform/qt/panels/DialogTest.h"

#include <QListView>
#include <QSplitter>

namespace tolvane::tests {
namespace {

class FileDialogSetupTest : public DialogTest {
protected:
    platform::URL place(const std::string& name) const {
        return platform::URL::fileURLWithPath(folder.folder(name));
    }
};

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

TEST_F(FileDialogSetupTest, givesPlacesRoomToBeRead) {
    QFileDialog dialog;
    platform::setUpFileDialog(dialog, {place("me"), place("Letters, answers and notes")});
    dialog.show();
    const auto& list = *dialog.findChild<QSplitter*>()->findChild<QListView*>();
    EXPECT_EQ(list.model()->index(1, 0).data().toString(), "Letters, answers and notes");
    EXPECT_GE(list.viewport()->width(), list.sizeHintForColumn(0));
}

TEST_F(FileDialogSetupTest, leavesRoomForTheFolderWhateverTheNamesOfPlaces) {
    QFileDialog dialog;
    platform::setUpFileDialog(dialog, {place(std::string(200, 'W'))});
    dialog.show();
    EXPECT_LE(dialog.findChild<QSplitter*>()->findChild<QListView*>()->width(), dialog.width() / 3);
}

} // namespace
} // namespace tolvane::tests
