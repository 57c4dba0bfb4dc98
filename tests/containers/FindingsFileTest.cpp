#include "containers/FindingsFile.h"

#include <gtest/gtest.h>

#include <vector>

namespace tolvane::containers {
namespace {

const std::string csvHead =
    "file,index,where,container,kind,version,length,path,url,volumeName,volumeUUID,created,createdLocal,name,"
    "neighbour,mismatch,warnings\r\n";

TEST(FindingsFile, hasALineForEachFindingInCsv) {
    std::vector<Finding> findings(2);
    findings[0].where = "/items[0]/Bookmark";
    findings[0].bytes.resize(48);
    findings[0].version = 0x1004'0000;
    findings[0].path = "/a";
    findings[0].volumeName = "Disk";
    findings[0].volumeUUID = "1111";
    findings[0].created = platform::Date(0.25);
    findings[0].name = "a";
    findings[0].neighbour = "file:///b";
    findings[0].mismatch = true;
    findings[1].kind = FindingKind::alias;
    findings[1].createdLocal = platform::Date(0);
    findings[1].mismatch = false;
    EXPECT_EQ(
        findingsAsCsv("/list", "sharedFileList", findings),
        csvHead + "/list,0,/items[0]/Bookmark,sharedFileList,bookmark,268697600,48,/a,,Disk,1111,"
            + findings[0].created->iso8601() + ",,a,file:///b,true,\r\n"
            + "/list,1,,sharedFileList,alias,,0,,,,,,2001-01-01T00:00:00,,,false,\r\n");
}

TEST(FindingsFile, quotesCsvFieldsThatNeedIt) {
    std::vector<Finding> findings(1);
    findings[0].path = "/a,\"b\"\r\n";
    findings[0].name = "plain";
    findings[0].url = "\xFF";
    findings[0].warnings = {"one", "two"};
    EXPECT_EQ(
        findingsAsCsv("/list", "dock", findings),
        csvHead + "/list,0,,dock,bookmark,,0,\"/a,\"\"b\"\"\r\n\",\uFFFD,,,,,plain,,,\"one\ntwo\"\r\n");
}

TEST(FindingsFile, putsAnApostropheBeforeWhatWouldBeAFormula) {
    for (const std::string beginning :
         {"=", "+", "-", "@", "\t", "'", "\uFF1D", "\uFF0B", "\uFF0D", "\uFF20"}) {
        std::vector<Finding> findings(1);
        findings[0].name = beginning + "1+1";
        findings[0].path = "/=1";
        EXPECT_EQ(
            findingsAsCsv("/list", "dock", findings),
            csvHead + "/list,0,,dock,bookmark,,0,/=1,,,,,,'" + beginning + "1+1,,,\r\n");
    }
    std::vector<Finding> findings(1);
    findings[0].name = "=a,b";
    findings[0].neighbour = "\r=c";
    EXPECT_EQ(
        findingsAsCsv("-list", "dock", findings),
        csvHead + "'-list,0,,dock,bookmark,,0,,,,,,,\"'=a,b\",\"'\r=c\",,\r\n");
}

TEST(FindingsFile, hasAnObjectOnEachLineInJson) {
    std::vector<Finding> findings(2);
    findings[1].kind = FindingKind::url;
    findings[1].url = "https://example.com/ü";
    const std::string text = findingsAsJson("/list", "internetLocation", findings);
    EXPECT_TRUE(text.starts_with(R"({"file":"/list","index":0,"where":"","container":"internetLocation",)"));
    EXPECT_NE(text.find("\n{\"file\":\"/list\",\"index\":1,"), std::string::npos);
    EXPECT_NE(text.find(R"("url":"https://example.com/ü")"), std::string::npos);
    EXPECT_TRUE(text.ends_with("}\n"));
}

TEST(FindingsFile, hasNoLinesWithoutFindings) {
    EXPECT_EQ(findingsAsJson("/list", "dock", {}), "");
    EXPECT_EQ(findingsAsCsv("/list", "dock", {}), csvHead);
}

} // namespace
} // namespace tolvane::containers
