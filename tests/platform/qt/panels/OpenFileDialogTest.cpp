#include "platform/qt/panels/OpenFileDialog.h"

#include "tests/platform/qt/panels/DialogTest.h"

#include <QComboBox>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tolvane::tests {
namespace {

using platform::AlertBox;
using platform::OpenFileDialog;
using platform::OpenPanelSettings;
using platform::URL;

class OpenFileDialogTest : public DialogTest {
protected:
    OpenFileDialog& show(OpenPanelSettings settings) {
        settings.folder = URL::fileURLWithPath(folder.path());
        shown = std::make_unique<OpenFileDialog>(settings);
        shown->show();
        return *shown;
    }

    OpenFileDialog& showForAnything() { return show({true, true, true, false, {}}); }

    static void open(const OpenFileDialog& dialog) {
        QTest::mouseClick(&button(dialog, QDialogButtonBox::Open), Qt::LeftButton);
    }

    static std::vector<URL> opened(const OpenFileDialog& dialog) {
        open(dialog);
        return dialog.chosenURLs();
    }

    std::vector<URL> here(const std::vector<std::string>& names) const {
        std::vector<URL> urls;
        urls.reserve(names.size());
        for (const std::string& name : names) {
            urls.push_back(URL::fileURLWithPath(folder.path(name)));
        }
        return urls;
    }

    static QComboBox& unreadableNames(const OpenFileDialog& dialog) {
        return *dialog.findChild<QComboBox*>(QStringLiteral("unreadableNames"));
    }

