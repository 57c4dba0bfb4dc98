#include "cli/JsonReport.h"

#include "tests/cli/WrittenJson.h"
#include "tests/support/DetailsWindow.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <variant>

namespace tolvane::tests {
namespace {

std::string reportOf(const ScriptedFile& file, bool ascii = false) {
    return writtenJson(
        [&](cli::JsonWriter& json) { cli::writeReportJson(json, "the title", file.sizes(), file.gather()); },
        ascii);
}

Json factsOf(const ScriptedFile& file) {
    return Json::parse(reportOf(file))["facts"];
}

TEST(JsonReport, hasEveryTextUnderItsFieldsNameInTheWindowsOrder) {
    DetailsWindow window;
    window.open();
    Json expected = Json::object();
    for (const auto& entry : window.controller().outlets().entries()) {
        const auto* const field = std::get_if<platform::Outlet<platform::TextField>*>(&entry.outlet);
        const auto* const view = std::get_if<platform::Outlet<platform::TextView>*>(&entry.outlet);
        // The attributes in words are no part of a report.
        if (entry.name != "wordsText" && (field != nullptr || view != nullptr)) {
            expected[std::string(entry.name)] =
                field != nullptr ? (**field)->stringValue() : (**view)->string();
        }
    }
    Json object = Json::parse(reportOf(window));
    object.erase("facts");
    EXPECT_EQ(object.dump(), expected.dump());
    EXPECT_EQ(object.size(), 21U);
}

TEST(JsonReport, hasTypedFacts) {
    ScriptedFile file;
    file.fileManager.answer->set("NSFileSystemFileNumber", UINT64_MAX);
    file.fileManager.answer->set(
        "NSFileModificationDate", platform::Date::fromUnixTime(1'723'228'022, 123'456'789));
    file.bookmarks.resolveTo("/moved", true);
    EXPECT_EQ(factsOf(file), Json::parse(R"({
        "title": "the title", "path": "/data/notes.txt",
        "pathBytes": null, "urlTotalSize": 1300, "urlDataSize": 1000, "xattrSize": 5, "filemanSize": 1001,
        "device": 2049, "inode": 18446744073709551615, "permissions": 420, "ownerID": 1000, "groupID": 50,
        "linkCount": 2, "fileType": "NSFileTypeRegular", "typeIdentifier": "public.plain-text",
        "created": {"date": "2001-01-01T00:00:00.000000000Z", "seconds": 0.0},
        "modified": {"date": "2024-08-09T18:27:02.123456789Z", "seconds": 744920822.1234568},
        "extendedAttributes": {"user.note": "68656c6c6f", "user.x": ""},
        "bookmark": "626f6f6b6d61726b", "bookmarkPath": "/moved",
        "gathered": {"date": "2001-01-01T00:00:00.000000000Z", "seconds": 0.0}})"));
}

TEST(JsonReport, hasNullForATypeAndAPathThatCouldNotBeFound) {
    ScriptedFile file;
    file.resources.failingKey = "NSURLTypeIdentifierKey";
    file.bookmarks.resolved = platform::ResolvedBookmark{};
    const Json facts = factsOf(file);
    EXPECT_EQ(facts["typeIdentifier"], nullptr);
    EXPECT_EQ(facts["bookmark"], "626f6f6b6d61726b");
    EXPECT_EQ(facts["bookmarkPath"], nullptr);
}

TEST(JsonReport, distinguishesNoExtendedAttributesFromUnknownOnes) {
    ScriptedFile file;
    file.fileManager.answer = platform::Dictionary{{"NSFileSize", std::uint64_t{0}}};
    EXPECT_EQ(factsOf(file)["extendedAttributes"], Json::object());
}

TEST(JsonReport, givesTheBytesOfAPathThatIsNotUtf8) {
    ScriptedFile file;
    file.url = platform::URL::fileURLWithPath("/a\xFF");
    const Json object = Json::parse(reportOf(file));
    EXPECT_EQ(object["pathTextbox"], "/a\xEF\xBF\xBD");
    EXPECT_EQ(object["facts"]["path"], "/a\xEF\xBF\xBD");
    EXPECT_EQ(object["facts"]["pathBytes"], "2f61ff");
}

TEST(JsonReport, keepsATerminalToAscii) {
    ScriptedFile file;
    file.url = platform::URL::fileURLWithPath("/\xE2\x80\xAE\xC2\x9B\x7F\xC3\xA9");
    const std::string report = reportOf(file, true);
    EXPECT_TRUE(isPrintableAscii(report)) << report;
    EXPECT_EQ(Json::parse(report)["pathTextbox"], "/\xE2\x80\xAE\xC2\x9B\x7F\xC3\xA9");
}

} // namespace
} // namespace tolvane::tests
