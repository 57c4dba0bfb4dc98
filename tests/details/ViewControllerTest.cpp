#include "details/ViewController.h"

#include "platform/model/WindowController.h"
#include "tests/support/DetailsWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <any>
#include <cerrno>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using details::ViewController;
using testing::ElementsAre;

class ViewControllerTest : public testing::Test {
protected:
    ViewControllerTest() { details.open(); }

    ViewController& controller() { return details.controller(); }

    std::shared_ptr<ViewController> unconnected() {
        return ViewController::initWithCoder({}, details.detailsSources());
    }

    const platform::AttributedString& styledAttributes() {
        return controller().inodeText->textStorage()->attributedString();
    }

    static platform::AttributedString inOutputStyle(const std::string& text, double size) {
        return {text, {platform::Color::textColor, platform::Font::systemFontOfSize(size)}};
    }

    void perform(std::string_view selector) {
        const auto action = controller().actionForSelector(selector);
        ASSERT_TRUE(action) << selector;
        action(nullptr);
    }

    /// The size is stored, and the text restyled, although the size may be unchanged.
    static void expectChange(DetailsWindow& window, std::string_view selector, double size) {
        window.defaults.setDouble(-1, "fontSize");
        platform::TextStorage& text = *window.controller().inodeText->textStorage();
        text.setAttributedString({"unstyled", {}});
        window.controller().actionForSelector(selector)(nullptr);
        EXPECT_EQ(window.controller().theFontSize(), size);
        EXPECT_EQ(window.defaults.doubleForKey("fontSize"), size);
        EXPECT_EQ(text.attributedString(), inOutputStyle("unstyled", size)) << size;
    }

    void answerSaving(const char* path) {
        details.savePanels.newest()->answer(platform::modalResponseOK, platform::URL::fileURLWithPath(path));
    }

    DetailsWindow details;
};

using ViewControllerDeathTest = ViewControllerTest;

// Making one

TEST_F(ViewControllerTest, startsWithItsInitialValues) {
    const auto fromNib =
        ViewController::initWithNibName("Details", &details.bundle, details.detailsSources());
    EXPECT_EQ(fromNib->saveString(), "");
    EXPECT_EQ(fromNib->theDate(), std::nullopt);
    EXPECT_EQ(fromNib->theFontSize(), 12.0);
    EXPECT_EQ(fromNib->nibName(), "Details");
    EXPECT_EQ(fromNib->bundle(), &details.bundle);
    const auto fromCoder = ViewController::initWithCoder({"Scene"}, details.detailsSources());
    EXPECT_EQ(fromCoder->theFontSize(), 12.0);
    EXPECT_EQ(fromCoder->nibName(), "Scene");
}

TEST_F(ViewControllerTest, declaresItsOutletsInTheWindowsOrder) {
    std::vector<std::string> names;
    for (const auto& entry : controller().outlets().entries()) {
        names.emplace_back(entry.name);
    }
    EXPECT_THAT(
        names,
        ElementsAre(
            "pathTextbox", "volfsPathTextbox", "frURLTextbox", "urlTotalSize", "urlDataSize", "xattrSize",
            "filemanSize", "urlXattrSize", "filemanTotalSize", "inodeScroller", "inodeText", "permsTextbox",
            "ownerNameTextbox", "ownerIDTextbox", "groupNameTextbox", "groupIDTextbox", "createdTextbox",
            "modifiedTextbox", "typeTextbox", "refCountTextbox", "bookmarkScroller", "bookmarkTextbox",
            "bookmarkPathTextbox", "attributesInWords", "wordsTable", "wordsText", "wordsWithBytes"));
}

// Gathering, on every appearance

TEST_F(ViewControllerTest, showsEveryTextOfAPassInTheFieldOfItsName) {
    const details::DetailsTexts texts = details.gather().texts;
    const details::DetailsTexts shown = controller().reportFields().texts;
    for (const auto& [name, text] : details::DetailsTexts::all) {
        EXPECT_EQ(shown.*text, texts.*text) << name;
        EXPECT_FALSE((texts.*text).value().empty()) << name;
    }
    EXPECT_EQ(controller().theDate(), platform::Date(0));
}

