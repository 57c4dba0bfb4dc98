#include "tests/cli/CliProgram.h"
#include "tests/cli/WrittenJson.h"
#include "tests/support/AliasRecords.h"
#include "tests/support/AppleDoubleFiles.h"
#include "tests/support/BookmarkCorpus.h"
#include "tests/support/PropertyListWriters.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

/// Holds docs/json.md to what the program prints.
namespace tolvane::tests {
namespace {

using Row = std::vector<std::string>;

std::string withoutQuotes(const std::string& cell) {
    return cell.size() > 1 && cell.front() == '`' && cell.back() == '`' ? cell.substr(1, cell.size() - 2)
                                                                        : cell;
}

Row cellsOf(const std::string& line) {
    Row cells;
    std::istringstream rest(line.substr(1));
    for (std::string cell; std::getline(rest, cell, '|');) {
        const auto first = cell.find_first_not_of(' ');
        cells.push_back(
            first == std::string::npos ? "" : cell.substr(first, cell.find_last_not_of(' ') - first + 1));
    }
    return cells;
}

/// The rows of the page's tables by the heading that they stand under, without the two lines of their head.
std::map<std::string, std::vector<Row>> tablesOfThePage() {
    std::map<std::string, std::vector<Row>> tables;
    std::istringstream page(contentsOfFile(TOLVANE_SOURCE_DIR "/docs/json.md"));
    std::string heading;
    std::size_t line = 0;
    for (std::string text; std::getline(page, text);) {
        if (text.starts_with('#')) {
            heading = text.substr(text.find(' ') + 1);
        }
        line = text.starts_with('|') ? line + 1 : 0;
        if (line > 2) {
            tables[heading].push_back(cellsOf(text));
        }
    }
    return tables;
}

bool isHexadecimal(const Json& json, std::size_t from) {
    const auto text = json.is_string() ? json.get<std::string>().substr(from) : "not";
    return text.find_first_not_of("0123456789abcdef") == std::string::npos;
}

bool isFraction(const Json& json) {
    return json.is_number_float() || json == "nan" || json == "inf" || json == "-inf";
}

bool isOfKind(const Json& value, const std::string& kind) {
    static const std::map<std::string, bool (*)(const Json&)> kinds{
        {"text", [](const Json& json) { return json.is_string(); }},
        {"integer", [](const Json& json) { return json.is_number_integer(); }},
        {"fraction", isFraction},
        {"number", [](const Json& json) { return json.is_number(); }},
        {"truth", [](const Json& json) { return json.is_boolean(); }},
        {"bytes",
         [](const Json& json) { return isHexadecimal(json, 0) && json.get<std::string>().size() % 2 == 0; }},
        {"number in hexadecimal",
         [](const Json& json) {
             return json.is_string() && json.get<std::string>().starts_with("0x") && isHexadecimal(json, 2);
         }},
        {"date",
         [](const Json& json) {
             return json.is_object() && json.size() == 2
                    && (json.at("date").is_string() || json.at("date").is_null())
                    && isFraction(json.at("seconds"));
         }},
        {"array", [](const Json& json) { return json.is_array(); }},
        {"object", [](const Json& json) { return json.is_object(); }},
        {"null", [](const Json& json) { return json.is_null(); }},
        {"by type", [](const Json&) { return true; }},
    };
    const auto found = kinds.find(kind);
    return found != kinds.end() && found->second(value);
}

class JsonPage : public CliProgram {
protected:
    Json objectOf(const Words& arguments) {
        run(arguments);
        return Json::parse(output.text, nullptr, false);
    }

    std::vector<Json> shownBookmarks() {
        std::vector<Json> shown;
        for (const auto& entry : std::filesystem::directory_iterator(corpusPath(""))) {
            if (!entry.path().filename().string().starts_with("bad-")) {
                files["/bookmark"] = contentsOfFile(entry.path());
                shown.push_back(objectOf("bookmark show --json --file /bookmark"));
            }
        }
        EXPECT_GT(shown.size(), 10U);
        return shown;
    }

