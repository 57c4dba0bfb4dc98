#include "cli/JsonReport.h"

#include "tests/support/DetailsWindow.h"
#include "tests/support/Streams.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdint>
#include <string>
#include <variant>

namespace tolvane::tests {
namespace {

using Json = nlohmann::ordered_json;

std::string reportOf(const ScriptedFile& file, bool ascii = false) {
    TextOutput stream;
    cli::Output output(stream);
    cli::JsonWriter json(output, ascii);
    cli::writeReportJson(json, "the title", file.sizes(), file.gather());
    json.finish();
    output.flush();
    return stream.text;
}

TEST(JsonReport, holdsEveryTextUnderItsFieldsNameInTheWindowsOrder) {
    DetailsWindow window;
    window.open();
    Json expected = Json::object();
    for (const auto& entry : window.controller().outlets().entries()) {
        const auto* const field = std::get_if<platform::Outlet<platform::TextField>*>(&entry.outlet);
        const auto* const view = std::get_if<platform::Outlet<platform::TextView>*>(&entry.outlet);
        if (field != nullptr || view != nullptr) {
            expected[std::string(entry.name)] =
                field != nullptr ? (**field)->stringValue() : (**view)->string();
        }
    }
    Json object = Json::parse(reportOf(window));
    object.erase("facts");
    EXPECT_EQ(object.dump(), expected.dump());
    EXPECT_EQ(object.size(), 21U);
}

TEST(JsonReport, holdsTypedFacts) {
    ScriptedFile file;
    file.fileManager.answer->set("NSFileSystemFileNumber", UINT64_MAX);
    file.fileManager.answer->set(
        "NSFileModificationDate", platform::Date::fromUnixTime(1'723'228'022, 123'456'789));
    file.bookmarks.resolved = platform::ResolvedBookmark{platform::URL::fileURLWithPath("/moved"), true};
    const Json facts = Json::parse(reportOf(file))["facts"];
    const Json expected = Json::parse(R"({
        "title": "the title", "path": "/data/notes.txt",
        "pathBytes": null, "urlTotalSize": 1300, "urlDataSize": 1000, "xattrSize": 5, "filemanSize": 1001,
        "device": 2049, "inode": 18446744073709551615, "permissions": 420, "ownerID": 1000, "groupID": 50,
        "linkCount": 2, "fileType": "NSFileTypeRegular", "typeIdentifier": "public.plain-text",
        "created": {"date": "2001-01-01T00:00:00.000000000Z", "seconds": 0.0},
        "modified": {"date": "2024-08-09T18:27:02.123456789Z", "seconds": 744920822.1234568},
        "extendedAttributes": {"user.note": "68656c6c6f", "user.x": ""},
        "bookmark": "626f6f6b6d61726b", "bookmarkPath": "/moved",
        "gathered": {"date": "2001-01-01T00:00:00.000000000Z", "seconds": 0.0}})");
    EXPECT_EQ(facts, expected);
}

TEST(JsonReport, saysNullForWhatIsNotKnown) {
    ScriptedFile file;
    file.fileManager.answer = std::unexpected(platform::posixError(13));
    file.bookmarks.made = std::unexpected(platform::posixError(5));
    const Json facts = Json::parse(reportOf(file))["facts"];
    for (const auto* const name :
         {"device", "inode", "permissions", "ownerID", "groupID", "linkCount", "fileType", "typeIdentifier",
          "created", "modified", "extendedAttributes", "bookmark", "bookmarkPath"}) {
        EXPECT_TRUE(facts.at(name).is_null()) << name;
    }
}

TEST(JsonReport, saysNullForATypeAndAPathThatCouldNotBeFound) {
    ScriptedFile file;
    file.resources.failingKey = "NSURLTypeIdentifierKey";
    file.bookmarks.resolved = platform::ResolvedBookmark{};
    const Json facts = Json::parse(reportOf(file))["facts"];
    EXPECT_EQ(facts["typeIdentifier"], nullptr);
    EXPECT_EQ(facts["bookmark"], "626f6f6b6d61726b");
    EXPECT_EQ(facts["bookmarkPath"], nullptr);
}

TEST(JsonReport, tellsNoExtendedAttributesFromUnknownOnes) {
    ScriptedFile file;
    file.fileManager.answer = platform::Dictionary{{"NSFileSize", std::uint64_t{0}}};
    EXPECT_EQ(Json::parse(reportOf(file))["facts"]["extendedAttributes"], Json::object());
}

TEST(JsonReport, givesTheBytesOfAPathThatIsNotUtf8) {
    ScriptedFile file;
    file.url = platform::URL::fileURLWithPath("/a\xFF");
    const Json object = Json::parse(reportOf(file));
    EXPECT_EQ(object["pathTextbox"], "/a\xEF\xBF\xBD");
    EXPECT_EQ(object["facts"]["path"], "/a\xEF\xBF\xBD");
    EXPECT_EQ(object["facts"]["pathBytes"], "2f61ff");
}

TEST(JsonReport, isOneLineWhateverTheTextsHold) {
    ScriptedFile file;
    file.url = platform::URL::fileURLWithPath("/two\nlines\x1B");
    const std::string report = reportOf(file);
    EXPECT_EQ(report.find('\n'), std::string::npos);
    EXPECT_EQ(Json::parse(report)["pathTextbox"], "/two\nlines\x1B");
}

TEST(JsonReport, keepsATerminalToAscii) {
    ScriptedFile file;
    file.url = platform::URL::fileURLWithPath("/\xE2\x80\xAE\xC2\x9B\x7F\xC3\xA9");
    const std::string report = reportOf(file, true);
    EXPECT_TRUE(std::ranges::all_of(report, [](char c) { return c >= 0x20 && c < 0x7F; })) << report;
    EXPECT_EQ(Json::parse(report)["pathTextbox"], "/\xE2\x80\xAE\xC2\x9B\x7F\xC3\xA9");
}

} // namespace
} // namespace tolvane::tests
