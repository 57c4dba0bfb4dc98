#include "cli/JsonReport.h"

#include "tests/support/DetailsWindow.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstdint>
#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using Json = nlohmann::ordered_json;

std::string reportOf(DetailsWindow& details, bool ascii = false) {
    details.open();
    return cli::jsonReport(details.controller(), *details.document()->theSizes().front(), ascii);
}

TEST(JsonReport, holdsEveryFieldTextUnderItsOutletsName) {
    DetailsWindow details;
    const Json object = Json::parse(reportOf(details));
    std::vector<std::string> names;
    for (const auto& [name, value] : object.items()) {
        names.push_back(name);
    }
    const std::vector<std::string> expected{"pathTextbox",         "volfsPathTextbox",
                                            "frURLTextbox",        "urlTotalSize",
                                            "urlDataSize",         "xattrSize",
                                            "filemanSize",         "urlXattrSize",
                                            "filemanTotalSize",    "inodeText",
                                            "permsTextbox",        "ownerNameTextbox",
                                            "ownerIDTextbox",      "groupNameTextbox",
                                            "groupIDTextbox",      "createdTextbox",
                                            "modifiedTextbox",     "typeTextbox",
                                            "refCountTextbox",     "bookmarkTextbox",
                                            "bookmarkPathTextbox", "facts"};
    EXPECT_EQ(names, expected);
    EXPECT_EQ(object["permsTextbox"], "644");
    EXPECT_EQ(object["inodeText"], details.attributesText());
    EXPECT_EQ(object["bookmarkTextbox"], "Ym9va21hcms=");
}

TEST(JsonReport, holdsTypedFacts) {
    DetailsWindow details;
    details.fileManager.answer->set("NSFileSystemFileNumber", UINT64_MAX);
    details.fileManager.answer->set(
        "NSFileModificationDate", platform::Date::fromUnixTime(1'723'228'022, 123'456'789));
    const Json facts = Json::parse(reportOf(details))["facts"];
    const Json expected = Json::parse(R"({
        "pathBytes": null, "urlTotalSize": 1300, "urlDataSize": 1000, "xattrSize": 5, "filemanSize": 1001,
        "device": 2049, "inode": 18446744073709551615, "permissions": 420, "ownerID": 1000, "groupID": 50,
        "linkCount": 2, "fileType": "NSFileTypeRegular", "created": "2001-01-01T00:00:00.000000000Z",
        "modified": "2024-08-09T18:27:02.123456789Z",
        "extendedAttributes": {"user.note": "68656c6c6f", "user.x": ""}})");
    EXPECT_EQ(facts, expected);
}

TEST(JsonReport, saysNullForWhatIsNotKnown) {
    DetailsWindow details;
    details.fileManager.answer = std::unexpected(platform::posixError(13));
    const Json facts = Json::parse(reportOf(details))["facts"];
    for (const auto* const name :
         {"device", "inode", "permissions", "ownerID", "groupID", "linkCount", "fileType", "created",
          "modified", "extendedAttributes"}) {
        EXPECT_TRUE(facts.at(name).is_null()) << name;
    }
}

TEST(JsonReport, tellsNoExtendedAttributesFromUnknownOnes) {
    DetailsWindow details;
    details.fileManager.answer = platform::Dictionary{{"NSFileSize", std::uint64_t{0}}};
    EXPECT_EQ(Json::parse(reportOf(details))["facts"]["extendedAttributes"], Json::object());
}

TEST(JsonReport, givesTheBytesOfAPathThatIsNotUtf8) {
    DetailsWindow details;
    details.url = platform::URL::fileURLWithPath("/a\xFF");
    const Json object = Json::parse(reportOf(details));
    EXPECT_EQ(object["pathTextbox"], "/a\xEF\xBF\xBD");
    EXPECT_EQ(object["facts"]["pathBytes"], "2f61ff");
}

TEST(JsonReport, isOneLineWhateverTheTextsHold) {
    DetailsWindow details;
    details.url = platform::URL::fileURLWithPath("/two\nlines\x1B");
    const std::string report = reportOf(details);
    EXPECT_EQ(report.find('\n'), std::string::npos);
    EXPECT_EQ(Json::parse(report)["pathTextbox"], "/two\nlines\x1B");
}

TEST(JsonReport, keepsATerminalToAscii) {
    DetailsWindow details;
    details.url = platform::URL::fileURLWithPath("/\xE2\x80\xAE\xC2\x9B\x7F\xC3\xA9");
    const std::string report = reportOf(details, true);
    EXPECT_TRUE(std::ranges::all_of(report, [](char c) { return c >= 0x20 && c < 0x7F; })) << report;
    EXPECT_EQ(Json::parse(report)["pathTextbox"], "/\xE2\x80\xAE\xC2\x9B\x7F\xC3\xA9");
}

} // namespace
} // namespace tolvane::tests
