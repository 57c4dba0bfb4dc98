#include "details/Report.h"

#include "tests/support/DetailsWindow.h"

#include <gtest/gtest.h>

#include <cerrno>
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

std::string reportOf(DetailsWindow& details) {
    details.controller().buildReport();
    return details.controller().saveString();
}

TEST(Report, holdsTheFifteenRowsInOrder) {
    DetailsWindow details;
    details.open();
    EXPECT_EQ(reportOf(details), completeReport);
}

TEST(Report, keepsItsLiteralsAroundEmptyFields) {
    EXPECT_EQ(
        details::reportText({}),
        "Details for file \nPath: \nvolfs path: \nFileReferenceURL: \nSizes:\n"
        "     URL Keys: data  metadata  total \n     File system: data  metadata  total \n"
        "Posix permissions (octal): \nOwner:  ID \nGroup:  ID \nCreated:  last modified \n"
        "Type:  reference count: \n\nBookmark (Base-64):\n\n\nBookmark path: \n\nExtended attributes: \n");
}

TEST(Report, endsWithTheDatesLastCharacter) {
    details::ReportFields fields;
    fields.date = "today";
    EXPECT_TRUE(details::reportText(fields).ends_with("Extended attributes: \non today"));
    fields.date = "";
    EXPECT_TRUE(details::reportText(fields).ends_with("Extended attributes: \non "));
}

TEST(Report, pairsEachMetadataFigureWithItsLine) {
    details::ReportFields fields;
    fields.texts.urlXattrSize = "U";
    fields.texts.xattrSize = "F";
    const std::string report = details::reportText(fields);
    EXPECT_NE(report.find("URL Keys: data  metadata U total"), std::string::npos);
    EXPECT_NE(report.find("File system: data  metadata F total"), std::string::npos);
}

TEST(Report, transcribesWhatTheFieldsShowNow) {
    DetailsWindow details;
    details.open();
    details.controller().ownerIDTextbox->setStringValue("");
    details.controller().pathTextbox->setStringValue("two\nlines");
    details.window().setTitle("another title");
    const std::string report = reportOf(details);
    EXPECT_NE(report.find("Owner: demo ID \n"), std::string::npos);
    EXPECT_TRUE(report.starts_with("Details for file another title\nPath: two\nlines\n"));
}

TEST(Report, leavesTheTitleEmptyForAWindowWithoutOne) {
    DetailsWindow details;
    details.open();
    details.window().setTitle("");
    EXPECT_TRUE(reportOf(details).starts_with("Details for file \nPath: "));
}

TEST(Report, givesThreeLinesForABookmarkViewThatHoldsTheFailure) {
    DetailsWindow details;
    details.open();
    details.controller().bookmarkTextbox->textStorage()->setAttributedString({"(couldn't get bookmark)", {}});
    EXPECT_NE(
        reportOf(details).find("\n\nBookmark (Base-64):\n(couldn't get bookmark)\n\nBookmark path: "),
        std::string::npos);
}

TEST(Report, givesAnEmptyBookmarkWhenNoneCouldBeMade) {
    DetailsWindow details;
    details.bookmarks.made = std::unexpected(platform::posixError(EIO));
    details.open();
    EXPECT_NE(
        reportOf(details).find("Bookmark (Base-64):\n\n\nBookmark path: (couldn't get bookmark)\n\n"),
        std::string::npos);
}

TEST(Report, endsTheAttributesRowWithOneLineFeed) {
    DetailsWindow details;
    details.fileManager.answer = platform::Dictionary{{"NSFileSize", std::uint64_t{0}}};
    details.open();
    EXPECT_TRUE(
        reportOf(details).ends_with("\nExtended attributes: \non the moment 2001-01-01 00:00:00 +0000"));
}

TEST(Report, leavesTheDateOutWhenNothingWasGathered) {
    DetailsWindow details;
    const auto controller = details::ViewController::initWithCoder({}, details.detailsSources());
    platform::connectOutlets(*controller);
    controller->view().setWindow(std::make_shared<platform::Window>());
    controller->buildReport();
    EXPECT_TRUE(controller->saveString().ends_with("Extended attributes: \n"));
}

TEST(Report, isTheSameTwiceWithoutNewGathering) {
    DetailsWindow details;
    details.open();
    const std::string first = reportOf(details);
    details.session.time = 1'000'000;
    EXPECT_EQ(reportOf(details), first);
}

TEST(ReportDeathTest, stopsWithoutAWindow) {
    DetailsWindow details;
    const auto controller = details::ViewController::initWithCoder({}, details.detailsSources());
    platform::connectOutlets(*controller);
    EXPECT_DEATH(controller->buildReport(), "^tolvane: fatal: the details view is in no window");
}

TEST(ReportDeathTest, stopsAtAnUnconnectedOutlet) {
    DetailsWindow details;
    const auto controller = details::ViewController::initWithCoder({}, details.detailsSources());
    controller->view().setWindow(std::make_shared<platform::Window>());
    EXPECT_DEATH(controller->buildReport(), "^tolvane: fatal: outlet [A-Za-z]+ is not connected");
}

} // namespace
} // namespace tolvane::tests
