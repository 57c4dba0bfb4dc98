#include "details/Report.h"

#include "tests/support/DetailsWindow.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <memory>
#include <string>

namespace tolvane::tests {
namespace {

constexpr const char* completeReport =
    "Details for file notes.txt\n"
    "Path: /data/notes.txt\n"
    "volfs path: /.vol/2049/131077\n"
    "FileReferenceURL: file:///.file/id=72340172838076673.72340172838076673\n"
    "Sizes:\n"
    "     URL Keys: data 1000 metadata 300 total 1300\n"
    "     File system: data 1001 metadata 5 total 1006\n"
    "Posix permissions (octal): 644\n"
    "Owner: demo ID 1000\n"
    "Group: staff ID 50\n"
    "Created: 2001-01-01 00:00:00 +0000 last modified 2024-08-09 18:27:02 +0000\n"
    "Type: NSFileTypeRegular: public.plain-text reference count: 2\n"
    "\n"
    "Bookmark (Base-64):\n"
    "Ym9va21hcms=\n"
    "\n"
    "Bookmark path: /data/notes.txt\n"
    "\n"
    "Extended attributes: NSFileExtendedAttributes : {\n"
    "    \"user.note\" = <68656c6c 6f>;\n"
    "    \"user.x\" = <>;\n"
    "}\n"
    "\n"
    "on the moment 2001-01-01 00:00:00 +0000";

class Report : public testing::Test {
protected:
    Report() { details.open(); }

    std::string text() {
        details.controller().buildReport();
        return details.controller().saveString();
    }

    /// A controller that has gathered nothing and is in no window.
    std::shared_ptr<details::ViewController> unused() {
        return details::ViewController::initWithCoder({}, details.detailsSources());
    }

    DetailsWindow details;
};

using ReportDeathTest = Report;

TEST_F(Report, hasTheFifteenRowsInOrder) {
    EXPECT_EQ(text(), completeReport);
    details.session.time = 1'000'000;
    EXPECT_EQ(text(), completeReport) << "it has the date of the gathering";
}

TEST_F(Report, keepsItsLiteralsAroundEmptyFields) {
    const std::string empty =
        "Details for file \nPath: \nvolfs path: \nFileReferenceURL: \nSizes:\n"
        "     URL Keys: data  metadata  total \n     File system: data  metadata  total \n"
        "Posix permissions (octal): \nOwner:  ID \nGroup:  ID \nCreated:  last modified \n"
        "Type:  reference count: \n\nBookmark (Base-64):\n\n\nBookmark path: \n\nExtended attributes: \n";
    details::ReportFields fields;
    EXPECT_EQ(details::reportText(fields), empty);
    fields.date = "";
    EXPECT_EQ(details::reportText(fields), empty + "on ");
    fields.date = "today";
    EXPECT_EQ(details::reportText(fields), empty + "on today");
}

TEST_F(Report, transcribesWhatTheFieldsShowNow) {
    details.controller().ownerIDTextbox->setStringValue("");
    details.controller().pathTextbox->setStringValue("two\nlines");
    details.window().setTitle("another title");
    const std::string report = text();
    EXPECT_NE(report.find("Owner: demo ID \n"), std::string::npos);
    EXPECT_TRUE(report.starts_with("Details for file another title\nPath: two\nlines\n"));
    details.window().setTitle("");
    EXPECT_TRUE(text().starts_with("Details for file \nPath: "));
}

TEST_F(Report, givesAnEmptyBookmarkWhenNoneCouldBeMade) {
    DetailsWindow other;
    other.bookmarks.made = std::unexpected(platform::posixError(EIO));
    other.open();
    other.controller().buildReport();
    EXPECT_NE(
        other.controller().saveString().find(
            "Bookmark (Base-64):\n\n\nBookmark path: (couldn't get bookmark)\n\n"),
        std::string::npos);
}

TEST_F(Report, leavesTheDateOutWhenNothingWasGathered) {
    const auto controller = unused();
    platform::connectOutlets(*controller);
    controller->view().setWindow(std::make_shared<platform::Window>());
    controller->buildReport();
    EXPECT_TRUE(controller->saveString().ends_with("Extended attributes: \n"));
}

TEST_F(ReportDeathTest, stopsWithoutAWindow) {
    const auto controller = unused();
    platform::connectOutlets(*controller);
    EXPECT_DEATH(controller->buildReport(), "^tolvane: fatal: the details view is in no window");
}

TEST_F(ReportDeathTest, stopsAtAnUnconnectedOutlet) {
    const auto controller = unused();
    controller->view().setWindow(std::make_shared<platform::Window>());
    EXPECT_DEATH(controller->buildReport(), "^tolvane: fatal: outlet [A-Za-z]+ is not connected");
}

} // namespace
} // namespace tolvane::tests