TEST_F(ViewControllerTest, keepsTheTextOfEveryFieldThatAPassDoesNotReach) {
    const details::DetailsTexts before = controller().reportFields().texts;
    DetailsWindow other;
    other.fileManager.answer = platform::Dictionary{{"NSFileSize", std::uint64_t{1}}};
    other.bookmarks.made = std::unexpected(platform::posixError(EIO));
    other.open();
    const details::DetailsTexts gathered = other.gather().texts;
    const details::DetailsTexts untouched = other.controller().reportFields().texts;
    for (const auto& [name, text] : details::DetailsTexts::all) {
        if (!(gathered.*text)) {
            EXPECT_EQ(untouched.*text, "") << name;
        }
    }
    other.controller().permsTextbox->setStringValue(*before.permsTextbox);
    other.controller().volfsPathTextbox->setStringValue(*before.volfsPathTextbox);
    other.controller().bookmarkTextbox->setString(*before.bookmarkTextbox);
    other.showAgain();
    const details::DetailsTexts kept = other.controller().reportFields().texts;
    EXPECT_EQ(kept.permsTextbox, before.permsTextbox);
    EXPECT_EQ(kept.volfsPathTextbox, before.volfsPathTextbox);
    EXPECT_EQ(kept.bookmarkTextbox, before.bookmarkTextbox);
    EXPECT_EQ(kept.bookmarkPathTextbox, "(couldn't get bookmark)");
}

TEST_F(ViewControllerTest, becomesTheWindowsDelegate) {
    EXPECT_EQ(details.window().delegate(), details.sharedController());
    details.window().setDelegate({});
    details.showAgain();
    EXPECT_EQ(details.window().delegate(), details.sharedController());
}

TEST_F(ViewControllerTest, appendsTheAttributesAgainAtEachAppearance) {
    const std::string once = details.attributesText();
    details.showAgain();
    EXPECT_EQ(details.attributesText(), once + once);
    EXPECT_EQ(controller().theDate(), platform::Date(1));
}

TEST_F(ViewControllerTest, givesTheBookmarkAColourAndNoFont) {
    EXPECT_EQ(
        controller().bookmarkTextbox->textStorage()->attributedString(),
        platform::AttributedString("Ym9va21hcms=", {platform::Color::textColor, {}}));
}

TEST_F(ViewControllerTest, leavesAWindowWithoutSizeRecordsUntouched) {
    DetailsWindow unread;
    unread.makeWindow();
    for (const auto& [name, outlet] : unread.controller().outlets().entries()) {
        if (const auto* const field = std::get_if<platform::Outlet<platform::TextField>*>(&outlet)) {
            (**field)->setStringValue("initial " + std::string(name));
        } else if (const auto* const view = std::get_if<platform::Outlet<platform::TextView>*>(&outlet)) {
            (**view)->setString("initial " + std::string(name));
        }
    }
    const auto shown = [&unread] { return unread.controller().reportFields().texts; };
    unread.document()->showWindows();
    unread.showAgain();
    for (const auto& [name, text] : details::DetailsTexts::all) {
        EXPECT_EQ(shown().*text, "initial " + std::string(name));
    }
    EXPECT_EQ(unread.controller().pathTextbox->note(), "");
    EXPECT_EQ(unread.controller().theDate(), std::nullopt);
    EXPECT_TRUE(unread.log.empty());
}

TEST_F(ViewControllerTest, emptiesTheReportAtTheStartOfEveryPass) {
    controller().buildReport();
    EXPECT_NE(controller().saveString(), "");
    details.showAgain();
    EXPECT_EQ(controller().saveString(), "");
}

