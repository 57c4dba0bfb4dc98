#include "resolver/StoredAndFound.h"

#include "tests/support/ScriptedSources.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>

namespace tolvane::tests {
namespace {

using platform::BookmarkMatch;
using platform::ComparedFact;
using platform::ItemMatch;
using platform::URL;
using platform::Value;
using platform::VolumeMatch;
using resolver::factText;

class StoredAndFoundTest : public testing::Test {
protected:
    resolver::StoredAndFound compare(const platform::ResolvedBookmark& resolved) {
        return resolver::storedAndFound(
            bytesOf("stored"), resolved, bookmarks, [this](auto stored, auto found) {
                comparedStored.assign(stored.begin(), stored.end());
                comparedFound.assign(found.begin(), found.end());
                return std::vector{ComparedFact{"name", Value("a"), std::nullopt}};
            });
    }

    static std::string wordsFor(ItemMatch item, VolumeMatch volume) {
        BookmarkMatch match;
        match.item = item;
        match.volume = volume;
        return resolver::howFoundText(match);
    }

    static std::string textOf(const resolver::StoredAndFound& compared) {
        return resolver::storedAndFoundText(
            {}, compared, [](std::string_view text) { return "<" + std::string(text) + ">"; });
    }

    CallLog log;
    ScriptedBookmarks bookmarks{log};
    platform::Data comparedStored;
    platform::Data comparedFound;
};

TEST_F(StoredAndFoundTest, comparesWithANewBookmarkOfTheItem) {
    bookmarks.made = bytesOf("made");
    const auto compared = compare({URL::fileURLWithPath("/data/a")});
    EXPECT_THAT(log, testing::ElementsAre("bookmarkData /data/a"));
    EXPECT_EQ(comparedStored, bytesOf("stored"));
    EXPECT_EQ(comparedFound, bytesOf("made"));
    EXPECT_EQ(compared.facts.size(), 1U);
    EXPECT_EQ(compared.failure, std::nullopt);
}

TEST_F(StoredAndFoundTest, keepsWhatIsStoredWhereTheItemCannotBeRead) {
    bookmarks.made = std::unexpected(platform::posixError(13));
    const auto compared = compare({URL::fileURLWithPath("/data/a")});
    EXPECT_EQ(compared.facts.size(), 1U);
    EXPECT_TRUE(comparedFound.empty());
    EXPECT_EQ(
        resolver::itemNotComparedText(*compared.failure),
        "The facts of the item cannot be read: Permission denied.");
}

TEST_F(StoredAndFoundTest, asksNothingOfAnItemWithoutURL) {
    EXPECT_EQ(compare({}).failure, std::nullopt);
    EXPECT_TRUE(log.empty());
    EXPECT_TRUE(comparedFound.empty());
}

TEST_F(StoredAndFoundTest, hasOtherWordsForEachWayOfFinding) {
    std::set<std::string> texts;
    for (const auto item : {ItemMatch::path, ItemMatch::fileNumbers, ItemMatch::search, ItemMatch::unknown}) {
        for (const auto volume :
             {VolumeMatch::uuid, VolumeMatch::nameAndCapacity, VolumeMatch::nameAndCreationDate,
              VolumeMatch::notNamed, VolumeMatch::unknown}) {
            texts.insert(wordsFor(item, volume));
        }
    }
    EXPECT_EQ(texts.size(), 20U);
    EXPECT_EQ(
        wordsFor(ItemMatch::search, VolumeMatch::uuid),
        "The item was found by its file number in the folders around the stored path: it was moved. Its "
        "volume was recognised by the UUID.");
}

TEST_F(StoredAndFoundTest, hasATitleForEachFact) {
    for (const char* const name :
         {"path", "name", "fileNumbers", "creationDate", "volumeName", "volumeUUID", "volumeCapacity",
          "volumeCreationDate", "mountPoint"}) {
        EXPECT_NE(resolver::factTitle(name), name);
    }
    EXPECT_EQ(resolver::factTitle("volumeCapacity"), "Volume size");
    EXPECT_EQ(resolver::factTitle("later"), "later");
}

TEST_F(StoredAndFoundTest, writesValuesToTheLastDigit) {
    EXPECT_EQ(factText("path", std::nullopt), "");
    EXPECT_EQ(factText("path", Value("/a\xFF")), "/a\xFF");
    EXPECT_EQ(factText("volumeCapacity", Value(std::int64_t{1000})), "1000 bytes");
    EXPECT_EQ(factText("creationDate", Value(platform::Date(0.25))), "2001-01-01T00:00:00.250000000Z");
    EXPECT_EQ(factText("creationDate", Value(platform::Date(1e300))), platform::Date(1e300).description());
    EXPECT_EQ(
        factText("fileNumbers", Value(platform::Array{Value(std::int64_t{2}), Value(), Value(INT64_MAX)})),
        "2, ?, 9223372036854775807");
    EXPECT_EQ(factText("fileNumbers", Value(platform::Array{})), "");
}

TEST_F(StoredAndFoundTest, writesEqualValuesOnceAndOthersBelowEachOther) {
    EXPECT_EQ(
        textOf(
            {{{"path", Value("/a"), Value("/b"), true},
              {"name", Value("a"), Value("a"), false},
              {"volumeUUID", Value("ab"), Value("AB"), false},
              {"volumeName", Value("v"), std::nullopt},
              {"mountPoint", std::nullopt, Value("/m")},
              {"creationDate", std::nullopt, std::nullopt}}}),
        "The item is at the stored path. The bookmark stores nothing by which its volume could be "
        "recognised.\n"
        "Path: differs\n  stored: </a>\n  found:  </b>\n"
        "Name: same\n  <a>\n"
        "Volume UUID: same\n  stored: <ab>\n  found:  <AB>\n"
        "Volume: not compared\n  stored: <v>\n"
        "Mount point: not compared\n  found:  </m>\n"
        "Created: not known\n");
}

TEST_F(StoredAndFoundTest, saysInTheTextWhyTheItemIsNotThere) {
    EXPECT_THAT(
        textOf({{}, platform::posixError(13)}),
        testing::EndsWith("\n<The facts of the item cannot be read: Permission denied.>\n"));
}

} // namespace
} // namespace tolvane::tests
