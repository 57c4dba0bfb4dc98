#include "interface/ui_DocumentWindow.h"
#include "interface/ui_PrivacyWindow.h"
#include "interface/ui_StartWindow.h"
#include "platform/qt/text/TextFieldWidget.h"
#include "platform/qt/text/TextViewWidget.h"
#include "platform/qt/windows/MainWindow.h"
#include "platform/qt/windows/SelectorActions.h"
#include "tests/interface/Scenes.h"

#include <QAbstractButton>
#include <QLabel>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QTextBrowser>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>

namespace tolvane::tests {
namespace {

void expectEveryOutletConnected(const platform::ContentController& content) {
    for (const auto& entry : content.outlets().entries()) {
        EXPECT_TRUE(std::visit([](const auto* outlet) { return outlet->isConnected(); }, entry.outlet))
            << entry.name;
    }
}

/// What applications and windows do themselves.
const std::set<std::string> generalSelectors{
    "openDocument:",
    "clearRecentDocuments:",
    "terminate:",
    "performClose:",
    "performMiniaturize:",
    "toggleFullScreen:",
    "undo:",
    "redo:",
    "cut:",
    "copy:",
    "paste:",
    "selectAll:",
    "openBrowserWindow:",
    "closeBrowserWindow:",
    "findBookmarks:",
    "openSupport:",
    "openUpdates:",
    "openPrivacy:",
    "orderFrontStandardAboutPanel:"};

std::set<std::string> selectorsIn(const QMainWindow& window) {
    std::set<std::string> selectors;
    for (const QObject* const object : window.findChildren<QObject*>()) {
        if (const QString selector = platform::selectorOf(*object); !selector.isEmpty()) {
            selectors.insert(selector.toStdString());
        }
    }
    return selectors;
}

/// The details form with texts of its own.
struct FormWithTexts {
    void setupUi(QMainWindow* window) const {
        Ui::DocumentWindow().setupUi(window);
        window->findChild<QPlainTextEdit*>("permsTextbox")->setPlainText("not known");
        window->findChild<QPlainTextEdit*>("bookmarkTextbox")->setPlainText("(couldn't get bookmark)");
    }
};

/// The forms, each in a window of its own.
class FormsTest : public testing::Test {
protected:
    FormsTest() {
        setUpForm<Ui::DocumentWindow>(documentForm);
        setUpForm<Ui::ResolverWindow>(resolverForm);
        setUpForm<Ui::StartWindow>(startForm);
        setUpForm<Ui::PrivacyWindow>(privacyForm);
        setUpForm<Ui::FoundBookmarksWindow>(foundBookmarksForm);
    }

