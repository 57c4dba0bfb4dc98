#include "platform/values/URL.h"

#include "platform/values/Value.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace tolvane::platform {
namespace {

using namespace std::string_view_literals;

URL url(std::string_view text) {
    return URL::fromText(text).value_or(URL::fileURLWithPath("/this/text/is/no/URL"));
}

TEST(URL, escapesExactlyTheBytesThatAPathCannotHold) {
    constexpr std::string_view plain =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~!$&'()*+,=:@/";
    for (unsigned byte = 1; byte <= 0xFF; ++byte) {
        const auto character = static_cast<char>(byte);
        char escape[4];
        std::snprintf(escape, sizeof escape, "%%%02X", byte);
        const std::string expected = plain.contains(character) ? std::string(1, character) : escape;
        const std::string path = {'/', character, 'z'};
        const URL made = URL::fileURLWithPath(path);
        EXPECT_EQ(made.absoluteString(), "file:///" + expected + "z");
        EXPECT_EQ(made.path(), path);
        EXPECT_EQ(made.fileSystemRepresentation(), path);
        EXPECT_EQ(URL::fromText(made.absoluteString()), made);
    }
}

TEST(URL, normalisesNothingInAPath) {
    for (const std::string_view path : {"/", "//", "/a/", "/a//b", "/./a/../b", "/a/."}) {
        EXPECT_EQ(URL::fileURLWithPath(path).path(), path);
    }
}

TEST(URLDeathTest, isNotMadeFromAPathThatIsNotAbsolute) {
    EXPECT_DEATH(URL::fileURLWithPath("a"), "path that is not absolute");
    EXPECT_DEATH(URL::fileURLWithPath(""), "path that is not absolute");
}

TEST(URL, isNotParsedFromOtherText) {
    for (const std::string_view text :
         {"", "/a", "a", "a/b:c", ":a", "1a:b", "a b:c", "-a:b", "file", "file:", "file:%", "file:/%2",
          "file:/%G0", "file:/%0g", "file:/%%41", "http://a/?%zz", "\xC3\xA9:b"}) {
        EXPECT_FALSE(URL::fromText(text)) << text;
    }
}

TEST(URL, keepsItsTextAsGiven) {
    for (const std::string_view text :
         {"http://host/a%2fb?q=%41#f", "FILE:///x", "mailto:a@b", "a+b-c.1:d", "x:/"}) {
        EXPECT_EQ(url(text).absoluteString(), text);
    }
}

TEST(URL, isAFileURLByItsSchemeAlone) {
    EXPECT_TRUE(url("file:///a").isFileURL());
    EXPECT_TRUE(url("FiLe:///a").isFileURL());
    EXPECT_TRUE(url("file://host/a").isFileURL());
    EXPECT_FALSE(url("files:///a").isFileURL());
    EXPECT_FALSE(url("http://file:80/a").isFileURL());
    EXPECT_FALSE(url("fil:e").isFileURL());
}

TEST(URL, findsThePathBetweenAuthorityAndQuery) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"file:///a/b", "/a/b"},
        {"file:/a/b", "/a/b"},
        {"file://host:1/a", "/a"},
        {"file://host", ""},
        {"file://", ""},
        {"file://host?/a", ""},
        {"file:///a?b/c", "/a"},
        {"file:///a#b?c", "/a"},
        {"file:///a%3Fb%23c", "/a?b#c"},
        {"file:///a%2Fb", "/a/b"},
        {"file:///%e2%82%AC%ff", "/\xE2\x82\xAC\xFF"},
        {"file:///a%2541", "/a%41"},
        {"http:?q", ""},
        {"mailto:a@b", "a@b"},
    };
    for (const auto& [text, path] : cases) {
        EXPECT_EQ(url(text).path(), path) << text;
    }
}

TEST(URL, hasBytesForSystemCallsOnlyWhereTheyNameAFile) {
    EXPECT_EQ(url("file://host/a%FF").fileSystemRepresentation(), "/a\xFF");
    EXPECT_EQ(url("http://host/a").fileSystemRepresentation(), std::nullopt);
    EXPECT_EQ(url("file://host").fileSystemRepresentation(), std::nullopt);
    EXPECT_EQ(url("file:///a%00b").fileSystemRepresentation(), std::nullopt);
    EXPECT_EQ(URL::fileURLWithPath("/a\0b"sv).fileSystemRepresentation(), std::nullopt);
    EXPECT_EQ(URL::fileURLWithPath("/a\0b"sv).path(), "/a\0b"sv);
}

TEST(URL, hasALastPathComponent) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"file:///a/b.txt", "b.txt"},
        {"file:///a/b/", "b"},
        {"file:///a/b///", "b"},
        {"file:///", "/"},
        {"file://///", "/"},
        {"file:///a", "a"},
        {"file://host", ""},
        {"mailto:a@b", "a@b"},
        {"file:///a/%FF%20b?c", "\xFF b"},
        {"file:///a/..", ".."},
    };
    for (const auto& [text, component] : cases) {
        EXPECT_EQ(url(text).lastPathComponent(), component) << text;
    }
}

