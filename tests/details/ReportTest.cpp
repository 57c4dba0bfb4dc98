#include "details/Report.h"

#include "platform/values/Utf8.h"
#include "tests/support/DetailsWindow.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace tolvane::tests {
namespace {

using details::reportFileName;

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

class Report : public testing::Test, public DetailsWindow {
protected:
    Report() { open(); }

    std::string text() {
        controller().buildReport();
        return controller().saveString();
    }

    /// A controller that has gathered nothing and is in no window.
    std::shared_ptr<details::ViewController> unused() {
        return details::ViewController::initWithCoder({}, detailsSources());
    }
};

using ReportDeathTest = Report;

TEST_F(Report, hasTheFifteenRowsInOrder) {
    EXPECT_EQ(text(), completeReport);
    session.time = 1'000'000;
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
    controller().ownerIDTextbox->setStringValue("");
    controller().pathTextbox->setStringValue("two\nlines");
    window().setTitle("another title");
    const std::string report = text();
    EXPECT_TRUE(report.contains("\nOwner: demo ID \n"));
    EXPECT_TRUE(report.starts_with("Details for file another title\nPath: two\nlines\n"));
    window().setTitle("");
    EXPECT_TRUE(text().starts_with("Details for file \nPath: "));
}

TEST_F(Report, leavesTheDateOutWhenNothingWasGathered) {
    const auto controller = unused();
    platform::connectOutlets(*controller);
    controller->view().setWindow(std::make_shared<platform::Window>());
    controller->buildReport();
    EXPECT_TRUE(controller->saveString().ends_with("Extended attributes: \n"));
}

TEST_F(Report, isNamedAfterTheTitleInNoMoreBytesThanANameMayHave) {
    EXPECT_EQ(reportFileName("Notes"), "Notes-tolvane.text");
    EXPECT_EQ(reportFileName(""), "Untitled-tolvane.text");
    for (const std::size_t length : {242U, 243U, 255U}) {
        EXPECT_EQ(reportFileName(std::string(length, 'a')), std::string(242, 'a') + "-tolvane.text");
    }
    for (const std::string character : {"ü", "字", "😀", "\uFFFD"}) {
        for (std::size_t before = 0; before < 4; ++before) {
            std::string title(before, 'a');
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