TEST_F(ViewControllerTest, endsQuietlyWithoutWindowControllerOrDocument) {
    const auto controller = details.sharedController();
    controller->buildReport();
    details.document()->close();
    ASSERT_EQ(controller->view().window()->windowController(), nullptr);
    controller->pathTextbox->setStringValue("left alone");
    controller->gatherDetails();
    EXPECT_EQ(controller->saveString(), "");
    EXPECT_EQ(controller->pathTextbox->stringValue(), "left alone");

    const auto undocumented = unconnected();
    platform::connectOutlets(*undocumented);
    const auto holder = platform::WindowController::make(std::make_shared<platform::Window>(), undocumented);
    undocumented->gatherDetails();
    EXPECT_EQ(undocumented->theDate(), std::nullopt);

    const auto windowless = ViewController::initWithNibName("Details", nullptr, details.detailsSources());
    windowless->gatherDetails();
    EXPECT_EQ(windowless->theDate(), std::nullopt);
}

TEST_F(ViewControllerTest, passesTheRepresentedObjectThrough) {
    EXPECT_FALSE(controller().representedObject().has_value());
    controller().setRepresentedObject(std::string("object"));
    EXPECT_EQ(std::any_cast<std::string>(controller().representedObject()), "object");
}

TEST_F(ViewControllerDeathTest, stopsAtAnUnconnectedOutlet) {
    const auto bare = unconnected();
    const auto holder = platform::WindowController::make(std::make_shared<platform::Window>(), bare);
    holder->setDocument(details.document());
    EXPECT_DEATH(bare->gatherDetails(), "^tolvane: fatal: outlet pathTextbox is not connected");
}

TEST_F(ViewControllerDeathTest, stopsAtADocumentOfAnotherClass) {
    struct OtherDocument final : platform::Document {
        bool readFromURL(const platform::URL&, std::string_view, platform::Error*) override { return true; }
        void makeWindowControllers() override {}
    };
    const auto other = std::make_shared<OtherDocument>();
    details.document()->windowControllers().front()->setDocument(other);
    EXPECT_DEATH(controller().gatherDetails(), "^tolvane: fatal: .*document is of the wrong class");
}

// Saving

TEST_F(ViewControllerTest, proposesTheTitleInTheHomeFolder) {
    details.window().setTitle("Notes");
    perform("saveCommand:");
    const auto panel = details.savePanels.newest();
    ASSERT_TRUE(panel);
    EXPECT_TRUE(panel->isWaiting());
    EXPECT_THAT(
        panel->calls(), ElementsAre(
                            "setCanCreateDirectories", "setAllowedFileTypes", "setDirectoryURL",
                            "setNameFieldStringValue", "setSubject", "beginWithCompletionHandler"));
    EXPECT_TRUE(panel->canCreateDirectories());
    EXPECT_THAT(panel->allowedFileTypes(), ElementsAre("text", "txt"));
    EXPECT_EQ(panel->directoryURL(), platform::URL::fileURLWithPath("/home/demo"));
    EXPECT_EQ(panel->nameFieldStringValue(), "Notes-tolvane.text");
    panel->answer(0, std::nullopt);
}

TEST_F(ViewControllerTest, writesTheReportOfTheMomentOfTheAnswer) {
    controller().saveCommand(nullptr);
    controller().permsTextbox->setStringValue("changed since");
    answerSaving("/out.text");
    ASSERT_EQ(details.textFiles.written.size(), 1U);
    const std::string& written = details.textFiles.written.at("/out.text");
    EXPECT_NE(written.find("Posix permissions (octal): changed since\n"), std::string::npos);
    EXPECT_EQ(written, controller().saveString());
    EXPECT_TRUE(written.starts_with("Details for file")) << "there is no byte-order mark";
    EXPECT_EQ(details.savePanels.newest(), nullptr) << "the panel is released";
}

TEST_F(ViewControllerTest, writesNothingWhenThePanelIsCancelledOrHasNoURL) {
    controller().buildReport();
    const std::string before = controller().saveString();
    controller().permsTextbox->setStringValue("changed since");

    controller().saveCommand(nullptr);
    details.savePanels.newest()->answer(0, platform::URL::fileURLWithPath("/out.text"));
    controller().saveCommand(nullptr);
    details.savePanels.newest()->answer(platform::modalResponseOK, std::nullopt);

    EXPECT_TRUE(details.textFiles.written.empty());
    EXPECT_EQ(controller().saveString(), before);
}