TEST(URL, isEqualByItsTextAlone) {
    URL item = url("file:///a");
    item.keepResourceValue("size", 1);
    EXPECT_EQ(item, url("file:///a"));
    EXPECT_FALSE(item == url("file:/a"));
    EXPECT_FALSE(url("file:///%41") == url("file:///A"));
}

std::optional<std::int64_t> keptNumber(const URL& from, std::string_view key) {
    const Value* value = from.keptResourceValue(key);
    return value != nullptr ? value->exactInt64() : std::nullopt;
}

TEST(URL, keepsTheLastValueOfEachKeyWhetherGivenAloneOrWithOthers) {
    URL item = url("file:///a");
    EXPECT_EQ(item.keptResourceValue("size"), nullptr);
    item.keepResourceValue("size", 1);
    item.keepResourceValue("count", 2);
    item.keepResourceValue("size", 3);
    item.keepResourceValues({{"links", 4}, {"count", 5}});
    EXPECT_EQ(keptNumber(item, "size"), 3);
    EXPECT_EQ(keptNumber(item, "count"), 5);
    EXPECT_EQ(keptNumber(item, "links"), 4);
    EXPECT_EQ(item.keptResourceValue("siz"), nullptr);
}

TEST(URL, passesKeptValuesToCopiesMadeAfterwardsAlone) {
    URL original = url("file:///a");
    const URL before = original;
    original.keepResourceValues({{"size", 1}, {"links", 4}});
    URL after = original;
    original.keepResourceValue("size", 2);
    after.keepResourceValues({{"links", 5}, {"count", 3}});

    EXPECT_EQ(before.keptResourceValue("size"), nullptr);
    EXPECT_EQ(keptNumber(after, "size"), 1);
    EXPECT_EQ(keptNumber(after, "links"), 5);
    EXPECT_EQ(keptNumber(after, "count"), 3);
    EXPECT_EQ(keptNumber(original, "size"), 2);
    EXPECT_EQ(keptNumber(original, "links"), 4);
    EXPECT_EQ(original.keptResourceValue("count"), nullptr);
}

TEST(URL, canKeepACopyOfItself) {
    URL item = url("file:///a");
    item.keepResourceValue("size", 1);
    item.keepResourceValue("self", item);
    const Value* self = item.keptResourceValue("self");
    ASSERT_NE(self, nullptr);
    EXPECT_EQ(*self, Value(item));
}

TEST(AbsolutePath, joinsANameToTheFolder) {
    const struct {
        std::string_view name;
        std::string_view folder;
        std::string_view path;
    } cases[] = {
        {"a", "/f", "/f/a"},
        {"a/b", "/f/", "/f/a/b"},
        {"a", "/", "/a"},
        {"a\xFF\n", "/f\xFE", "/f\xFE/a\xFF\n"},
        {"", "/f", ""},
        // An absolute name does not need the folder.
        {"/a", "/f", "/a"},
        {"/", "/f", "/"},
        {"//", "/f", "/"},
        // What never changes the meaning is left out.
        {"//a///b", "/f", "/a/b"},
        {"./a/././b", "//f/.", "/f/a/b"},
        {".", "/f", "/f"},
        {".a/b.", "/f", "/f/.a/b."},
        // A step upward may lead elsewhere than its name says.
        {"../a", "/f", "/f/../a"},
        {"a/..", "/f", "/f/a/.."},
        {"/..", "/f", "/.."},
        {"...", "/f", "/f/..."},
        // A final slash asks for a folder.
        {"a/", "/f", "/f/a/"},
        {"a//", "/f", "/f/a/"},
        {"a/.", "/f", "/f/a/"},
        {"a/./", "/f", "/f/a/"},
        {"./", "/f", "/f/"},
        {"/.", "/f", "/"},
        {"a", "/f/", "/f/a"},
    };
    for (const auto& [name, folder, path] : cases) {
        EXPECT_EQ(absolutePath(name, folder), path) << name << " in " << folder;
    }
}

TEST(LocalFileURL, isMadeAnewFromThePathOfAFileOnThisMachine) {
    EXPECT_EQ(localFileURL("file:///a%62c"), URL::fileURLWithPath("/abc"));
    EXPECT_EQ(localFileURL("FILE:///a b"), URL::fileURLWithPath("/a b"));
    EXPECT_EQ(localFileURL("file:/abc"), URL::fileURLWithPath("/abc"));
    EXPECT_EQ(localFileURL("file:///%FF%0A"), URL::fileURLWithPath("/\xff\n"));
    EXPECT_EQ(localFileURL("file:///a?query#part"), URL::fileURLWithPath("/a"));
    EXPECT_EQ(localFileURL("file://localhost/a"), URL::fileURLWithPath("/a"));
    for (const std::string text :
         {"", "/a", "https:///a", "file:", "file://", "file:a", "file://localhost", "file:///a%00b",
          "file:///a%2", "file:///%zz", "file://elsewhere/a", "file://localhost.example/a"}) {
        EXPECT_EQ(localFileURL(text), std::nullopt) << text;
    }
}

} // namespace
} // namespace tolvane::platform
