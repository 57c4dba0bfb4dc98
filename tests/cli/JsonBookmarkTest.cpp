#include "cli/JsonBookmark.h"

#include "platform/bookmark/format/BookmarkReader.h"
#include "platform/bookmark/format/BookmarkValues.h"
#include "tests/cli/WrittenJson.h"
#include "tests/support/BookmarkCorpus.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using namespace platform;

std::string jsonText(const BookmarkStructure& structure, bool ascii = false) {
    return writtenJson([&](cli::JsonWriter& json) { cli::writeBookmarkJson(json, structure); }, ascii);
}

BookmarkStructure structureOf(const Data& bytes) {
    auto structure = readBookmark(bytes);
    EXPECT_TRUE(structure);
    return structure ? *std::move(structure) : BookmarkStructure();
}

BookmarkStructure corpus(const std::string& name) {
    SCOPED_TRACE(name);
    return structureOf(corpusData(name));
}

Json jsonOf(const BookmarkStructure& structure) {
    return Json::parse(jsonText(structure));
}

Json recordAt(const Json& bookmark, std::uint32_t offset) {
    for (const Json& record : bookmark["records"]) {
        if (record["offset"] == offset) {
            return record;
        }
    }
    ADD_FAILURE() << "no record at " << offset;
    return {};
}