    /// Both versions, with a disk image, without a path, and without numbers.
    std::vector<Json> shownAliasRecords() {
        WrittenAlias image = noteAlias(2);
        image.tags.emplace_back(20, textOfBytes(writtenAlias(noteAlias(3))));
        image.tags.emplace_back(99, "unknown");
        WrittenAlias bare;
        bare.time = bare.volumeTime = 0;
        bare.number = bare.parentNumber = 0xFFFF'FFFF;
        std::vector<Json> shown;
        for (const WrittenAlias& alias : {image, bare, noteAlias(3)}) {
            files["/alias"] = textOfBytes(writtenAlias(alias));
            shown.push_back(objectOf("bookmark show --json --file /alias").at("aliasRecord"));
        }
        return shown;
    }

    /// Each object has the keys of the page's table in its order, and values of their kinds. What the page
    /// says may be null has to be seen null once, and once not.
    void expectAsOnThePage(const std::string& heading, const std::vector<Json>& objects) {
        const std::vector<Row>& rows = page.at(heading);
        std::vector<std::string> keys;
        for (const Row& row : rows) {
            keys.push_back(withoutQuotes(row.at(0)));
        }
        ASSERT_FALSE(objects.empty()) << heading;
        for (const Json& object : objects) {
            std::vector<std::string> found;
            for (const auto& [key, value] : object.items()) {
                found.push_back(key);
            }
            ASSERT_EQ(found, keys) << heading;
        }
        for (std::size_t i = 0; i < rows.size(); ++i) {
            std::string kind = rows[i].at(1);
            const std::size_t orNull = kind.find(" or null");
            kind = kind.substr(0, orNull);
            std::size_t nulls = 0;
            for (const Json& object : objects) {
                const Json& value = object.at(keys[i]);
                nulls += value.is_null() ? 1U : 0U;
                EXPECT_TRUE(isOfKind(value, kind) || (orNull != std::string::npos && value.is_null()))
                    << heading << ": " << keys[i] << ": " << value;
            }
            if (orNull != std::string::npos) {
                EXPECT_GT(nulls, 0U) << heading << ": " << keys[i];
                EXPECT_LT(nulls, objects.size()) << heading << ": " << keys[i];
            }
        }
    }