TEST_F(ViewControllerTest, appendsAFailedWritesDescriptionToTheAttributes) {
    details.textFiles.failure = platform::posixError(EACCES);
    const std::string before = details.attributesText();
    controller().saveCommand(nullptr);
    answerSaving("/no/out.text");
    EXPECT_EQ(styledAttributes(), inOutputStyle(before + "Permission denied", 12));

    details.textFiles.failure.reset();
    controller().saveCommand(nullptr);
    answerSaving("/out.text");
    EXPECT_NE(details.textFiles.written.at("/out.text").find("Permission denied\non "), std::string::npos)
        << "the next report carries the message";
}

TEST_F(ViewControllerTest, savesAfterItsWindowWasClosed) {
    controller().saveCommand(nullptr);
    const auto panel = details.savePanels.newest();
    details.document()->close();
    panel->answer(platform::modalResponseOK, platform::URL::fileURLWithPath("/out.text"));
    EXPECT_TRUE(details.textFiles.written.at("/out.text").starts_with("Details for file notes.txt\n"));
}

TEST_F(ViewControllerDeathTest, cannotSaveWithoutAWindow) {
    EXPECT_DEATH(unconnected()->saveCommand(nullptr), "^tolvane: fatal: the details view is in no window");
}

// Copying

TEST_F(ViewControllerTest, copiesOneFieldWithEachAction) {
    const std::vector<std::pair<std::string_view, std::string>> actions{
        {"copyPath:", "/data/notes.txt"},
        {"copyVolfs:", "/.vol/2049/131077"},
        {"copyFrefURL:", "file:///.file/id=72340172838076673.72340172838076673"},
        {"copyPerms:", "644"},
        {"copyBookmark:", "Ym9va21hcms="},
        {"copyXattrs:", details.attributesText()},
    };
    for (const auto& [selector, text] : actions) {
        EXPECT_TRUE(controller().isActionEnabled(selector)) << selector;
        perform(selector);
        EXPECT_THAT(details.pasteboard.texts(), ElementsAre(text)) << selector;
    }
}

TEST_F(ViewControllerTest, isSilentWhereThePasteboardAcceptsNothing) {
    const std::string before = details.attributesText();
    details.pasteboard.takesTexts = false;
    controller().copyPath(nullptr);
    controller().copyXattrs(nullptr);
    EXPECT_EQ(details.attributesText(), before);
    EXPECT_EQ(controller().pathTextbox->stringValue(), "/data/notes.txt");
}

TEST_F(ViewControllerTest, asksNothingAboutTheItemToCopySaveOrChangeTheTextSize) {
    details.log.clear();
    controller().copyPath(nullptr);
    controller().copyXattrs(nullptr);
    controller().incFontSize(nullptr);
    controller().saveCommand(nullptr);
    answerSaving("/data/report.text");
    EXPECT_EQ(details.textFiles.written.at("/data/report.text"), controller().saveString());
    EXPECT_TRUE(details.log.empty());
}

TEST_F(ViewControllerTest, neitherOffersNorCopiesAnEmptyField) {
    controller().pathTextbox->setStringValue("");
    controller().volfsPathTextbox->setStringValue("");
    controller().frURLTextbox->setStringValue("");
    controller().permsTextbox->setStringValue("");
    controller().bookmarkTextbox->setString("");
    controller().inodeText->setString("");
    details.pasteboard.writeObjects(std::vector<std::string>{"earlier"});
    for (const std::string_view selector :
         {"copyPath:", "copyVolfs:", "copyFrefURL:", "copyPerms:", "copyBookmark:", "copyXattrs:"}) {
        EXPECT_FALSE(controller().isActionEnabled(selector)) << selector;
        perform(selector);
        EXPECT_THAT(details.pasteboard.texts(), ElementsAre("earlier")) << selector;
    }
    EXPECT_TRUE(controller().isActionEnabled("saveCommand:"));
    EXPECT_TRUE(controller().isActionEnabled("incFontSize:"));
}

