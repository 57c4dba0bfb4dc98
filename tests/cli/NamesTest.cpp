#include "cli/Names.h"

#include "tests/support/Streams.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using cli::NulSeparatedNames;
using testing::ElementsAre;
using namespace std::string_literals;

std::vector<std::string> allNames(cli::Names& names) {
    std::vector<std::string> all;
    while (true) {
        const auto name = names.next();
        if (!name || !*name) {
            return all;
        }
        all.push_back(**name);
    }
}

std::vector<std::string> namesIn(const std::string& list, std::size_t pieceSize) {
    TextInput input(list, pieceSize);
    NulSeparatedNames names(input);
    return allNames(names);
}

TEST(Names, listsWhatItWasGiven) {
    const std::vector<std::string> given{"a", "", "b"};
    cli::ListedNames names(given);
    EXPECT_EQ(allNames(names), given);
    EXPECT_EQ(*names.next(), std::nullopt);
}

TEST(Names, saysWhetherTheNextOneIsAtHand) {
    const std::vector<std::string> given{"a", "b"};
    cli::ListedNames listed(given);
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(listed.isNextAtHand());
        EXPECT_TRUE(listed.next());
    }
    EXPECT_FALSE(listed.isNextAtHand());

    TextInput input("a\0b\0c\0"s, 5);
    NulSeparatedNames names(input);
    EXPECT_FALSE(names.isNextAtHand()) << "nothing has been read";
    EXPECT_EQ(**names.next(), "a");
    EXPECT_TRUE(names.isNextAtHand());
    EXPECT_EQ(**names.next(), "b");
    EXPECT_FALSE(names.isNextAtHand()) << "the end of the name has not been read";
    EXPECT_EQ(**names.next(), "c");
    EXPECT_FALSE(names.isNextAtHand());
}

TEST(Names, splitsAtNulsHoweverTheInputArrives) {
    for (const std::size_t pieceSize : {1U, 2U, 3U, 5U, 4096U}) {
        EXPECT_THAT(
            namesIn("one\0two words\0\xFFthree\nlines\0"s, pieceSize),
            ElementsAre("one", "two words", "\xFFthree\nlines"));
    }
}

TEST(Names, keepsEmptyNamesAndALastNameWithoutItsNul) {
    EXPECT_THAT(namesIn("one\0two"s, 2), ElementsAre("one", "two"));
    EXPECT_THAT(namesIn("\0one\0\0"s, 4), ElementsAre("", "one", ""));
    EXPECT_THAT(namesIn("", 4), testing::IsEmpty());
}

TEST(Names, cutsANameThatNoSystemCallTakes) {
    const std::string endless(5 * NulSeparatedNames::longestName, 'x');
    const auto names = namesIn(endless + "\0next\0"s, 1000);
    ASSERT_EQ(names.size(), 2U);
    EXPECT_EQ(names[0].size(), NulSeparatedNames::longestName);
    EXPECT_EQ(names[1], "next");
}

TEST(Names, failsWhereTheInputFailsAfterTheNamesBefore) {
    TextInput input("one\0tw"s);
    input.failureAtEnd = platform::posixError(EIO);
    NulSeparatedNames names(input);
    EXPECT_EQ(*names.next(), "one");
    EXPECT_EQ(names.next().error().code, EIO);
}

TEST(Names, readsOnlyWhenItHasNoneLeft) {
    TextInput input("one\0two\0"s);
    NulSeparatedNames names(input);
    static_cast<void>(names.next());
    static_cast<void>(names.next());
    EXPECT_EQ(input.reads, 1U);
    EXPECT_EQ(*names.next(), std::nullopt);
    EXPECT_EQ(input.reads, 2U);
}

std::string pathOf(const std::string& name, const platform::Result<std::string>& folder = "/here"s) {
    const auto url = cli::urlOfName(name, folder);
    return url ? url->path() : url.error().localizedDescription();
}

TEST(Names, meanItemsOfTheCurrentFolder) {
    EXPECT_EQ(pathOf("a"), "/here/a");
    EXPECT_EQ(pathOf("/a"), "/a");
    EXPECT_EQ(pathOf("-"), "/here/-");
    EXPECT_EQ(pathOf("caf\xE9\n"), "/here/caf\xE9\n");
}

TEST(Names, meanNothingWhenEmptyOrTooLong) {
    EXPECT_EQ(pathOf(""), "No such file or directory");
    EXPECT_EQ(pathOf(std::string(NulSeparatedNames::longestName, '/')), "File name too long");
    EXPECT_EQ(pathOf(std::string(NulSeparatedNames::longestName - 1, '/')), "/");
}

TEST(Names, needTheCurrentFolderWhenTheyAreRelative) {
    const platform::Result<std::string> none = std::unexpected(platform::posixError(EACCES));
    EXPECT_EQ(pathOf("/a", none), "/a");
    EXPECT_EQ(pathOf("a", none), "Permission denied");
}

} // namespace
} // namespace tolvane::tests