    const std::map<std::string, std::vector<Row>> page = tablesOfThePage();
};

TEST_F(JsonPage, listsWhatAReportHolds) {
    std::vector<Json> reports{objectOf("report --json file"), objectOf({"report", "--json", "/a\xFF"})};
    fileManager.answer = std::unexpected(platform::posixError(EACCES));
    bookmarks.made = std::unexpected(platform::posixError(EACCES));
    reports.push_back(objectOf("report --json unreadable"));
    std::vector<Json> facts;
    for (const Json& report : reports) {
        facts.push_back(report.at("facts"));
    }
    expectAsOnThePage("report", reports);
    expectAsOnThePage("facts", facts);
}

TEST_F(JsonPage, listsWhatAnExplanationHolds) {
    fileManager.answer = platform::Dictionary{
        {platform::NSFileExtendedAttributes.data(),
         platform::Dictionary{{"user.xdg.tags", bytesOf("a,b")}, {"user.unknown", bytesOf("\x01")}}}};
    std::vector<Json> items{objectOf("attributes --json file"), objectOf({"attributes", "--json", "/a\xFF"})};
    fileManager.answer->set(platform::NSFileType, platform::NSFileTypeRegular);
    files["/here/._c"] =
        std::string(textOfBytes(companionFileWithAttributes({{"com.apple.quarantine", "1;;"}})));
    items.push_back(objectOf("attributes --json ._c"));
    facts = &statusFacts;
    files["/here/a"] = "abc";
    setAttributes({{"user.crc32", bytesOf("352441c2")}});
    items.push_back(objectOf("attributes --json --verify a"));
    items.push_back(objectOf("attributes --json --verify gone"));
    expectAsOnThePage("attributes", items);
    expectAsOnThePage(
        "verified checksum", {items.end()[-2].at("verified").at(0), items.end()[-1].at("verified").at(0)});
    std::vector<Json> explanations{objectOf("attributes --explain x --hex 00 --json")};
    std::vector<Json> fields;
    for (const Json& item : items) {
        std::ranges::copy(item.at("attributes"), std::back_inserter(explanations));
        std::ranges::copy(item.at("companionAttributes"), std::back_inserter(explanations));
    }
    for (const Json& explanation : explanations) {
        std::ranges::copy(explanation.at("fields"), std::back_inserter(fields));
    }
    expectAsOnThePage("explanation", explanations);
    expectAsOnThePage("field", fields);
    EXPECT_GT(explanations.size(), 7U);
}

TEST_F(JsonPage, listsWhatABookmarkHolds) {
    std::map<std::string, std::vector<Json>> parts;
    std::map<std::string, std::string> kindsOfRecords;
    std::set<std::string> typesSeen;
    for (const Row& row : page.at("value of a record")) {
        kindsOfRecords[withoutQuotes(row.at(0))] = row.at(1);
    }
    for (const Json& bookmark : shownBookmarks()) {
        parts["bookmark show"].push_back(bookmark);
        parts["header"].push_back(bookmark.at("header"));
        if (const Json& aliasFile = bookmark.at("header").at("aliasFile"); !aliasFile.is_null()) {
            parts["aliasFile"].push_back(aliasFile);
        }
        for (const Json& table : bookmark.at("tables")) {
            parts["table"].push_back(table);
            std::ranges::copy(table.at("items"), std::back_inserter(parts["item"]));
        }
        std::ranges::copy(bookmark.at("warnings"), std::back_inserter(parts["warning"]));
        for (const Json& record : bookmark.at("records")) {
            parts["record"].push_back(record);
            const std::string type = record.at("typeName");
            const Json& value = record.at("value");
            typesSeen.insert(type);
            EXPECT_TRUE(
                isOfKind(value, kindsOfRecords[type]) || (value.size() == 1 && value.contains("bytes")))
                << record;
        }
    }
    for (const auto& [heading, objects] : parts) {
        expectAsOnThePage(heading, objects);
    }
    for (const Json& record : shownAliasRecords()) {
        parts["aliasRecord"].push_back(record);
        std::ranges::copy(record.at("items"), std::back_inserter(parts["aliasItem"]));
        std::ranges::copy(record.at("warnings"), std::back_inserter(parts["warning"]));
    }
    for (const std::string heading : {"aliasRecord", "aliasItem"}) {
        expectAsOnThePage(heading, parts[heading]);
    }
    EXPECT_EQ(parts.size(), 9U);
    for (const auto& [type, kind] : kindsOfRecords) {
        EXPECT_TRUE(typesSeen.contains(type)) << type;
    }
}

TEST_F(JsonPage, listsWhatResolvingFinds) {
    const Words resolve = "bookmark resolve --json Ym9va21hcms=";
    platform::ResolvedBookmark& resolved = *bookmarks.resolved;
    resolved.match.storedNumber = 12;
    resolved.match.actualNumber = 13;
    resolved.match.storedCreationDate = resolved.match.actualCreationDate = platform::Date(0.5);
    std::vector<Json> found{objectOf(resolve)};
    resolved = platform::ResolvedBookmark{platform::URL::fileURLWithPath("/caf\xE9"), true};
    fileManager.answer = platform::Dictionary{};
    found.push_back(objectOf(resolve));
    bookmarks.made = corpusData("note.bookmark");
    found.push_back(objectOf({"bookmark", "resolve", "--json", base64Of(corpusText("note.bookmark"))}));
    expectAsOnThePage("bookmark resolve", found);
    std::vector<Json> compared;
    for (const Json& resolution : found) {
        std::ranges::copy(resolution.at("compared"), std::back_inserter(compared));
    }
    expectAsOnThePage("compared", compared);
}

TEST_F(JsonPage, listsWhatResolvingEveryBookmarkFinds) {
    const Words resolve = "bookmark resolve --json --all --file /note";
    files["/note"] = corpusText("note.bookmark");
    std::vector<Json> found{objectOf(resolve)};
    bookmarks.resolved = std::unexpected(platform::posixError(ENOENT));
    found.push_back(objectOf(resolve));
    expectAsOnThePage("every bookmark of a file", found);
}

TEST_F(JsonPage, listsWhatIsFound) {
    files["/here/note"] = corpusText("note.bookmark");
    files["/here/old"] = textOfBytes(writtenAlias(noteAlias(3)));
    files["/here/location"] = xmlPropertyList(platform::Dictionary{{"URL", "https://example.org/"}}).value();
    files["/here/list"] = xmlPropertyList(platform::Dictionary{
                                              {"Name", "Note"},
                                              {"URL", "file:///Users/demo/note.txt"},
                                              {"Bookmark", corpusData("note.bookmark")}})
                              .value();
    std::vector<Json> found;
    for (const std::string name : {"note", "old", "location", "list"}) {
        found.push_back(objectOf({"bookmark", "find", "--json", name}));
    }
    expectAsOnThePage("bookmark find", found);
}

TEST_F(JsonPage, listsWhatAFailureHolds) {
    files["/bookmark"] = corpusText("bad-magic.bookmark");
    bookmarks.resolved = std::unexpected(platform::posixError(ENOENT));
    expectAsOnThePage(
        "failure",
        {objectOf("bookmark show --json --file /bookmark"), objectOf("bookmark resolve --json Ym9va21hcms="),
         objectOf({"bookmark", "show", "--json", "no base-64"}),
         objectOf("bookmark show --json --file /nowhere")});
}

TEST_F(JsonPage, hasAnExampleOfEveryKind) {
    const auto examples = [this](const std::string& heading, std::size_t column) {
        std::map<std::string, std::string> found;
        for (const Row& row : page.at(heading)) {
            found[row.at(0)] = withoutQuotes(row.at(column));
        }
        return found;
    };
    const platform::Data bytes{std::byte{0}, std::byte{0xAF}};
    using cli::JsonWriter;
    EXPECT_EQ(
        examples("Kinds of values", 2),
        (std::map<std::string, std::string>{
            {"text", writtenJson([](JsonWriter& json) { json.text("note.txt"); })},
            {"integer", writtenJson([](JsonWriter& json) { json.unsignedInteger(UINT64_MAX); })},
            {"fraction", writtenJson([](JsonWriter& json) { json.fraction(0.1); })},
            {"truth", writtenJson([](JsonWriter& json) { json.boolean(true); })},
            {"bytes", writtenJson([&](JsonWriter& json) { json.hex(bytes); })},
            {"number in hexadecimal", writtenJson([](JsonWriter& json) { json.hexNumber(0x1004, 4); })},
            {"date", writtenJson([](JsonWriter& json) { json.date(platform::Date(700'000'000.5)); })}}));

    const auto value = [](const platform::Value& any) {
        return writtenJson([&any](JsonWriter& json) { json.value(any); });
    };
    EXPECT_EQ(
        examples("Values of any kind", 1),
        (std::map<std::string, std::string>{
            {"bytes", value(bytes)},
            {"UUID", value(platform::UUID{})},
            {"URL", value(*platform::URL::fromText("file:///a%20b"))},
            {"dictionary", value(platform::Dictionary{
                               {"a", std::int64_t{1}}, {"b", platform::Array{platform::Value(), "x"}}})},
            {"fraction that is not finite", value(std::nan(""))}}));
}

TEST_F(JsonPage, listsWhatIsLeftOfABookmark) {
    files["/bookmark"] = corpusText("note.bookmark").substr(0, 600);
    const Json left = objectOf("bookmark show --json --salvage --file /bookmark");
    expectAsOnThePage("what is left of a bookmark", {left});
    EXPECT_EQ(left.at("fault").at("offset"), 4);
    expectAsOnThePage("missing", std::vector<Json>(left.at("missing").begin(), left.at("missing").end()));
    expectAsOnThePage("table", std::vector<Json>(left.at("tables").begin(), left.at("tables").end()));
}

} // namespace
} // namespace tolvane::tests
