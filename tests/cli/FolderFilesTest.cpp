#include "cli/FolderFiles.h"

#include "tests/support/MemoryFileContents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tolvane::cli {
namespace {

using namespace tests;
using testing::ElementsAre;

class FolderFilesOf : public testing::Test {
protected:
    std::vector<std::string> namesFrom(
        const std::vector<std::string>& given, FolderFiles::Settings settings) const {
        FolderFiles files(
            given, settings, contents, []() -> platform::Result<std::string> { return "/here"; });
        std::vector<std::string> names;
        while (const auto name = files.next().value()) {
            names.push_back(*name);
        }
        return names;
    }

    std::map<std::string, std::string> files{
        {"/here/b", ""}, {"/here/a/z", ""}, {"/here/a/deep/file", ""}, {"/here/a/m", ""}, {"/other/x", ""}};
    MemoryFileContents contents{files};
};

TEST_F(FolderFilesOf, areTheNamesAsTheyWereGiven) {
    EXPECT_THAT(namesFrom({"b", "a", "nowhere", ""}, {}), ElementsAre("b", "a", "nowhere", ""));
    EXPECT_THAT(namesFrom({}, {true, false}), ElementsAre());
}

TEST_F(FolderFilesOf, areThoseInFoldersSortedByName) {
    EXPECT_THAT(
        namesFrom({"b", "a/", "/other", "nowhere"}, {true, false}),
        ElementsAre("b", "a/deep/file", "a/m", "a/z", "/other/x", "nowhere"));
}

TEST_F(FolderFilesOf, followNoLinks) {
    contents.links = {"/here/a/deep", "/here/a/m"};
    EXPECT_THAT(namesFrom({"a"}, {true, false}), ElementsAre("a/z"));
    contents.links = {"/here/a"};
    EXPECT_THAT(namesFrom({"a"}, {true, false}), ElementsAre("a/deep/file", "a/m", "a/z"))
        << "but those that are named themselves";
}

TEST_F(FolderFilesOf, stayOnTheVolumeUnlessOthersAreWanted) {
    contents.volumes = {{"/here/a/deep", 2}};
    EXPECT_THAT(namesFrom({"a"}, {true, false}), ElementsAre("a/m", "a/z"));
    EXPECT_THAT(namesFrom({"a"}, {true, true}), ElementsAre("a/deep/file", "a/m", "a/z"));
    EXPECT_THAT(namesFrom({"a/deep"}, {true, false}), ElementsAre("a/deep/file"));
}

// A folder may be empty, but nothing has to be waited for.
TEST_F(FolderFilesOf, areAtHandWhileThereAreNamesOrFolders) {
    const std::vector<std::string> given{"b", "a"};
    const auto here = []() -> platform::Result<std::string> { return "/here"; };
    FolderFiles recursive(given, {true, false}, contents, here);
    EXPECT_TRUE(recursive.isNextAtHand());
    std::vector<bool> atHand;
    while (recursive.next().value()) {
        atHand.push_back(recursive.isNextAtHand());
    }
    EXPECT_THAT(atHand, ElementsAre(true, true, true, false)) << "after b, a/deep/file, a/m and a/z";
}

TEST_F(FolderFilesOf, nameAFolderThatCannotBeListed) {
    contents.unreadable = {"/here/a/deep"};
    EXPECT_THAT(namesFrom({"a"}, {true, false}), ElementsAre("a/deep", "a/m", "a/z"));
}

} // namespace
} // namespace tolvane::cli
