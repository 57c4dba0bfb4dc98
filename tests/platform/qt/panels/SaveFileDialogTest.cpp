#include "platform/qt/panels/SaveFileDialog.h"

#include "tests/platform/qt/panels/DialogTest.h"

#include <QAbstractFileIconProvider>
#include <QAbstractItemView>
#include <QDir>
#include <QFileInfo>

#include <memory>
#include <optional>
#include <string>

namespace tolvane::tests {
namespace {

using platform::AlertBox;
using platform::SaveFileDialog;
using platform::SavePanelSettings;
using platform::URL;
using testing::HasSubstr;

TEST(NameWithExtension, addsTheFirstUnlessOneIsThere) {
    const std::vector<std::string> extensions{"text", "txt"};
    EXPECT_EQ(platform::nameWithExtension("a", extensions), "a.text");
    EXPECT_EQ(platform::nameWithExtension("a.text", extensions), "a.text");
    EXPECT_EQ(platform::nameWithExtension("a.TXT", extensions), "a.TXT");
    EXPECT_EQ(platform::nameWithExtension("notes.md", extensions), "notes.md.text");
    EXPECT_EQ(platform::nameWithExtension(".text", extensions), ".text.text");
    EXPECT_EQ(platform::nameWithExtension("text", extensions), "text.text");
    EXPECT_EQ(platform::nameWithExtension("notes.md", {}), "notes.md");
}

class SaveFileDialogTest : public DialogTest {
protected:
    SaveFileDialog& show(const std::string& name = "report.text", std::optional<URL> subject = {}) {
        shown = std::make_unique<SaveFileDialog>(SavePanelSettings{
            true, {"text", "txt"}, URL::fileURLWithPath(folder.path()), name, std::move(subject)});
        shown->show();
        return *shown;
    }

    static void save(const SaveFileDialog& dialog) {
        QTest::mouseClick(&button(dialog, QDialogButtonBox::Save), Qt::LeftButton);
    }

    static void saveAs(const SaveFileDialog& dialog, const QString& name) {
        type(dialog, name);
        save(dialog);
    }

    static std::string alertText() { return theShownDialog<AlertBox>().text().toStdString(); }

    std::optional<URL> here(const std::string& name) const { return URL::fileURLWithPath(folder.path(name)); }

