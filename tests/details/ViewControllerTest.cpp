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

class ViewControllerTest : public testing::Test, public DetailsWindow {
protected:
    ViewControllerTest() { open(); }

    std::shared_ptr<ViewController> unconnected() {
        return ViewController::initWithCoder({}, detailsSources());
    }

    const platform::AttributedString& styledAttributes() {
        return controller().inodeText->textStorage()->attributedString();
    }

    static platform::AttributedString inOutputStyle(const std::string& text, double size) {
        return {text, {platform::Color::textColor, platform::Font::systemFontOfSize(size)}};
    }

    /// The size is stored, and the text restyled, although the size may be unchanged.
    void expectChange(std::string_view selector, double size) {
        defaults.setDouble(-1, "fontSize");
        controller().inodeText->textStorage()->setAttributedString({"unstyled", {}});
        perform(selector);
        EXPECT_EQ(controller().theFontSize(), size);
        EXPECT_EQ(defaults.doubleForKey("fontSize"), size);
        EXPECT_EQ(styledAttributes(), inOutputStyle("unstyled", size)) << size;
    }
};

using ViewControllerDeathTest = ViewControllerTest;

// Making one

TEST_F(ViewControllerTest, startsWithItsInitialValues) {
    const auto fromNib = ViewController::initWithNibName("Details", &bundle, detailsSources());
    EXPECT_EQ(fromNib->saveString(), "");
    EXPECT_EQ(fromNib->theDate(), std::nullopt);
    EXPECT_EQ(fromNib->theFontSize(), 12.0);
    EXPECT_EQ(fromNib->nibName(), "Details");
    EXPECT_EQ(fromNib->bundle(), &bundle);
    const auto fromCoder = ViewController::initWithCoder({"Scene"}, detailsSources());
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
    const details::DetailsTexts texts = gather().texts;
    const details::DetailsTexts shown = controller().reportFields().texts;
    for (const auto& [name, text] : details::DetailsTexts::all) {
        EXPECT_EQ(shown.*text, texts.*text) << name;
        EXPECT_FALSE((texts.*text).value().empty()) << name;
    }
    EXPECT_EQ(controller().theDate(), platform::Date(0));
    EXPECT_EQ(
        controller().bookmarkTextbox->textStorage()->attributedString(),
        platform::AttributedString("Ym9va21hcms=", {platform::Color::textColor, {}}))
        << "it has a colour and no font";
}

TEST_F(ViewControllerTest, keepsTheTextOfEveryFieldThatAPassDoesNotReach) {
    const details::DetailsTexts before = controller().reportFields().texts;
    fileManager.answer = platform::Dictionary{{"NSFileSize", std::uint64_t{1}}};
    bookmarks.made = std::unexpected(platform::posixError(EIO));
    open();
    const details::DetailsTexts gathered = gather().texts;
    const details::DetailsTexts untouched = controller().reportFields().texts;
    for (const auto& [name, text] : details::DetailsTexts::all) {
        if (!(gathered.*text)) {
            EXPECT_EQ(untouched.*text, "") << name;
        }
    }
    controller().permsTextbox->setStringValue(*before.permsTextbox);
    controller().volfsPathTextbox->setStringValue(*before.volfsPathTextbox);
    controller().bookmarkTextbox->setString(*before.bookmarkTextbox);
    showAgain();
    const details::DetailsTexts kept = controller().reportFields().texts;
    EXPECT_EQ(kept.permsTextbox, before.permsTextbox);
    EXPECT_EQ(kept.volfsPathTextbox, before.volfsPathTextbox);
    EXPECT_EQ(kept.bookmarkTextbox, before.bookmarkTextbox);
    EXPECT_EQ(kept.bookmarkPathTextbox, "(couldn't get bookmark)");
}

TEST_F(ViewControllerTest, becomesTheWindowsDelegate) {
    EXPECT_EQ(window().delegate(), sharedController());
    window().setDelegate({});
    showAgain();
    EXPECT_EQ(window().delegate(), sharedController());
}

TEST_F(ViewControllerTest, appendsTheAttributesAgainAtEachAppearance) {
    const std::string once = attributesText();
    showAgain();
    EXPECT_EQ(attributesText(), once + once);
    EXPECT_EQ(controller().theDate(), platform::Date(1));
}

TEST_F(ViewControllerTest, leavesAWindowWithoutSizeRecordsUntouched) {
    makeWindow();
    log.clear();
    for (const auto& [name, outlet] : controller().outlets().entries()) {
        if (const auto* const field = std::get_if<platform::Outlet<platform::TextField>*>(&outlet)) {
            (**field)->setStringValue("initial " + std::string(name));
        } else if (const auto* const view = std::get_if<platform::Outlet<platform::TextView>*>(&outlet)) {
            (**view)->setString("initial " + std::string(name));
        }
    }
    const auto shown = [this] { return controller().reportFields().texts; };
    document()->showWindows();
    showAgain();
    for (const auto& [name, text] : details::DetailsTexts::all) {
        EXPECT_EQ(shown().*text, "initial " + std::string(name));
    }
    EXPECT_EQ(controller().pathTextbox->note(), "");
    EXPECT_EQ(controller().theDate(), std::nullopt);
    EXPECT_TRUE(log.empty());
}

