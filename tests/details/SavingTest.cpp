#include "platform/services/DocumentOpening.h"
#include "tests/support/DetailsWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <string>

namespace tolvane::tests {
namespace {

using platform::URL;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

/// A window whose document remembers its item, as an opened one does.
class Saving : public testing::Test, public DetailsWindow {
protected:
    Saving() {
        resources.values.set("NSURLAttributeModificationDateKey", platform::Date(20));
        url = platform::identifiedURL(url, resources).value();
        open();
        scrolling = controller().inodeText->observeScrolling([this] { ++scrolled; });
    }

    void answer(const URL& destination) {
        savePanels.newest()->answer(platform::modalResponseOK, destination);
    }

    void save() {
        controller().saveCommand(nullptr);
        answer(destination);
    }

    void saveInVain() {
        textFiles.failure = platform::posixError(EACCES);
        save();
        textFiles.failure.reset();
    }

    const URL destination = URL::fileURLWithPath("/out.text");
    int scrolled = 0;
    platform::Subscription scrolling;
};

using SavingDeathTest = Saving;

TEST_F(Saving, proposesTheTitleInTheHomeFolder) {
    window().setTitle("Notes");
    perform("saveCommand:");
    const auto panel = savePanels.newest();
    ASSERT_TRUE(panel);
    EXPECT_TRUE(panel->isWaiting());
    EXPECT_THAT(
        panel->calls(), ElementsAre(
                            "setCanCreateDirectories", "setAllowedFileTypes", "setDirectoryURL",
                            "setNameFieldStringValue", "setSubject", "beginWithCompletionHandler"));
    EXPECT_TRUE(panel->canCreateDirectories());
    EXPECT_THAT(panel->allowedFileTypes(), ElementsAre("text", "txt"));
    EXPECT_EQ(panel->directoryURL(), URL::fileURLWithPath("/home/demo"));
    EXPECT_EQ(panel->nameFieldStringValue(), "Notes-tolvane.text");
    EXPECT_EQ(panel->subject(), url);
    panel->answer(0, std::nullopt);
}

TEST_F(Saving, writesTheReportOfTheMomentOfTheAnswer) {
    controller().saveCommand(nullptr);
    controller().permsTextbox->setStringValue("changed since");
    answer(destination);
    ASSERT_EQ(textFiles.written.size(), 1U);
    const std::string& written = textFiles.written.at("/out.text");
    EXPECT_THAT(written, HasSubstr("Posix permissions (octal): changed since\n"));
    EXPECT_EQ(written, controller().saveString());
    EXPECT_THAT(written, StartsWith("Details for file")) << "there is no byte-order mark";
    EXPECT_EQ(savePanels.newest(), nullptr) << "the panel is released";
}

TEST_F(Saving, writesNothingWhenThePanelIsCancelledOrHasNoURL) {
    controller().buildReport();
    const std::string before = controller().saveString();
    controller().permsTextbox->setStringValue("changed since");

    controller().saveCommand(nullptr);
    savePanels.newest()->answer(0, destination);
    controller().saveCommand(nullptr);
    savePanels.newest()->answer(platform::modalResponseOK, std::nullopt);

    EXPECT_TRUE(textFiles.written.empty());
    EXPECT_EQ(controller().saveString(), before);
}

TEST_F(Saving, appendsItsFailureToTheAttributesAndScrollsThere) {
    const std::string before = attributesText();
    saveInVain();
    EXPECT_EQ(
        controller().inodeText->textStorage()->attributedString(),
        platform::AttributedString(
            before + "Permission denied",
            {platform::Color::textColor, platform::Font::systemFontOfSize(12)}));
    EXPECT_EQ(window().status(), "Report not saved");
    EXPECT_EQ(scrolled, 1);

    save();
    EXPECT_THAT(textFiles.written.at("/out.text"), HasSubstr("Permission denied\non "))
        << "the next report carries the message";
    EXPECT_EQ(window().status(), "");
    EXPECT_EQ(scrolled, 1);
}

TEST_F(Saving, saysThatItFailedAlsoWhenTheItemHasChanged) {
    saveInVain();
    resources.failingKey = "";
    window().becomeKey();
    EXPECT_EQ(window().status(), "Report not saved. The item is no longer there.");
}

TEST_F(Saving, saysThatItFailedNoLongerAfterReloading) {
    saveInVain();
    controller().reload(nullptr);
    EXPECT_EQ(window().status(), "");
}

TEST_F(Saving, isNotedWhereTheReportTookTheItemsPlace) {
    controller().saveCommand(nullptr);
    resources.values.set("NSURLAttributeModificationDateKey", platform::Date(21));
    answer(url);
    window().becomeKey();
    EXPECT_THAT(window().status(), StartsWith("The item has changed"));
}

TEST_F(Saving, goesOnAfterItsWindowWasClosed) {
    controller().saveCommand(nullptr);
    const auto panel = savePanels.newest();
    document()->close();
    panel->answer(platform::modalResponseOK, destination);
    EXPECT_THAT(textFiles.written.at("/out.text"), StartsWith("Details for file notes.txt\n"));
}

TEST_F(SavingDeathTest, stopsWithoutAWindow) {
    const auto unconnected = details::ViewController::initWithCoder({}, detailsSources());
    EXPECT_DEATH(unconnected->saveCommand(nullptr), "^tolvane: fatal: the details view is in no window");
}

} // namespace
} // namespace tolvane::tests
