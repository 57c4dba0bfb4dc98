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

constexpr platform::Sender nobody = nullptr;

class ViewControllerTest : public testing::Test {
protected:
    ViewController& controller() { return details.controller(); }

    /// The font sizes of the attributes text, run by run.
    std::vector<double> fontSizes() {
        std::vector<double> sizes;
        for (const auto& run : controller().inodeText->textStorage()->attributedString().runs()) {
            sizes.push_back(run.attributes.font.value().pointSize);
        }
        return sizes;
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
    details.open();
    std::vector<std::string> names;
    for (const auto& entry : controller().outlets().entries()) {
        names.emplace_back(entry.name);
    }
    EXPECT_THAT(
        names, ElementsAre(
                   "pathTextbox", "volfsPathTextbox", "frURLTextbox", "urlTotalSize", "urlDataSize",
                   "xattrSize", "filemanSize", "urlXattrSize", "filemanTotalSize", "inodeScroller",
                   "inodeText", "permsTextbox", "ownerNameTextbox", "ownerIDTextbox", "groupNameTextbox",
                   "groupIDTextbox", "createdTextbox", "modifiedTextbox", "typeTextbox", "refCountTextbox",
                   "bookmarkScroller", "bookmarkTextbox", "bookmarkPathTextbox"));
}

// Gathering, on every appearance

TEST_F(ViewControllerTest, showsEveryTextOfAPassInTheFieldOfItsName) {
    details.open();
    const details::DetailsTexts texts = details.gather().texts;
    const details::DetailsTexts shown = controller().reportFields().texts;
    for (const auto& [name, text] : details::DetailsTexts::all) {
        EXPECT_EQ(shown.*text, texts.*text) << name;
        EXPECT_FALSE((texts.*text).value().empty()) << name;
    }
    EXPECT_EQ(controller().theDate(), platform::Date(0));
}

TEST_F(ViewControllerTest, keepsTheTextOfEveryFieldThatAPassDoesNotReach) {
    details.open();
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
    details.open();
    EXPECT_EQ(details.window().delegate(), details.sharedController());
    details.window().setDelegate({});
    details.showAgain();
    EXPECT_EQ(details.window().delegate(), details.sharedController());
}

TEST_F(ViewControllerTest, appendsTheAttributesAgainAtEachAppearance) {
    details.open();
    const std::string once = details.attributesText();
    details.showAgain();
    EXPECT_EQ(details.attributesText(), once + once);
    EXPECT_EQ(controller().theDate(), platform::Date(1));
}

TEST_F(ViewControllerTest, writesTheAttributesInTheOutputStyle) {
    details.defaults.setDouble(17, "fontSize");
    details.open();
    const auto& runs = controller().inodeText->textStorage()->attributedString().runs();
    ASSERT_EQ(runs.size(), 1U);
    EXPECT_EQ(runs.front().attributes.foregroundColor, platform::Color::textColor);
    EXPECT_EQ(runs.front().attributes.font, platform::Font::systemFontOfSize(17));
}

TEST_F(ViewControllerTest, givesTheBookmarkAColourAndNoFont) {
    details.open();
    const auto& runs = controller().bookmarkTextbox->textStorage()->attributedString().runs();
    ASSERT_EQ(runs.size(), 1U);
    EXPECT_EQ(runs.front().attributes.foregroundColor, platform::Color::textColor);
    EXPECT_EQ(runs.front().attributes.font, std::nullopt);
}

TEST_F(ViewControllerTest, leavesAWindowWithoutSizeRecordsUntouched) {
    auto document = std::make_shared<inspect::Document>(details.fileSources(), details.bundle);
    document->makeWindowControllers();
    document->showWindows();
    const auto content = std::dynamic_pointer_cast<details::ViewController>(
        document->windowControllers().front()->contentViewController());
    EXPECT_EQ(content->pathTextbox->stringValue(), "");
    EXPECT_EQ(content->theDate(), std::nullopt);
    EXPECT_TRUE(details.log.empty());
}

TEST_F(ViewControllerTest, emptiesTheReportAtTheStartOfEveryPass) {
    details.open();
    controller().buildReport();
    EXPECT_NE(controller().saveString(), "");
    details.showAgain();
    EXPECT_EQ(controller().saveString(), "");
}

TEST_F(ViewControllerTest, endsQuietlyWithoutWindowControllerOrDocument) {
    details.open();
    const auto controller = details.sharedController();
    controller->buildReport();
    details.document()->close();
    ASSERT_EQ(controller->view().window()->windowController(), nullptr);
    controller->pathTextbox->setStringValue("left alone");
    controller->gatherDetails();
    EXPECT_EQ(controller->saveString(), "");
    EXPECT_EQ(controller->pathTextbox->stringValue(), "left alone");

    const auto undocumented = details::ViewController::initWithCoder({}, details.detailsSources());
    platform::connectOutlets(*undocumented);
    const auto holder = platform::WindowController::make(std::make_shared<platform::Window>(), undocumented);
    undocumented->gatherDetails();
    EXPECT_EQ(undocumented->theDate(), std::nullopt);

    const auto windowless =
        details::ViewController::initWithNibName("Details", nullptr, details.detailsSources());
    windowless->gatherDetails();
    EXPECT_EQ(windowless->theDate(), std::nullopt);
}

TEST_F(ViewControllerTest, passesTheRepresentedObjectThrough) {
    details.open();
    EXPECT_FALSE(controller().representedObject().has_value());
    controller().setRepresentedObject(std::string("object"));
    EXPECT_EQ(std::any_cast<std::string>(controller().representedObject()), "object");
}

TEST_F(ViewControllerDeathTest, stopsAtAnUnconnectedOutlet) {
    details.open();
    const auto bare = details::ViewController::initWithCoder({}, details.detailsSources());
    const auto holder = platform::WindowController::make(std::make_shared<platform::Window>(), bare);
    holder->setDocument(details.document());
    EXPECT_DEATH(bare->gatherDetails(), "^tolvane: fatal: outlet pathTextbox is not connected");
}

TEST_F(ViewControllerDeathTest, stopsAtADocumentOfAnotherClass) {
    struct OtherDocument final : platform::Document {
        bool readFromURL(const platform::URL&, std::string_view, platform::Error*) override { return true; }
        void makeWindowControllers() override {}
    };
    details.open();
    const auto other = std::make_shared<OtherDocument>();
    details.document()->windowControllers().front()->setDocument(other);
    EXPECT_DEATH(controller().gatherDetails(), "^tolvane: fatal: .*document is of the wrong class");
}

// Saving

TEST_F(ViewControllerTest, proposesTheTitleInTheHomeFolder) {
    details.open();
    details.window().setTitle("Notes");
    controller().saveCommand(nobody);
    const auto panel = details.savePanels.newest();
    ASSERT_TRUE(panel);
    EXPECT_TRUE(panel->isWaiting());
    EXPECT_TRUE(panel->canCreateDirectories());
    EXPECT_THAT(panel->allowedFileTypes(), ElementsAre("text", "txt"));
    EXPECT_EQ(panel->directoryURL(), platform::URL::fileURLWithPath("/home/demo"));
    EXPECT_EQ(panel->nameFieldStringValue(), "Notes-tolvane.text");
    panel->answer(0, std::nullopt);
}

TEST_F(ViewControllerTest, proposesUntitledForAWindowWithoutTitle) {
    details.open();
    details.window().setTitle("");
    controller().saveCommand(nobody);
    EXPECT_EQ(details.savePanels.newest()->nameFieldStringValue(), "Untitled-tolvane.text");
    details.savePanels.newest()->answer(0, std::nullopt);
}

TEST_F(ViewControllerTest, writesTheReportOfTheMomentOfTheAnswer) {
    details.open();
    controller().saveCommand(nobody);
    controller().permsTextbox->setStringValue("changed since");
    details.savePanels.newest()->answer(
        platform::modalResponseOK, platform::URL::fileURLWithPath("/out.text"));
    ASSERT_EQ(details.textFiles.written.size(), 1U);
    const std::string& written = details.textFiles.written.at("/out.text");
    EXPECT_NE(written.find("Posix permissions (octal): changed since\n"), std::string::npos);
    EXPECT_EQ(written, controller().saveString());
    EXPECT_TRUE(written.starts_with("Details for file")) << "there is no byte-order mark";
    EXPECT_EQ(details.savePanels.newest(), nullptr) << "the panel is let go of";
}

TEST_F(ViewControllerTest, writesNothingWhenThePanelIsCancelledOrHasNoURL) {
    details.open();
    controller().buildReport();
    const std::string before = controller().saveString();
    controller().permsTextbox->setStringValue("changed since");

    controller().saveCommand(nobody);
    details.savePanels.newest()->answer(0, platform::URL::fileURLWithPath("/out.text"));
    controller().saveCommand(nobody);
    details.savePanels.newest()->answer(platform::modalResponseOK, std::nullopt);

    EXPECT_TRUE(details.textFiles.written.empty());
    EXPECT_EQ(controller().saveString(), before);
}

TEST_F(ViewControllerTest, appendsAFailedWritesDescriptionToTheAttributes) {
    details.textFiles.failure = platform::posixError(EACCES);
    details.open();
    const std::string before = details.attributesText();
    controller().saveCommand(nobody);
    details.savePanels.newest()->answer(
        platform::modalResponseOK, platform::URL::fileURLWithPath("/no/out.text"));
    EXPECT_EQ(details.attributesText(), before + "Permission denied");
    EXPECT_THAT(fontSizes(), ElementsAre(12.0));

    details.textFiles.failure.reset();
    controller().saveCommand(nobody);
    details.savePanels.newest()->answer(
        platform::modalResponseOK, platform::URL::fileURLWithPath("/out.text"));
    EXPECT_NE(details.textFiles.written.at("/out.text").find("Permission denied\non "), std::string::npos)
        << "the next report carries the message";
}

TEST_F(ViewControllerTest, savesAfterItsWindowWasClosed) {
    details.open();
    controller().saveCommand(nobody);
    const auto panel = details.savePanels.newest();
    details.document()->close();
    panel->answer(platform::modalResponseOK, platform::URL::fileURLWithPath("/out.text"));
    EXPECT_TRUE(details.textFiles.written.at("/out.text").starts_with("Details for file notes.txt\n"));
}

TEST_F(ViewControllerDeathTest, cannotSaveWithoutAWindow) {
    const auto windowless = ViewController::initWithCoder({}, details.detailsSources());
    EXPECT_DEATH(windowless->saveCommand(nobody), "^tolvane: fatal: the details view is in no window");
}

// Copying

TEST_F(ViewControllerTest, copiesOneFieldWithEachCommand) {
    details.open();
    const std::vector<std::pair<void (ViewController::*)(platform::Sender), std::string>> commands{
        {&ViewController::copyPath, "/data/notes.txt"},
        {&ViewController::copyVolfs, "/.vol/2049/131077"},
        {&ViewController::copyFrefURL, "file:///.file/id=72340172838076673.72340172838076673"},
        {&ViewController::copyPerms, "644"},
        {&ViewController::copyBookmark, "Ym9va21hcms="},
        {&ViewController::copyXattrs, details.attributesText()},
    };
    for (const auto& [command, text] : commands) {
        (controller().*command)(nobody);
        EXPECT_THAT(details.pasteboard.texts(), ElementsAre(text));
    }
}

TEST_F(ViewControllerTest, isSilentWhereThePasteboardTakesNothing) {
    details.open();
    const std::string before = details.attributesText();
    details.pasteboard.takesTexts = false;
    controller().copyPath(nobody);
    controller().copyXattrs(nobody);
    EXPECT_EQ(details.attributesText(), before);
    EXPECT_EQ(controller().pathTextbox->stringValue(), "/data/notes.txt");
}

TEST_F(ViewControllerTest, asksNothingAboutTheItemToCopySaveOrChangeTheTextSize) {
    details.open();
    details.log.clear();
    controller().copyPath(nobody);
    controller().copyXattrs(nobody);
    controller().incFontSize(nobody);
    controller().saveCommand(nobody);
    details.savePanels.newest()->answer(
        platform::modalResponseOK, platform::URL::fileURLWithPath("/data/report.text"));
    EXPECT_EQ(details.textFiles.written.at("/data/report.text"), controller().saveString());
    EXPECT_TRUE(details.log.empty());
}

TEST_F(ViewControllerTest, copiesBothAttributeLinesAfterTwoAppearances) {
    details.open();
    const std::string once = details.attributesText();
    details.showAgain();
    controller().copyXattrs(nobody);
    EXPECT_THAT(details.pasteboard.texts(), ElementsAre(once + once));
    EXPECT_TRUE(once.ends_with("}\n"));
}

TEST_F(ViewControllerTest, leavesThePasteboardAloneForAnEmptyField) {
    details.fileManager.answer->set("NSFileSystemNumber", std::uint64_t{0});
    details.bookmarks.made = std::unexpected(platform::posixError(EIO));
    details.open();
    details.pasteboard.writeObjects(std::vector<std::string>{"earlier"});
    controller().copyVolfs(nobody);
    controller().copyBookmark(nobody);
    EXPECT_THAT(details.pasteboard.texts(), ElementsAre("earlier"));
}

TEST_F(ViewControllerTest, copiesTheTextToTheByte) {
    details.open();
    const std::string odd(
        "a\r\n\0\xC2\xA0"
        "b",
        7);
    controller().pathTextbox->setStringValue(odd);
    controller().copyPath(nobody);
    EXPECT_THAT(details.pasteboard.texts(), ElementsAre(odd));
}

TEST_F(ViewControllerDeathTest, cannotCopyThroughAnUnconnectedOutlet) {
    const auto bare = ViewController::initWithCoder({}, details.detailsSources());
    EXPECT_DEATH(bare->copyPath(nobody), "^tolvane: fatal: outlet pathTextbox is not connected");
    EXPECT_DEATH(bare->copyVolfs(nobody), "^tolvane: fatal: outlet volfsPathTextbox is not connected");
    EXPECT_DEATH(bare->copyFrefURL(nobody), "^tolvane: fatal: outlet frURLTextbox is not connected");
    EXPECT_DEATH(bare->copyPerms(nobody), "^tolvane: fatal: outlet permsTextbox is not connected");
    EXPECT_DEATH(bare->copyBookmark(nobody), "^tolvane: fatal: outlet bookmarkTextbox is not connected");
    EXPECT_DEATH(bare->copyXattrs(nobody), "^tolvane: fatal: outlet inodeText is not connected");
}

TEST_F(ViewControllerDeathTest, cannotCopyATextViewWithoutStorage) {
    details.open();
    controller().bookmarkTextbox->removeTextStorage();
    controller().inodeText->removeTextStorage();
    EXPECT_DEATH(controller().copyBookmark(nobody), "^tolvane: fatal: .*no text storage");
    EXPECT_DEATH(controller().copyXattrs(nobody), "^tolvane: fatal: .*no text storage");
}

// Text size

TEST_F(ViewControllerTest, startsAtTheStoredSizeOrTheDefault) {
    const std::vector<std::pair<double, double>> cases{{0.0, 12.0}, {3.5, 12.0},  {-8.0, 12.0}, {3.999, 12.0},
                                                       {4.0, 4.0},  {17.5, 17.5}, {30.0, 30.0}};
    for (const auto& [stored, loaded] : cases) {
        DetailsWindow window;
        window.defaults.setDouble(stored, "fontSize");
        window.open();
        EXPECT_EQ(window.controller().theFontSize(), loaded) << stored;
    }
    details.open();
    EXPECT_EQ(controller().theFontSize(), 12.0) << "nothing is stored";
}

TEST_F(ViewControllerTest, stepsByOnePointWithinTheBounds) {
    const std::vector<std::tuple<double, double, double>> cases{{12.0, 13.0, 11.0}, {30.0, 24.0, 29.0},
                                                                {24.0, 24.0, 23.0}, {23.5, 24.0, 22.5},
                                                                {4.0, 5.0, 4.0},    {4.5, 5.5, 4.0}};
    for (const auto& [stored, larger, smaller] : cases) {
        for (const bool increases : {true, false}) {
            DetailsWindow window;
            window.defaults.setDouble(stored, "fontSize");
            window.open();
            window.defaults.setDouble(-1, "fontSize");
            const double expected = increases ? larger : smaller;
            if (increases) {
                window.controller().incFontSize(nobody);
            } else {
                window.controller().decFontSize(nobody);
            }
            EXPECT_EQ(window.controller().theFontSize(), expected) << stored;
            EXPECT_EQ(window.defaults.doubleForKey("fontSize"), expected)
                << "stored although it may be unchanged";
            EXPECT_EQ(window.defaults.doubleForKey("fontSizeRes"), 0.0)
                << "the resolver has a size of its own";
            const auto& runs = window.controller().inodeText->textStorage()->attributedString().runs();
            ASSERT_EQ(runs.size(), 1U);
            EXPECT_EQ(runs.front().attributes.font, platform::Font::systemFontOfSize(expected));
        }
    }
}

TEST_F(ViewControllerTest, replacesAllStylingWhenRestyled) {
    details.open();
    auto* storage = controller().inodeText->textStorage();
    storage->appendAttributedString({"unstyled", {}});
    const std::string text = storage->string();
    ASSERT_EQ(storage->attributedString().runs().size(), 2U);
    controller().restyleXattrText();
    EXPECT_EQ(
        storage->attributedString(),
        platform::AttributedString(text, {platform::Color::textColor, platform::Font::systemFontOfSize(12)}));
}

TEST_F(ViewControllerTest, keepsOtherWindowsAtTheirSize) {
    details.open();
    DetailsWindow other;
    other.open();
    controller().incFontSize(nobody);
    EXPECT_EQ(other.controller().theFontSize(), 12.0);
}

TEST_F(ViewControllerTest, appendsAndRestylesNothingWithoutStorage) {
    details.open();
    controller().inodeText->removeTextStorage();
    controller().appendXattrLine("lost");
    controller().incFontSize(nobody);
    EXPECT_EQ(controller().theFontSize(), 13.0);
}

TEST_F(ViewControllerDeathTest, cannotRestyleThroughAnUnconnectedOutlet) {
    const auto bare = ViewController::initWithCoder({}, details.detailsSources());
    EXPECT_DEATH(bare->restyleXattrText(), "^tolvane: fatal: outlet inodeText is not connected");
}

} // namespace
} // namespace tolvane::tests