TEST_F(ViewControllerTest, emptiesTheReportAtTheStartOfEveryPass) {
    controller().buildReport();
    EXPECT_NE(controller().saveString(), "");
    showAgain();
    EXPECT_EQ(controller().saveString(), "");
}

TEST_F(ViewControllerTest, endsQuietlyWithoutWindowControllerOrDocument) {
    const auto controller = sharedController();
    controller->buildReport();
    document()->close();
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

    const auto windowless = ViewController::initWithNibName("Details", nullptr, detailsSources());
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
    holder->setDocument(document());
    EXPECT_DEATH(bare->gatherDetails(), "^tolvane: fatal: outlet pathTextbox is not connected");
}

TEST_F(ViewControllerDeathTest, stopsAtADocumentOfAnotherClass) {
    struct OtherDocument final : platform::Document {
        bool readFromURL(const platform::URL&, std::string_view, platform::Error*) override { return true; }
        void makeWindowControllers() override {}
    };
    const auto other = std::make_shared<OtherDocument>();
    document()->windowControllers().front()->setDocument(other);
    EXPECT_DEATH(controller().gatherDetails(), "^tolvane: fatal: .*document is of the wrong class");
}

// Copying

TEST_F(ViewControllerTest, copiesOneFieldWithEachAction) {
    const std::vector<std::pair<std::string_view, std::string>> actions{
        {"copyPath:", "/data/notes.txt"},
        {"copyVolfs:", "/.vol/2049/131077"},
        {"copyFrefURL:", "file:///.file/id=72340172838076673.72340172838076673"},
        {"copyPerms:", "644"},
        {"copyBookmark:", "Ym9va21hcms="},
        {"copyXattrs:", attributesText()},
    };
    for (const auto& [selector, text] : actions) {
        EXPECT_TRUE(controller().isActionEnabled(selector)) << selector;
        perform(selector);
        EXPECT_THAT(pasteboard.texts(), ElementsAre(text)) << selector;
    }
}

TEST_F(ViewControllerTest, isSilentWhereThePasteboardAcceptsNothing) {
    const std::string before = attributesText();
    pasteboard.takesTexts = false;
    controller().copyPath(nullptr);
    controller().copyXattrs(nullptr);
    EXPECT_EQ(attributesText(), before);
    EXPECT_EQ(controller().pathTextbox->stringValue(), "/data/notes.txt");
}

TEST_F(ViewControllerTest, asksNothingAboutTheItemToCopySaveOrChangeTheTextSize) {
    log.clear();
    controller().copyPath(nullptr);
    controller().copyXattrs(nullptr);
    controller().incFontSize(nullptr);
    controller().saveCommand(nullptr);
    savePanels.newest()->answer(platform::modalResponseOK, url);
    EXPECT_EQ(textFiles.written.at("/data/notes.txt"), controller().saveString());
    EXPECT_TRUE(log.empty());
}

TEST_F(ViewControllerTest, neitherOffersNorCopiesAnEmptyField) {
    controller().pathTextbox->setStringValue("");
    controller().volfsPathTextbox->setStringValue("");
    controller().frURLTextbox->setStringValue("");
    controller().permsTextbox->setStringValue("");
    controller().bookmarkTextbox->setString("");
    controller().inodeText->setString("");
    pasteboard.writeObjects(std::vector<std::string>{"earlier"});
    for (const std::string_view selector :
         {"copyPath:", "copyVolfs:", "copyFrefURL:", "copyPerms:", "copyBookmark:", "copyXattrs:"}) {
        EXPECT_FALSE(controller().isActionEnabled(selector)) << selector;
        perform(selector);
        EXPECT_THAT(pasteboard.texts(), ElementsAre("earlier")) << selector;
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
    EXPECT_THAT(pasteboard.texts(), ElementsAre(odd));
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
    const auto other = sharedController();
    defaults.setDouble(23.5, "fontSize");
    open();
    EXPECT_EQ(styledAttributes(), inOutputStyle(attributesText(), 23.5));
    expectChange("decFontSize:", 22.5);
    expectChange("incFontSize:", 23.5);
    expectChange("incFontSize:", 24.0);
    expectChange("incFontSize:", 24.0);
    EXPECT_EQ(defaults.doubleForKey("fontSizeRes"), 0.0) << "the resolver has a size of its own";
    EXPECT_EQ(other->theFontSize(), 12.0) << "so has every other window";
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