    std::unique_ptr<SaveFileDialog> shown;
};

TEST_F(SaveFileDialogTest, proposesTheNameWithItsStemSelected) {
    const SaveFileDialog& dialog = show("photo.jpg-tolvane.text");
    EXPECT_EQ(nameField(dialog).text(), "photo.jpg-tolvane.text");
    EXPECT_EQ(nameField(dialog).selectedText(), "photo.jpg-tolvane");
    EXPECT_EQ(dialog.directory().absolutePath().toStdString(), folder.path());
    EXPECT_FALSE(dialog.isModal());
    EXPECT_TRUE(dialog.testOption(QFileDialog::DontUseNativeDialog));
    EXPECT_EQ(dialog.nameFilters(), QStringList({"Text (*.text *.txt)", "All files (*)"}));
}

TEST_F(SaveFileDialogTest, completesATypedNameOnReturn) {
    SaveFileDialog& dialog = show();
    type(dialog, "notes.md");
    QTest::keyClick(&nameField(dialog), Qt::Key_Return);
    EXPECT_EQ(dialog.chosenURL(), here("notes.md.text"));
}

TEST_F(SaveFileDialogTest, keepsTheNameAsTypedWhenAllFilesAreListed) {
    SaveFileDialog& dialog = show();
    dialog.selectNameFilter("All files (*)");
    saveAs(dialog, "notes.md");
    EXPECT_EQ(dialog.chosenURL(), here("notes.md"));
}

TEST_F(SaveFileDialogTest, asksInOtherWordsBeforeReplacingWhatTheTextIsAbout) {
    const std::string subject = folder.file("subject.text", "old");
    folder.symlink("way.text", "subject.text");
    folder.file("other.text", "old");
    const SaveFileDialog& dialog = show("a.text", URL::fileURLWithPath(subject));
    for (const auto* const name : {"subject", "way.text"}) {
        saveAs(dialog, name);
        EXPECT_THAT(alertText(), HasSubstr("is the file that the report is about")) << name;
        answerAlert(1);
    }
    saveAs(dialog, "other");
    EXPECT_THAT(alertText(), HasSubstr("already exists"));
    answerAlert(1);
    saveAs(dialog, "subject");
    answerAlert(0);
    EXPECT_EQ(dialog.chosenURL(), URL::fileURLWithPath(subject));
}

TEST_F(SaveFileDialogTest, asksBeforeReplacingWhatTheCompletedNameNames) {
    folder.file("a.text", "old");
    SaveFileDialog& dialog = show();
    saveAs(dialog, "a");
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_THAT(alertText(), HasSubstr("“a.text” already exists"));
    const auto& alert = theShownDialog<AlertBox>();
    EXPECT_EQ(alert.defaultButton(), alert.escapeButton()) << "Return alone replaces nothing";
    answerAlert(1);
    EXPECT_TRUE(dialog.isVisible()) << "Cancel leads back to the panel";
    EXPECT_EQ(dialog.chosenURL(), std::nullopt);

    save(dialog);
    answerAlert(0);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.chosenURL(), here("a.text"));
    EXPECT_EQ(contentsOfFile(folder.path("a.text")), "old") << "the panel itself writes nothing";
}

TEST_F(SaveFileDialogTest, asksBeforeWritingThroughALinkThatLeadsNowhere) {
    folder.symlink("a.text", "nowhere");
    SaveFileDialog& dialog = show("a.text");
    save(dialog);
    EXPECT_NE(shownDialog<AlertBox>(), nullptr);
    EXPECT_TRUE(dialog.isVisible());
}

TEST_F(SaveFileDialogTest, asksInAFolderThatQtCannotEnter) {
    folder.folder("d\xFFr");
    folder.file("d\xFFr/a.text");
    SaveFileDialog& dialog = show();
    nameField(dialog).setText("d\uFFFDr/a");
    save(dialog);
    answerAlert(0);
    EXPECT_EQ(dialog.chosenURL(), here("d\xFFr/a.text"));
}

TEST_F(SaveFileDialogTest, takesAClickedFileToBeReplaced) {
    folder.file("old.txt");
    SaveFileDialog& dialog = show();
    click(dialog, "old.txt");
    EXPECT_EQ(nameField(dialog).text(), "old.txt");
    save(dialog);
    answerAlert(0);
    EXPECT_EQ(dialog.chosenURL(), here("old.txt"));
}

TEST_F(SaveFileDialogTest, entersATypedFolderAndProposesTheNameAgain) {
    folder.folder("inner");
    SaveFileDialog& dialog = show();
    saveAs(dialog, "inner");
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(dialog.directory().absolutePath().toStdString(), folder.path("inner"));
    EXPECT_EQ(nameField(dialog).text(), "report.text");
    save(dialog);
    EXPECT_EQ(dialog.chosenURL(), here("inner/report.text"));
}

TEST_F(SaveFileDialogTest, keepsTheNameWhenAFolderIsEnteredByDoubleClick) {
    folder.folder("inner");
    SaveFileDialog& dialog = show();
    type(dialog, "mine");
    doubleClick(dialog, "inner");
    ASSERT_EQ(dialog.directory().absolutePath().toStdString(), folder.path("inner"));
    save(dialog);
    EXPECT_EQ(dialog.chosenURL(), here("inner/mine.text"));
}

TEST_F(SaveFileDialogTest, refusesAFolderThatIsAbsentAndAFolderAsFile) {
    folder.folder("f.text");
    SaveFileDialog& dialog = show();
    saveAs(dialog, "absent/a");
    EXPECT_THAT(alertText(), HasSubstr("/absent” was not found."));
    answerAlert(0);
    saveAs(dialog, "f");
    EXPECT_THAT(alertText(), testing::StartsWith("“f.text” is a folder"));
    answerAlert(0);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(dialog.chosenURL(), std::nullopt);
}

TEST_F(SaveFileDialogTest, savesUnderTheHarmlessNameThatItShows) {
    SaveFileDialog& dialog = show("a\nb\u202Ecod/\uFFFD.text");
    EXPECT_EQ(nameField(dialog).text(), "a_b_cod_\uFFFD.text");
    nameField(dialog).setText("x\ty\u2066z");
    EXPECT_EQ(nameField(dialog).text(), "x_y_z");
    save(dialog);
    EXPECT_EQ(dialog.chosenURL(), here("x_y_z.text"));
}

TEST_F(SaveFileDialogTest, doesNothingWithoutAName) {
    SaveFileDialog& dialog = show();
    nameField(dialog).clear();
    dialog.accept();
    EXPECT_TRUE(dialog.isVisible());
}

TEST_F(SaveFileDialogTest, startsAtHomeWhenItsFolderCannotBeShown) {
    const SaveFileDialog dialog({true, {}, URL::fileURLWithPath(folder.folder("d\xFF")), "a"});
    EXPECT_EQ(dialog.directory().absolutePath(), QDir(QDir::homePath()).absolutePath());
}

TEST_F(SaveFileDialogTest, makesFoldersOnlyWhereAllowed) {
    const SaveFileDialog allowed({true, {}, std::nullopt, "a"});
    EXPECT_FALSE(allowed.testOption(QFileDialog::ReadOnly));
    const SaveFileDialog forbidden({false, {}, std::nullopt, "a"});
    EXPECT_TRUE(forbidden.testOption(QFileDialog::ReadOnly));
}

TEST_F(SaveFileDialogTest, leavesTheItemsThatItListsAlone) {
    folder.file("other.text", "kept");
    SaveFileDialog& dialog = show("a.text");
    for (const QAbstractItemView* const view : platform::folderViewsOf(dialog)) {
        EXPECT_EQ(view->dragDropMode(), QAbstractItemView::NoDragDrop);
        EXPECT_FALSE(view->dragEnabled());
        EXPECT_FALSE(view->viewport()->acceptDrops());
        EXPECT_EQ(view->editTriggers(), QAbstractItemView::NoEditTriggers);
        EXPECT_EQ(view->contextMenuPolicy(), Qt::NoContextMenu);
    }
    QAbstractItemView& view = list(dialog);
    ASSERT_TRUE(eventually([&] { return view.model()->rowCount(view.rootIndex()) > 0; }));
    view.setCurrentIndex(view.model()->index(0, 0, view.rootIndex()));
    for (const int key : {Qt::Key_Delete, Qt::Key_F2}) {
        QTest::keyClick(&view, static_cast<Qt::Key>(key));
        settle();
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "it asks whether to delete";
        EXPECT_EQ(view.findChild<QLineEdit*>(), nullptr) << "it offers to rename";
    }
    EXPECT_EQ(contentsOfFile(folder.path("other.text")), "kept");
}

TEST_F(SaveFileDialogTest, hasIconsForKindsAndNotForContents) {
    const SaveFileDialog& dialog = show("a.text");
    const QAbstractFileIconProvider& icons = *dialog.iconProvider();
    const auto type = [&](const std::string& path) {
        return icons.type(QFileInfo(QString::fromStdString(path))).toStdString();
    };
    EXPECT_EQ(type(folder.file("script", "#!/bin/sh\n")), "File");
    EXPECT_EQ(type(folder.file("picture.png")), "File");
    EXPECT_EQ(type(folder.folder("f")), "Folder");
    EXPECT_EQ(type(folder.symlink("link", "nowhere")), "Link");
    EXPECT_EQ(type(folder.fifo("fifo")), "Other");
    EXPECT_FALSE(icons.icon(QFileInfo(QString::fromStdString(folder.path("script")))).isNull());
}

} // namespace
} // namespace tolvane::tests