    std::unique_ptr<OpenFileDialog> shown;
};

TEST_F(OpenFileDialogTest, answersAClickedFile) {
    folder.file("plain");
    const OpenFileDialog& dialog = show({});
    EXPECT_FALSE(button(dialog, QDialogButtonBox::Open).isEnabled());
    click(dialog, "plain");
    EXPECT_EQ(nameField(dialog).text(), "plain");
    EXPECT_EQ(opened(dialog), here({"plain"}));
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(OpenFileDialogTest, answersADoubleClickedFile) {
    folder.file("plain");
    const OpenFileDialog& dialog = showForAnything();
    doubleClick(dialog, "plain");
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.chosenURLs(), here({"plain"}));
}

TEST_F(OpenFileDialogTest, answersATypedNameOnReturn) {
    folder.file("plain");
    const OpenFileDialog& dialog = show({});
    type(dialog, "plain");
    QTest::keyClick(&nameField(dialog), Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.chosenURLs(), here({"plain"}));
}

TEST_F(OpenFileDialogTest, entersADoubleClickedFolder) {
    folder.folder("inner");
    folder.file("inner/deep");
    const OpenFileDialog& dialog = showForAnything();
    doubleClick(dialog, "inner");
    ASSERT_TRUE(dialog.isVisible());
    EXPECT_EQ(dialog.directory().absolutePath().toStdString(), folder.path("inner"));
    EXPECT_EQ(nameField(dialog).text(), "");
    EXPECT_FALSE(button(dialog, QDialogButtonBox::Open).isEnabled());
    click(dialog, "deep");
    EXPECT_EQ(opened(dialog), here({"inner/deep"}));
}

TEST_F(OpenFileDialogTest, entersFoldersThatMayNotBeChosen) {
    folder.folder("inner");
    const OpenFileDialog& dialog = show({});
    click(dialog, "inner");
    open(dialog);
    ASSERT_TRUE(dialog.isVisible());
    EXPECT_EQ(dialog.directory().absolutePath().toStdString(), folder.path("inner"));
    EXPECT_TRUE(dialog.chosenURLs().empty());
}

TEST_F(OpenFileDialogTest, takesTypedNamesAndSeveralInQuotes) {
    folder.file("a");
    folder.folder("b c");
    folder.folder("inner");
    for (const auto& [typed, names] :
         {std::pair<QString, std::vector<std::string>>("inner", {"inner"}),
          {"\"a\" \"b c\"", {"a", "b c"}}}) {
        const OpenFileDialog& dialog = showForAnything();
        type(dialog, typed);
        EXPECT_EQ(opened(dialog), here(names));
    }
}

TEST_F(OpenFileDialogTest, choosesOneOnlyUnlessSeveralAreAllowed) {
    folder.file("a");
    folder.file("b");
    const OpenFileDialog& dialog = show({false, true, true, false, {}});
    click(dialog, "a");
    click(dialog, "b", Qt::ControlModifier);
    EXPECT_EQ(opened(dialog), here({"b"}));
}

TEST_F(OpenFileDialogTest, choosesItemsOfEveryKindAndSeveralAtOnce) {
    folder.file("a \"quoted\" name");
    folder.file("plain");
    folder.file(".hidden");
    folder.folder("inner");
    folder.symlink("dangling", "nowhere");
    folder.symlink("leading", "inner");
    folder.socket("socket");
    folder.fifo("fifo");
    for (const std::vector<std::string>& names :
         {std::vector<std::string>{"inner"},
          {".hidden"},
          {"inner", "a \"quoted\" name", "plain"},
          {"dangling", "leading"},
          {"socket", "fifo"}}) {
        SCOPED_TRACE(names.front());
        const OpenFileDialog& dialog = showForAnything();
        for (const std::string& name : names) {
            click(
                dialog, QString::fromStdString(name),
                name == names.front() ? Qt::NoModifier : Qt::ControlModifier);
        }
        EXPECT_THAT(opened(dialog), testing::UnorderedElementsAreArray(here(names)));
    }
}

TEST_F(OpenFileDialogTest, hidesHiddenFilesUnlessAsked) {
    folder.file(".hidden");
    folder.file("plain");
    const OpenFileDialog& dialog = show({});
    ASSERT_TRUE(eventually([&] { return row(dialog, "plain").isValid(); }));
    EXPECT_FALSE(row(dialog, ".hidden").isValid());
}

TEST_F(OpenFileDialogTest, followsLinksWhenAsked) {
    folder.symlink("leading", folder.file("real"));
    const OpenFileDialog& dialog = show({false, false, false, true, {}});
    click(dialog, "leading");
    EXPECT_EQ(opened(dialog), here({"real"}));
}

TEST_F(OpenFileDialogTest, offersNamesThatAreNotUtf8) {
    folder.file("caf\xE9");
    folder.folder("caf\xEA");
    folder.file("plain");
    const OpenFileDialog& dialog = showForAnything();
    QComboBox& names = unreadableNames(dialog);
    EXPECT_TRUE(names.isVisible());
    ASSERT_EQ(names.count(), 3);
    EXPECT_EQ(names.itemText(1), "caf\uFFFD");
    names.setFocus();
    QTest::keyClick(&names, Qt::Key_Down);
    QTest::keyClick(&names, Qt::Key_Down);
    EXPECT_TRUE(button(dialog, QDialogButtonBox::Open).isEnabled());
    EXPECT_EQ(opened(dialog), here({"caf\xEA"}));
}

TEST_F(OpenFileDialogTest, forgetsAnUnreadableNameWhenAnotherIsSelected) {
    folder.file("caf\xE9");
    folder.file("plain");
    const OpenFileDialog& dialog = showForAnything();
    QComboBox& names = unreadableNames(dialog);
    names.setFocus();
    QTest::keyClick(&names, Qt::Key_Down);
    click(dialog, "plain");
    EXPECT_EQ(names.currentIndex(), 0);
    EXPECT_EQ(opened(dialog), here({"plain"}));
}

TEST_F(OpenFileDialogTest, hidesTheListOfUnreadableNamesWhereThereAreNone) {
    folder.folder("inner");
    folder.file("inner/\xFF");
    const OpenFileDialog& dialog = showForAnything();
    EXPECT_FALSE(unreadableNames(dialog).isVisible());
    doubleClick(dialog, "inner");
    EXPECT_TRUE(unreadableNames(dialog).isVisible());
}

TEST_F(OpenFileDialogTest, findsATypedNameAsItIsShown) {
    folder.file("caf\xE9");
    const OpenFileDialog& dialog = showForAnything();
    nameField(dialog).setText("caf\uFFFD");
    EXPECT_EQ(opened(dialog), here({"caf\xE9"}));
}

TEST_F(OpenFileDialogTest, reportsATypedNameThatIsNotThereAndMakesNothing) {
    const OpenFileDialog& dialog = showForAnything();
    EXPECT_TRUE(dialog.testOption(QFileDialog::ReadOnly));
    type(dialog, "absent");
    EXPECT_TRUE(button(dialog, QDialogButtonBox::Open).isEnabled());
    open(dialog);
    EXPECT_TRUE(theShownDialog<AlertBox>().text().contains("“absent”"));
    answerAlert(0);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_TRUE(dialog.chosenURLs().empty());
}

TEST_F(OpenFileDialogTest, hasNothingToOpenOnceTheNameWasRemoved) {
    folder.file("plain");
    const OpenFileDialog& dialog = showForAnything();
    click(dialog, "plain");
    nameField(dialog).setFocus();
    nameField(dialog).selectAll();
    QTest::keyClick(&nameField(dialog), Qt::Key_Backspace);
    ASSERT_EQ(nameField(dialog).text(), "");
    EXPECT_FALSE(button(dialog, QDialogButtonBox::Open).isEnabled());
    QTest::keyClick(&nameField(dialog), Qt::Key_Return);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_TRUE(dialog.chosenURLs().empty());
}

} // namespace
} // namespace tolvane::tests