TEST(JsonBookmark, writesThePropertiesWithTheirTypes) {
    const Json properties = jsonOf(corpus("note.bookmark"))["properties"];
    EXPECT_EQ(properties["NSURLNameKey"], "note.txt");
    EXPECT_EQ(properties["NSURLIsDirectoryKey"], false);
    EXPECT_EQ(properties["NSURLVolumeTotalCapacityKey"], 494'384'795'648);
    EXPECT_EQ(
        properties["NSURLBookmarkOriginalRelativePathComponentsArrayKey"],
        Json::parse(R"(["Users","demo","note.txt"])"));
    EXPECT_EQ(
        properties["NSURLCreationDateKey"],
        Json::parse(R"({"date":"2023-03-08T20:26:40.500000000Z","seconds":700000000.5})"));
    EXPECT_EQ(properties["NSURLVolumeURLKey"], Json::parse(R"({"url":"file:///"})"));
}

TEST(JsonBookmark, writesTheHeaderOfABareBookmark) {
    EXPECT_EQ(jsonOf(corpus("note.bookmark"))["header"], Json::parse(R"({
        "container": "bare", "totalLength": 648, "headerLength": 48, "sectionLength": 600,
        "version": 268697600, "versionHex": "0x10040000",
        "securityScopeKey": "0000000000000000000000000000000000000000000000000000000000000000",
        "aliasFile": null, "teamIdentifier": null, "extra": ""})"));
    EXPECT_EQ(jsonOf(corpus("alias-record.bookmark"))["header"]["container"], "bareAlias");
    EXPECT_EQ(jsonOf(corpus("team.bookmark"))["header"]["teamIdentifier"], "TEAM123456");
    const BookmarkStructure scoped = corpus("odd-security-scope-key.bookmark");
    EXPECT_NE(jsonOf(scoped)["header"]["securityScopeKey"], std::string(64, '0'));
}

TEST(JsonBookmark, writesTheHeaderOfAnAliasFile) {
    EXPECT_EQ(jsonOf(corpus("note.alias"))["header"], Json::parse(R"({
        "container": "aliasFile", "totalLength": 656, "headerLength": 56, "sectionLength": 600,
        "version": 268697600, "versionHex": "0x10040000", "securityScopeKey": null,
        "aliasFile": {"repeatedHeaderLength": 56, "beforeTime": "0000000000000000",
            "written": {"date": "2023-03-08T20:28:20.000000000Z", "seconds": 700000100.0},
            "afterTime": "0000000000000000"},
        "teamIdentifier": null, "extra": ""})"));
}

TEST(JsonBookmark, listsTheItemsOfEveryTable) {
    const Json tables = jsonOf(corpus("note.bookmark"))["tables"];
    ASSERT_EQ(tables.size(), 1U);
    EXPECT_EQ(tables[0]["identifier"], 1);
    EXPECT_EQ(tables[0]["offset"], 0x184);
    EXPECT_EQ(tables[0]["next"], 0);
    EXPECT_EQ(tables[0]["byteCount"], 0xCC);
    ASSERT_EQ(tables[0]["items"].size(), 16U);
    EXPECT_EQ(tables[0]["items"][0], Json::parse(R"({"key": 4100, "keyHex": "0x1004", "name": null,
        "label": "pathComponents", "flags": 0, "valueOffset": 60})"));
    EXPECT_EQ(jsonOf(corpus("three-tables.bookmark"))["tables"].size(), 3U);
}

TEST(JsonBookmark, namesKeysThatAreNamedInTheBookmark) {
    SectionComposer composer;
    const std::uint32_t name = composer.addString("NSURLDocumentIdentifierKey");
    const std::uint32_t value = composer.addInt32(77);
    const Json json = jsonOf(structureOf(
        bookmarkWithItems(composer, {{bookmark_key::namedBit | name, value, 5}, {0x7777, value, 0}})));
    EXPECT_EQ(json["tables"][0]["items"], Json::parse(R"([
        {"key": 30583, "keyHex": "0x7777", "name": null, "label": null, "flags": 0, "valueOffset": 40},
        {"key": 2147483652, "keyHex": "0x80000004", "name": "NSURLDocumentIdentifierKey", "label": null,
            "flags": 5, "valueOffset": 40}])"));
    EXPECT_EQ(json["properties"]["NSURLDocumentIdentifierKey"], 77);
}

TEST(JsonBookmark, listsEveryRecordOnceAndRefersToItByItsOffset) {
    const BookmarkStructure structure = corpus("note.bookmark");
    const Json json = jsonOf(structure);
    ASSERT_EQ(json["records"].size(), structure.records.size());
    EXPECT_EQ(recordAt(json, 0x04), Json::parse(R"({"offset": 4, "type": 771, "typeHex": "0x0303",
        "typeName": "int32", "length": 4, "value": 536870912})"));
    EXPECT_EQ(recordAt(json, 0x10)["value"], "Users");
    EXPECT_EQ(recordAt(json, 0x3C)["value"], Json::parse("[16, 32, 44]"));
    EXPECT_EQ(recordAt(json, 0x3C)["typeName"], "array");
    EXPECT_EQ(recordAt(json, 0x94)["value"]["seconds"], 700'000'000.5);
    EXPECT_EQ(recordAt(json, 0xA4)["value"], "01000000000000000f000000000000000000000000000000");
    EXPECT_EQ(recordAt(json, 0x17C)["value"], true);
}

// That the corpus has every type is JsonPage's to check.
TEST(JsonBookmark, decodesEveryTypeOfRecord) {
    const BookmarkStructure structure = corpus("every-type.bookmark");
    const Json json = jsonOf(structure);
    for (const BookmarkRecord& record : structure.records) {
        const Json shown = recordAt(json, record.offset);
        EXPECT_EQ(shown["type"], record.type);
        EXPECT_EQ(shown["length"], record.length);
        if (shown["typeName"] == "relativeURL") {
            EXPECT_EQ(
                shown["value"],
                Json({{"base", structure.word(record, 0)}, {"part", structure.word(record, 1)}}));
        } else if (shown["typeName"] == "dictionary") {
            ASSERT_EQ(shown["value"].size(), record.length / 8);
            EXPECT_EQ(shown["value"][0], Json({structure.word(record, 0), structure.word(record, 1)}));
        } else if (shown["typeName"] == "uuid") {
            EXPECT_EQ(shown["value"].get<std::string>().size(), 36U);
        } else if (shown["typeName"] == "unknown") {
            EXPECT_EQ(shown["value"]["bytes"].get<std::string>().size(), record.length * 2);
        } else if (record.type == record_type::int64) {
            EXPECT_EQ(shown["value"], *bookmarkValue(structure, record).exactInt64());
        }
    }
}

TEST(JsonBookmark, listsWarningsAndTrailingBytes) {
    const Json json = jsonOf(corpus("odd-trailing-bytes.bookmark"));
    EXPECT_GT(json["trailingLength"], 0);
    ASSERT_EQ(json["warnings"].size(), 1U);
    EXPECT_EQ(json["warnings"][0]["text"], "bytes follow the bookmark");
    EXPECT_EQ(json["warnings"][0]["offset"], 648);
    EXPECT_EQ(jsonOf(corpus("note.bookmark"))["warnings"], Json::array());
}

TEST(JsonBookmark, isOneLineOfValidJsonForEveryBookmark) {
    for (const auto& entry : std::filesystem::directory_iterator(corpusPath(""))) {
        const std::string name = entry.path().filename().string();
        if (name.starts_with("bad-")) {
            continue;
        }
        const BookmarkStructure structure = corpus(name);
        const std::string text = jsonText(structure);
        EXPECT_FALSE(text.contains('\n')) << name;
        const std::string ascii = jsonText(structure, true);
        EXPECT_EQ(Json::parse(ascii), Json::parse(text)) << name;
        EXPECT_TRUE(isPrintableAscii(ascii)) << name;
    }
}

// One long text that thousands of arrays share would fill the memory if it stood wherever it is shared.
TEST(JsonBookmark, growsNoFasterThanTheBookmarkWhereMuchIsShared) {
    SectionComposer composer;
    const std::uint32_t text = composer.addString(std::string(1'000, 'x'));
    std::vector<std::uint32_t> arrays{text};
    for (std::uint32_t i = 0; i < 1'000; ++i) {
        const std::vector<std::uint32_t> elements{text, composer.addInt32(i)};
        arrays.push_back(composer.addArray(elements));
    }
    const std::uint32_t all = composer.addArray(arrays);
    const BookmarkStructure structure = structureOf(bookmarkWithItems(composer, {{0x7777, all, 0}}));
    const std::string written = jsonText(structure);
    EXPECT_LT(written.size(), 20 * structure.section.size());
    EXPECT_EQ(Json::parse(written)["records"].size(), structure.records.size());
}

// Resolution

std::string resolutionText(const ResolvedBookmark& resolved, const std::string& volumePath) {
    return writtenJson(
        [&](cli::JsonWriter& json) { cli::writeResolutionJson(json, resolved, volumePath, {}); });
}

TEST(JsonBookmark, writesHowAnItemWasFound) {
    ResolvedBookmark resolved{URL::fileURLWithPath("/data/a b"), true};
    resolved.match = {VolumeMatch::uuid, ItemMatch::search, 12, INT64_MAX, Date(0.5), std::nullopt};
    EXPECT_EQ(
        resolutionText(resolved, "/.vol/5/123"),
        R"({"path":"/data/a b","pathBytes":null,"volumePath":"/.vol/5/123","foundBy":"search","isStale":true,)"
        R"("volumeMatchedBy":"uuid","storedNumber":12,"actualNumber":9223372036854775807,)"
        R"("storedCreationDate":{"date":"2001-01-01T00:00:00.500000000Z","seconds":0.5},)"
        R"("actualCreationDate":null,"compared":[]})");
}

TEST(JsonBookmark, writesThePathsBytesWhereTheyAreNotUtf8) {
    const ResolvedBookmark resolved{URL::fileURLWithPath("/caf\xE9"), false};
    const Json json = Json::parse(resolutionText(resolved, ""));
    EXPECT_EQ(json["path"], "/caf\uFFFD");
    EXPECT_EQ(json["pathBytes"], "2f636166e9");
    EXPECT_TRUE(json["volumePath"].is_null());
    EXPECT_EQ(json["foundBy"], "path");
    EXPECT_EQ(json["volumeMatchedBy"], "notNamed");
    EXPECT_TRUE(json["storedNumber"].is_null());
}

TEST(JsonBookmark, hasAWordForEveryWayToFindAnItem) {
    std::set<std::string> words;
    for (const auto volume :
         {VolumeMatch::uuid, VolumeMatch::nameAndCapacity, VolumeMatch::nameAndCreationDate,
          VolumeMatch::notNamed}) {
        for (const auto item : {ItemMatch::path, ItemMatch::fileNumbers, ItemMatch::search}) {
            ResolvedBookmark resolved{URL::fileURLWithPath("/"), false};
            resolved.match.volume = volume;
            resolved.match.item = item;
            const Json json = Json::parse(resolutionText(resolved, ""));
            words.insert(json["volumeMatchedBy"]);
            words.insert(json["foundBy"]);
        }
    }
    EXPECT_EQ(
        words,
        (std::set<std::string>{
            "uuid", "nameAndCapacity", "nameAndCreationDate", "notNamed", "path", "fileNumbers", "search"}));
}

} // namespace
} // namespace tolvane::tests
