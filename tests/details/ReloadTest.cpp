#include "platform/services/DocumentOpening.h"
#include "tests/support/DetailsWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <string>

namespace tolvane::tests {
namespace {

using platform::Date;
using platform::Dictionary;
using testing::HasSubstr;

constexpr const char* changeDate = "NSURLAttributeModificationDateKey";

/// A window whose document remembers its item, as an opened one does.
class ReloadTest : public testing::Test {
protected:
    ReloadTest() {
        details.resources.values.set(changeDate, Date(20));
        details.url = platform::identifiedURL(details.url, details.resources).value();
        details.open();
    }

    const std::string& path() const { return details.controller().pathTextbox->stringValue(); }
    const std::string& permissions() const { return details.controller().permsTextbox->stringValue(); }

    /// The item gets other permissions and no attributes.
    void changeItem() {
        details.resources.values.set(changeDate, Date(21));
        Dictionary attributes{
            {"NSFileSize", std::uint64_t{5}}, {"NSFilePosixPermissions", std::uint16_t{0600}}};
        details.fileManager.answer = attributes;
    }

    /// The user turns to the window.
    void turnToWindow() { details.window().becomeKey(); }
    const std::string& status() const { return details.window().status(); }

    DetailsWindow details;
};

TEST_F(ReloadTest, showsTheItemAsItIsNow) {
    changeItem();
    const platform::Window* const window = &details.window();
    details.controller().reload(nullptr);
    EXPECT_EQ(&details.window(), window);
    EXPECT_TRUE(details.window().isVisible());
    EXPECT_EQ(details.window().title(), "notes.txt");
    EXPECT_EQ(permissions(), "600");
    EXPECT_EQ(details.controller().filemanSize->stringValue(), "5");
}

TEST_F(ReloadTest, forgetsWhatTheItemNoLongerHas) {
    details.controller().appendXattrLine("an error of saving");
    EXPECT_NE(details.controller().ownerNameTextbox->stringValue(), "");
    changeItem();
    details.bookmarks.made = std::unexpected(platform::posixError(EIO));
    details.controller().reload(nullptr);
    EXPECT_EQ(details.controller().ownerNameTextbox->stringValue(), "");
    EXPECT_EQ(details.attributesText(), "");
    EXPECT_EQ(details.controller().bookmarkTextbox->string(), "");
    EXPECT_EQ(details.controller().bookmarkPathTextbox->stringValue(), "(couldn't get bookmark)");
}

TEST_F(ReloadTest, isNoSecondPassOverTheSameRecord) {
    const std::string attributes = details.attributesText();
    details.controller().reload(nullptr);
    details.controller().reload(nullptr);
    EXPECT_EQ(details.attributesText(), attributes);
    details.showAgain();
    EXPECT_EQ(details.attributesText(), attributes + attributes) << "an appearance adds as always";
}

TEST_F(ReloadTest, leavesTheTextSizeAndThePlace) {
    details.controller().incFontSize(nullptr);
    const auto before = details.controller().inodeText->textStorage()->attributedString();
    details.controller().reload(nullptr);
    EXPECT_EQ(details.controller().theFontSize(), 13.0);
    EXPECT_EQ(details.controller().inodeText->textStorage()->attributedString(), before);
}

TEST_F(ReloadTest, makesANewDocumentWithOneRecord) {
    const auto before = details.document();
    changeItem();
    details.controller().reload(nullptr);
    const auto after = details.window().windowController()->document();
    EXPECT_NE(after, before);
    EXPECT_TRUE(before->windowControllers().empty());
    EXPECT_EQ(before->theSizes().size(), 1U) << "records are never replaced";
    EXPECT_EQ(std::dynamic_pointer_cast<inspect::Document>(after)->theSizes().size(), 1U);
}

TEST_F(ReloadTest, ofAnItemThatIsGoneKeepsWhatIsShown) {
    const std::string attributes = details.attributesText();
    details.resources.failingKey = "";
    details.controller().reload(nullptr);
    EXPECT_EQ(path(), "/data/notes.txt");
    EXPECT_EQ(permissions(), "644");
    EXPECT_EQ(details.attributesText(), attributes);
    EXPECT_EQ(status(), "The item is no longer there.");
    details.resources.failingKey.reset();
    details.controller().reload(nullptr);
    EXPECT_EQ(status(), "");
}

TEST_F(ReloadTest, doesNothingWithoutADocument) {
    details.window().setWindowController({});
    details.controller().reload(nullptr);
    EXPECT_EQ(permissions(), "644");
}

TEST_F(ReloadTest, isOfferedByItsSelector) {
    EXPECT_TRUE(details.controller().isActionEnabled("reload:"));
    changeItem();
    details.controller().actionForSelector("reload:")(nullptr);
    EXPECT_EQ(permissions(), "600");
}

TEST_F(ReloadTest, isSuggestedWhenTheItemHasChanged) {
    turnToWindow();
    EXPECT_EQ(status(), "");
    changeItem();
    EXPECT_EQ(status(), "") << "nobody looks before the user does";
    turnToWindow();
    EXPECT_THAT(status(), HasSubstr("has changed"));
    EXPECT_EQ(permissions(), "644") << "nothing is gathered anew by itself";
    details.controller().reload(nullptr);
    EXPECT_EQ(status(), "");
    turnToWindow();
    EXPECT_EQ(status(), "");
}

TEST_F(ReloadTest, isSuggestedWhenAnotherItemHasTakenThePlace) {
    details.resources.values.set("NSURLFileResourceIdentifierKey", platform::Data(16, std::byte{2}));
    turnToWindow();
    EXPECT_THAT(status(), HasSubstr("Another item"));
}

TEST_F(ReloadTest, isNotSuggestedWhenThereIsNothingToShow) {
    details.resources.failingKey = "";
    turnToWindow();
    EXPECT_EQ(status(), "The item is no longer there.");
    details.resources.failure = platform::posixError(EACCES);
    turnToWindow();
    EXPECT_EQ(status(), "The item can no longer be accessed.");
}

} // namespace
} // namespace tolvane::tests
