#include "details/Report.h"
#include "platform/services/DocumentOpening.h"
#include "platform/values/Utf8.h"
#include "tests/support/DetailsWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <string>

namespace tolvane::tests {
namespace {

using details::reportFileName;
using testing::StartsWith;

TEST(ReportFileName, isTheTitleWithASuffix) {
    EXPECT_EQ(reportFileName("Notes"), "Notes-tolvane.text");
    EXPECT_EQ(reportFileName(""), "Untitled-tolvane.text");
    EXPECT_EQ(reportFileName(std::string(242, 'a')), std::string(242, 'a') + "-tolvane.text");
}

TEST(ReportFileName, fitsWhateverTheTitle) {
    EXPECT_EQ(reportFileName(std::string(243, 'a')), std::string(242, 'a') + "-tolvane.text");
    EXPECT_EQ(reportFileName(std::string(255, 'a')), std::string(242, 'a') + "-tolvane.text");
    for (const std::string character : {"ü", "字", "😀", "\uFFFD"}) {
        for (int before = 0; before < 4; ++before) {
            std::string title(static_cast<std::size_t>(before), 'a');
            while (title.size() < 255) {
                title += character;
            }
            const std::string name = reportFileName(title);
            EXPECT_LE(name.size(), 255U);
            EXPECT_GT(name.size(), 255U - character.size());
            EXPECT_TRUE(platform::isValidUtf8(name)) << name;
            EXPECT_TRUE(title.starts_with(name.substr(0, name.size() - 13))) << name;
        }
    }
}

class FailedSave : public testing::Test {
protected:
    FailedSave() {
        details.open();
        scrolling = details.controller().inodeText->observeScrolling([this] { ++scrolled; });
        details.textFiles.failure = platform::posixError(EACCES);
    }

    void save() {
        details.controller().saveCommand(nullptr);
        details.savePanels.newest()->answer(
            platform::modalResponseOK, platform::URL::fileURLWithPath("/reports/a.text"));
    }

    DetailsWindow details;
    int scrolled = 0;
    platform::Subscription scrolling;
};

TEST_F(FailedSave, isToldInTheStatusAndScrolledIntoView) {
    save();
    EXPECT_EQ(details.window().status(), "Report not saved");
    EXPECT_EQ(scrolled, 1);
    EXPECT_TRUE(details.attributesText().ends_with("Permission denied")) << details.attributesText();
}

TEST_F(FailedSave, isToldNoLongerAfterASaveThatSucceeded) {
    save();
    details.textFiles.failure.reset();
    save();
    EXPECT_EQ(details.window().status(), "");
    EXPECT_EQ(scrolled, 1);
}

TEST_F(FailedSave, isStillToldWhenTheItemHasChanged) {
    save();
    details.resources.failingKey = "";
    details.window().becomeKey();
    EXPECT_EQ(details.window().status(), "Report not saved. The item is no longer there.");
}

TEST_F(FailedSave, isToldNoLongerAfterReloading) {
    save();
    details.controller().reload(nullptr);
    EXPECT_EQ(details.window().status(), "");
}

TEST(SavedReport, thatTookTheItemsPlaceIsNoted) {
    DetailsWindow details;
    details.resources.values.set("NSURLAttributeModificationDateKey", platform::Date(20));
    details.url = platform::identifiedURL(details.url, details.resources).value();
    details.open();
    details.controller().saveCommand(nullptr);
    EXPECT_EQ(details.savePanels.newest()->subject(), details.url);
    details.resources.values.set("NSURLAttributeModificationDateKey", platform::Date(21));
    details.savePanels.newest()->answer(platform::modalResponseOK, details.url);
    details.window().becomeKey();
    EXPECT_THAT(details.window().status(), StartsWith("The item has changed"));
}

} // namespace
} // namespace tolvane::tests