    QApplication& qtApplication = application();
    QMainWindow documentForm;
    QMainWindow resolverForm;
    QMainWindow startForm;
    QMainWindow privacyForm;
    QMainWindow foundBookmarksForm;
    const std::array<QMainWindow*, 5> all{
        &documentForm, &resolverForm, &startForm, &privacyForm, &foundBookmarksForm};
};

TEST_F(FormsTest, haveAWidgetForEachOutlet) {
    expectEveryOutletConnected(*DetailsScene<Ui::DocumentWindow>().scene.content);
    expectEveryOutletConnected(*ResolverScene().scene.content);
    expectEveryOutletConnected(*FoundBookmarksScene().scene.content);
}

TEST_F(FormsTest, ofTheResolverOfferToRevealAndPreviewOnceAnItemIsFound) {
    const ResolverScene resolver;
    resolver.scene.controller->showWindow();
    resolver::TRViewController& controller = *resolver.scene.content;
    const auto& reveal = resolver.scene.child<QAbstractButton>("reveal");
    const auto& preview = resolver.scene.child<QAbstractButton>("preview");
    auto& resolve = resolver.scene.child<QAbstractButton>("resolve");
    EXPECT_FALSE(reveal.isEnabled());
    EXPECT_FALSE(preview.isEnabled());
    EXPECT_TRUE(resolve.isEnabled());

    controller.inputTextbox->setString(ResolverWindow::garbage);
    resolve.click();
    EXPECT_FALSE(reveal.isEnabled());

    controller.inputTextbox->setString(ResolverWindow::bookmarkText);
    resolve.click();
    EXPECT_TRUE(reveal.isEnabled());
    EXPECT_TRUE(preview.isEnabled());

    controller.inputTextbox->setString(ResolverWindow::garbage);
    resolve.click();
    EXPECT_TRUE(reveal.isEnabled()) << "the item found last is kept";
}

TEST_F(FormsTest, ofTheDetailsOfferToCopyWhatThereIs) {
    const DetailsScene<Ui::DocumentWindow> details;
    details::ViewController& controller = *details.scene.content;
    const QWidget& widget = *details.scene.widget;
    const auto isOffered = [&widget](const char* selector) {
        for (const QAbstractButton* const button : widget.findChildren<QAbstractButton*>()) {
            if (platform::selectorOf(*button) == selector) {
                return button->isEnabled();
            }
        }
        ADD_FAILURE() << "no button for " << selector;
        return false;
    };
    EXPECT_FALSE(isOffered("copyPath:"));
    EXPECT_TRUE(isOffered("saveCommand:"));
    controller.pathTextbox->setStringValue("/a");
    QCoreApplication::processEvents();
    EXPECT_TRUE(isOffered("copyPath:"));
    EXPECT_FALSE(isOffered("copyPerms:"));
}

TEST_F(FormsTest, keepCopyAndReportTheirOwnTextsWhereNothingTakesTheirPlace) {
    DetailsScene<FormWithTexts> window;
    DetailsWindow& details = window.services;
    details.fileManager.answer = platform::Dictionary{{"NSFileSize", std::uint64_t{1}}};
    details.bookmarks.made = std::unexpected(platform::posixError(EIO));
    details.open();
    window.scene.controller->setDocument(details.document());
    window.scene.controller->showWindow();
    details::ViewController& controller = *window.scene.content;
    EXPECT_EQ(controller.pathTextbox->stringValue(), "/data/notes.txt");
    EXPECT_EQ(controller.permsTextbox->stringValue(), "not known");
    controller.copyPerms(nullptr);
    EXPECT_THAT(details.pasteboard.texts(), testing::ElementsAre("not known"));

    controller.saveCommand(nullptr);
    details.savePanels.newest()->answer(
        platform::modalResponseOK, platform::URL::fileURLWithPath("/out.text"));
    EXPECT_THAT(
        details.textFiles.written.at("/out.text"),
        testing::HasSubstr("\n\nBookmark (Base-64):\n(couldn't get bookmark)\n\n"
                           "Bookmark path: (couldn't get bookmark)\n\n"));
}

TEST_F(FormsTest, nameOnlyActionsThatExist) {
    DetailsWindow details;
    details.open();
    ResolverWindow resolver;
    resolver.open();
    FoundBookmarksWindow found;
    found.search("/a");
    for (const QMainWindow* const window : all) {
        for (const std::string& selector : selectorsIn(*window)) {
            EXPECT_TRUE(
                generalSelectors.contains(selector) || details.controller().actionForSelector(selector)
                || resolver.controller().actionForSelector(selector)
                || found.controller().actionForSelector(selector))
                << window->objectName().toStdString() << ' ' << selector;
        }
    }
}

TEST_F(FormsTest, offerEveryActionInTheMenus) {
    QMainWindow window;
    Ui::MenuBar().setupUi(&window);
    const std::set<std::string> offered = selectorsIn(window);
    for (const char* const selector :
         {"copyPath:",       "copyVolfs:",     "copyFrefURL:",   "copyPerms:",     "copyBookmark:",
          "copyXattrs:",     "saveCommand:",   "reload:",        "copyShellWord:", "incFontSize:",
          "decFontSize:",    "analyseButton:", "resolveButton:", "revealButton:",  "previewButton:",
          "openFileButton:", "openFinding:",   "resolveAll:",    "stopResolving:", "exportCSV:",
          "exportJSON:"}) {
        EXPECT_TRUE(offered.contains(selector)) << selector;
    }
    for (const std::string& selector : generalSelectors) {
        EXPECT_TRUE(offered.contains(selector)) << selector;
    }
}

TEST_F(FormsTest, showInTheHelpMenuWhetherThereWasAnUpdateCheck) {
    Shell shell;
    platform::MainWindow window(shell.application, "Test");
    setUpForm<Ui::StartWindow>(window);
    window.formIsComplete();
    platform::MenuItem* const item = shell.application.helpMenu()->itemWithTitle("Update not checked");
    ASSERT_NE(item, nullptr);
    item->setState(platform::MenuItemState::on);
    item->setTitle("Checked for update");
    const auto* const shown = window.findChild<QAction*>("actionUpdateChecked");
    EXPECT_EQ(shown->text(), "Checked for update");
    EXPECT_TRUE(shown->isChecked());
    EXPECT_FALSE(shown->isEnabled()) << "it only shows something";
}

TEST_F(FormsTest, giveNoTwoItemsTheSameKey) {
    std::map<QString, QString> itemsByKey;
    for (const QAction* const item : documentForm.findChildren<QAction*>()) {
        if (!item->shortcut().isEmpty()) {
            const auto [other, isNew] = itemsByKey.emplace(item->shortcut().toString(), item->text());
            EXPECT_TRUE(isNew) << item->text().toStdString() << " and " << other->second.toStdString();
        }
    }
    EXPECT_GT(itemsByKey.size(), 20U);
}

/// Keys that would never arrive, or would do something else than in other programs.
TEST_F(FormsTest, leaveTheKeysOfInputMethodsAndQtAlone) {
    const std::set<QString> taken{
        "Ctrl+Space",   "Shift+Space",  "Ctrl+Shift+Space", // switching input methods
        "Ctrl+Shift+U", "Ctrl+Shift+E", "Ctrl+.",           // characters by number and by name
        "Ctrl+;",       "Ctrl+Shift+F", "Ctrl+`",           // histories, scripts, switching
        "Ctrl+Y",                                           // redoing
        "Ctrl+K",       "Ctrl+U",       "Ctrl+H",           // deleting in text
        "Ctrl+Tab",     "Ctrl+F4",      "F1",
        "F10", // going through windows, help, menus
    };
    for (const QAction* const item : documentForm.findChildren<QAction*>()) {
        const QString key = item->shortcut().toString();
        EXPECT_FALSE(taken.contains(key)) << item->text().toStdString();
        EXPECT_FALSE(key.contains("Alt+") || key.contains("Meta+")) << item->text().toStdString();
    }
}

TEST_F(FormsTest, nameTheSameKeysInToolTipsAsInTheMenus) {
    int keysNamed = 0;
    for (const QMainWindow* const window : {&documentForm, &resolverForm}) {
        for (const QAbstractButton* const button :
             window->centralWidget()->findChildren<QAbstractButton*>()) {
            for (const QAction* const item : window->findChildren<QAction*>()) {
                if (!platform::selectorOf(*item).isEmpty()
                    && platform::selectorOf(*item) == platform::selectorOf(*button)) {
                    const QString key = item->shortcut().toString().replace("-", "−");
                    EXPECT_TRUE(button->toolTip().endsWith("(" + key + ")"))
                        << button->toolTip().toStdString();
                    ++keysNamed;
                }
            }
        }
    }
    EXPECT_EQ(keysNamed, 18);
}

TEST_F(FormsTest, nameEveryControlForScreenReaders) {
    for (const QMainWindow* const window : all) {
        for (const QWidget* const widget : window->findChildren<QWidget*>()) {
            if (widget->inherits("QPlainTextEdit") || widget->inherits("QTextEdit")
                || widget->inherits("QListWidget") || widget->inherits("QTreeView")
                || widget->inherits("QLineEdit") || widget->inherits("QProgressBar")) {
                EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->objectName().toStdString();
            }
        }
        std::set<QString> names;
        for (const QAbstractButton* const button :
             window->centralWidget()->findChildren<QAbstractButton*>()) {
            const QString name =
                button->accessibleName().isEmpty() ? button->text() : button->accessibleName();
            EXPECT_FALSE(name.isEmpty()) << button->objectName().toStdString();
            EXPECT_TRUE(names.insert(name).second) << "two buttons are named " << name.toStdString();
        }
    }
}

TEST_F(FormsTest, explainTheOddTerms) {
    QMainWindow& window = documentForm;
    for (const char* const name : {"volfsPathTextbox", "frURLTextbox", "refCountTextbox", "permsTextbox"}) {
        EXPECT_FALSE(window.findChild<QWidget*>(name)->toolTip().isEmpty()) << name;
    }
}

TEST_F(FormsTest, letTheKeyboardReachEveryField) {
    QMainWindow& window = documentForm;
    for (const auto* const field : childrenOf<platform::TextFieldWidget>(window)) {
        EXPECT_TRUE((field->focusPolicy() & Qt::TabFocus) != 0) << field->objectName().toStdString();
        EXPECT_TRUE(field->isReadOnly()) << field->objectName().toStdString();
        EXPECT_TRUE(field->tabChangesFocus()) << field->objectName().toStdString();
    }
    for (const auto* const view : childrenOf<platform::TextViewWidget>(window)) {
        EXPECT_TRUE((view->focusPolicy() & Qt::TabFocus) != 0) << view->objectName().toStdString();
        EXPECT_TRUE(view->tabChangesFocus()) << view->objectName().toStdString();
    }
}

TEST_F(FormsTest, ofPrivacyHoldATextToReadAndSelect) {
    const auto* const statement = privacyForm.findChild<QTextBrowser*>("privacyStatement");
    ASSERT_NE(statement, nullptr);
    EXPECT_TRUE(statement->isReadOnly());
    EXPECT_TRUE((statement->textInteractionFlags() & Qt::TextSelectableByMouse) != 0);
    EXPECT_TRUE((statement->textInteractionFlags() & Qt::TextSelectableByKeyboard) != 0);
    EXPECT_TRUE(statement->tabChangesFocus());
    const std::string text = statement->toPlainText().toStdString();
    for (const char* const said :
         {"Its contents are not read", "~/.config/tolvane", "the last ten files", "noUpdateCheck=true",
          "every 12 hours", "IP address", "language"}) {
        EXPECT_THAT(text, testing::HasSubstr(said));
    }
    // The theme chooses the colours.
    EXPECT_FALSE(statement->toHtml().contains("color:"));
}

TEST_F(FormsTest, fitASmallScreen) {
    for (const QMainWindow* const window : all) {
        EXPECT_LE(window->minimumSizeHint().width(), 640) << window->objectName().toStdString();
        EXPECT_LE(window->minimumSizeHint().height(), 480) << window->objectName().toStdString();
    }
}

TEST_F(FormsTest, haveTheButtonsOfTheDetailsInReachOnASmallScreen) {
    QMainWindow& window = documentForm;
    // At twice the scale, on a screen 1280 pixels wide.
    window.resize(590, 350);
    window.show();
    QCoreApplication::processEvents();
    ASSERT_EQ(window.size(), QSize(590, 350));
    const QWidget& seen = *window.findChild<QScrollArea*>("detailsArea")->viewport();
    int buttons = 0;
    for (const QAbstractButton* const button : seen.findChildren<QAbstractButton*>()) {
        const QRect place(button->mapTo(&seen, QPoint()), button->size());
        EXPECT_GE(place.left(), 0) << button->objectName().toStdString();
        EXPECT_LE(place.right(), seen.rect().right()) << button->objectName().toStdString();
        ++buttons;
    }
    EXPECT_GE(buttons, 6);
    const QAbstractButton& save = *window.findChild<QAbstractButton*>("saveButton");
    EXPECT_TRUE(window.rect().contains({save.mapTo(&window, QPoint()), save.size()}));
}

} // namespace
} // namespace tolvane::tests