TEST_F(ViewControllerTest, hasNoOtherActionsThanItsWindows) {
    for (const std::string_view selector : {"", "copyPath", "analyseButton:", "openDocument:"}) {
        EXPECT_FALSE(controller().actionForSelector(selector)) << selector;
        EXPECT_FALSE(controller().isActionEnabled(selector)) << selector;
    }
}

TEST_F(ViewControllerTest, copiesTheTextToTheByte) {
    const std::string odd(
        "a\r\n\0\xC2\xA0"
        "b",
        7);
    controller().pathTextbox->setStringValue(odd);
    controller().copyPath(nullptr);
    EXPECT_THAT(details.pasteboard.texts(), ElementsAre(odd));
}

TEST_F(ViewControllerDeathTest, cannotCopyThroughAnUnconnectedOutlet) {
    const auto bare = unconnected();
    EXPECT_DEATH(bare->copyPath(nullptr), "^tolvane: fatal: outlet pathTextbox is not connected");
    EXPECT_DEATH(bare->copyVolfs(nullptr), "^tolvane: fatal: outlet volfsPathTextbox is not connected");
    EXPECT_DEATH(bare->copyFrefURL(nullptr), "^tolvane: fatal: outlet frURLTextbox is not connected");
    EXPECT_DEATH(bare->copyPerms(nullptr), "^tolvane: fatal: outlet permsTextbox is not connected");
    EXPECT_DEATH(bare->copyBookmark(nullptr), "^tolvane: fatal: outlet bookmarkTextbox is not connected");
    EXPECT_DEATH(bare->copyXattrs(nullptr), "^tolvane: fatal: outlet inodeText is not connected");
}

TEST_F(ViewControllerDeathTest, cannotCopyATextViewWithoutStorage) {
    controller().bookmarkTextbox->removeTextStorage();
    controller().inodeText->removeTextStorage();
    EXPECT_DEATH(controller().copyBookmark(nullptr), "^tolvane: fatal: .*no text storage");
    EXPECT_DEATH(controller().copyXattrs(nullptr), "^tolvane: fatal: .*no text storage");
}

// Text size

TEST_F(ViewControllerTest, storesEachNewSizeAndRestylesTheAttributes) {
    DetailsWindow window;
    window.defaults.setDouble(23.5, "fontSize");
    window.open();
    EXPECT_EQ(
        window.controller().inodeText->textStorage()->attributedString(),
        inOutputStyle(window.attributesText(), 23.5));
    for (const auto& [selector, size] :
         {std::pair{"decFontSize:", 22.5},
          {"incFontSize:", 23.5},
          {"incFontSize:", 24.0},
          {"incFontSize:", 24.0}}) {
        expectChange(window, selector, size);
    }
    EXPECT_EQ(window.defaults.doubleForKey("fontSizeRes"), 0.0) << "the resolver has a size of its own";
    EXPECT_EQ(controller().theFontSize(), 12.0) << "so has every other window";

    DetailsWindow small;
    small.defaults.setDouble(4.5, "fontSize");
    small.open();
    expectChange(small, "decFontSize:", 4.0);
    expectChange(small, "decFontSize:", 4.0);
}

TEST_F(ViewControllerTest, replacesAllStylingWhenRestyled) {
    controller().inodeText->textStorage()->appendAttributedString({"unstyled", {}});
    ASSERT_EQ(styledAttributes().runs().size(), 2U);
    controller().restyleXattrText();
    EXPECT_EQ(styledAttributes(), inOutputStyle(styledAttributes().string(), 12));
}

TEST_F(ViewControllerTest, appendsAndRestylesNothingWithoutStorage) {
    controller().inodeText->removeTextStorage();
    controller().appendXattrLine("lost");
    controller().incFontSize(nullptr);
    EXPECT_EQ(controller().theFontSize(), 13.0);
}

TEST_F(ViewControllerDeathTest, cannotRestyleThroughAnUnconnectedOutlet) {
    EXPECT_DEATH(unconnected()->restyleXattrText(), "^tolvane: fatal: outlet inodeText is not connected");
}

} // namespace
} // namespace tolvane::tests
