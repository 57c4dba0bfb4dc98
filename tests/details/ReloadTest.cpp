#include "platform/services/DocumentOpening.h"
#include "tests/support/DetailsWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <string>

namespace tolvane::tests {
namespace {

using platform::Date;
using testing::HasSubstr;

constexpr const char* changeDate = "NSURLAttributeModificationDateKey";

/// A window whose document remembers its item, as an opened one does.
class ReloadTest : public testing::Test, public DetailsWindow {
protected:
    ReloadTest() {
        resources.values.set(changeDate, Date(20));
        url = platform::identifiedURL(url, resources).value();
        open();
    }

    const std::string& permissions() const { return controller().permsTextbox->stringValue(); }

    /// The item gets other permissions and no attributes.
    void changeItem() {
        resources.values.set(changeDate, Date(21));
        fileManager.answer = platform::Dictionary{
            {"NSFileSize", std::uint64_t{5}}, {"NSFilePosixPermissions", std::uint16_t{0600}}};
    }

    /// The user turns to the window.
    void turnToWindow() { window().becomeKey(); }
    const std::string& status() const { return window().status(); }
};

TEST_F(ReloadTest, showsTheItemAsItIsNow) {
    changeItem();
    const platform::Window* const before = &window();
    EXPECT_TRUE(controller().isActionEnabled("reload:"));
    perform("reload:");
    EXPECT_EQ(&window(), before);
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(window().title(), "notes.txt");
    EXPECT_EQ(permissions(), "600");
    EXPECT_EQ(controller().filemanSize->stringValue(), "5");
}

TEST_F(ReloadTest, forgetsWhatTheItemNoLongerHas) {
    controller().appendXattrLine("an error of saving");
    EXPECT_NE(controller().ownerNameTextbox->stringValue(), "");
    changeItem();
    bookmarks.made = std::unexpected(platform::posixError(EIO));
    controller().reload(nullptr);
    EXPECT_EQ(controller().ownerNameTextbox->stringValue(), "");
    EXPECT_EQ(attributesText(), "");
    EXPECT_EQ(controller().bookmarkTextbox->string(), "");
    EXPECT_EQ(controller().bookmarkPathTextbox->stringValue(), "(couldn't get bookmark)");
}

TEST_F(ReloadTest, isNoSecondPassOverTheSameRecord) {
    const std::string before = attributesText();
    controller().reload(nullptr);
    controller().reload(nullptr);
    EXPECT_EQ(attributesText(), before);
    showAgain();
    EXPECT_EQ(attributesText(), before + before) << "an appearance adds as always";
}

TEST_F(ReloadTest, leavesTheTextSizeAndThePlace) {
    controller().incFontSize(nullptr);
    const auto before = controller().inodeText->textStorage()->attributedString();
    controller().reload(nullptr);
    EXPECT_EQ(controller().theFontSize(), 13.0);
    EXPECT_EQ(controller().inodeText->textStorage()->attributedString(), before);
}

TEST_F(ReloadTest, makesANewDocumentWithOneRecord) {
    const auto before = document();
    changeItem();
    controller().reload(nullptr);
    const auto after = window().windowController()->document();
    EXPECT_NE(after, before);
    EXPECT_TRUE(before->windowControllers().empty());
    EXPECT_EQ(before->theSizes().size(), 1U) << "records are never replaced";
    EXPECT_EQ(std::dynamic_pointer_cast<inspect::Document>(after)->theSizes().size(), 1U);
}

TEST_F(ReloadTest, ofAnItemThatIsGoneKeepsWhatIsShown) {
    const std::string before = attributesText();
    resources.failingKey = "";
    controller().reload(nullptr);
    EXPECT_EQ(controller().pathTextbox->stringValue(), "/data/notes.txt");
    EXPECT_EQ(permissions(), "644");
    EXPECT_EQ(attributesText(), before);
    EXPECT_EQ(status(), "The item is no longer there.");
    resources.failingKey.reset();
    controller().reload(nullptr);
    EXPECT_EQ(status(), "");
}

TEST_F(ReloadTest, doesNothingWithoutADocument) {
    window().setWindowController({});
    controller().reload(nullptr);
    EXPECT_EQ(permissions(), "644");
}

TEST_F(ReloadTest, isSuggestedWhenTheItemHasChanged) {
    turnToWindow();
    EXPECT_EQ(status(), "");
    changeItem();
    EXPECT_EQ(status(), "") << "nobody looks before the user does";
    turnToWindow();
    EXPECT_THAT(status(), HasSubstr("has changed"));
    EXPECT_EQ(permissions(), "644") << "nothing is gathered anew by itself";
    controller().reload(nullptr);
    EXPECT_EQ(status(), "");
    turnToWindow();
    EXPECT_EQ(status(), "");
}

TEST_F(ReloadTest, isNotSuggestedWhenThereIsNothingToShow) {
    resources.values.set("NSURLFileResourceIdentifierKey", platform::Data(16, std::byte{2}));
    turnToWindow();
    EXPECT_THAT(status(), HasSubstr("Another item")) << "which can be shown";
    resources.failingKey = "";
    turnToWindow();
    EXPECT_EQ(status(), "The item is no longer there.");
    resources.failure = platform::posixError(EACCES);
    turnToWindow();
    EXPECT_EQ(status(), "The item can no longer be accessed.");
}

} // namespace
} // namespace tolvane::tests
