// The system's bookmarks beside the program's own reader, and alias files that the Finder makes.
#include "platform/bookmark/format/BookmarkContents.h"
#include "platform/bookmark/format/BookmarkReader.h"
#include "platform/macos/bookmarks/MacBookmarks.h"
#include "tests/platform/macos/real/RealMac.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace tolvane::tests::macos {

namespace fs = std::filesystem;
using namespace platform;

class RealBookmarks : public RealMac {
protected:
    /// The path that the program's own reader finds in a bookmark.
    static std::string storedPath(const Data& bookmark) {
        const auto structure = readBookmark(bookmark);
        EXPECT_TRUE(structure);
        std::string path;
        if (structure) {
            for (const auto& component :
                 bookmarkContents(*structure).pathComponents.value_or(std::vector<std::string>())) {
                path += "/" + component;
            }
        }
        return path;
    }

    /// Has the Finder make an alias file in a folder of its own; empty if it may not or is not there.
    std::string aliasFileOf(const std::string& path) const {
        const std::string place = folder.folder("aliases");
        const auto answer = answerOf(
            {"/usr/bin/osascript", "-e", "on run paths", "-e",
             "tell application \"Finder\" to make new alias file at (POSIX file (item 2 of paths) as alias) "
             "to "
             "(POSIX file (item 1 of paths) as alias)",
             "-e", "end run", path, place});
        const fs::directory_iterator made(place);
        return answer.status == 0 && made != fs::directory_iterator() ? made->path().string() : std::string();
    }
};

TEST_F(RealBookmarks, storeThePathThatTheProgramsOwnReaderFinds) {
    const std::string file = folder.file("a \u00E4.txt", "abc");
    const Data bookmark = bookmarkOf(file);
    EXPECT_EQ(storedPath(bookmark), real + "/a \u00E4.txt");
    EXPECT_EQ(resolved(bookmark), real + "/a \u00E4.txt");
}

TEST_F(RealBookmarks, haveTheSystemsDescriptions) {
    const Data bookmark = bookmarkOf(folder.file("a"));
    const ReadProperties read = readSystemProperties(bookmark);
    ASSERT_FALSE(read.failure) << read.failure->localizedDescription();
    const auto everything = read.properties(NSURLBookmarkAllPropertiesKey);
    ASSERT_TRUE(everything);
    EXPECT_FALSE(everything->empty());
    const auto lines = read.properties(NSURLBookmarkDetailedDescription);
    ASSERT_TRUE(lines);
    EXPECT_NE(lines->find(NSURLBookmarkDetailedDescription), nullptr);
    EXPECT_TRUE(readSystemProperties(Data(100)).failure);
}

TEST_F(RealBookmarks, findTheItemInAnotherFolderUnderAnotherName) {
    const std::string below = folder.folder("below");
    const Data bookmark = bookmarkOf(folder.file("a", "abc"));
    fs::rename(folder.path("a"), below + "/b");
    EXPECT_EQ(resolved(bookmark), real + "/below/b");
    EXPECT_EQ(storedPath(bookmark), real + "/a") << "the bookmark itself is not changed";
}

TEST_F(RealBookmarks, areReadFromAliasFilesOfTheFinder) {
    const std::string file = folder.file("target.txt", "abc");
    const std::string alias = aliasFileOf(file);
    if (alias.empty()) {
        GTEST_SKIP()
            << "the Finder made no alias file: allow it in System Settings, Privacy & Security, Automation";
    }
    const auto bookmark = system.bookmarks->bookmarkDataWithContentsOfURL(urlOf(alias));
    ASSERT_TRUE(bookmark) << bookmark.error().localizedDescription();
    EXPECT_EQ(resolved(*bookmark), real + "/target.txt");
    EXPECT_EQ(storedPath(*bookmark), real + "/target.txt");
    fs::rename(file, folder.path("renamed.txt"));
    EXPECT_EQ(resolved(*bookmark), real + "/renamed.txt");

    const std::vector<std::string_view> keys{NSURLTypeIdentifierKey};
    EXPECT_EQ(
        URLResourceValues(system.resources->resourceValuesForKeys(urlOf(alias), keys).value_or(Dictionary()))
            .typeIdentifier(),
        "com.apple.alias-file");
}

TEST_F(RealBookmarks, areReadFromTheAliasFileThatOtherSystemsReadToo) {
    const std::string file = TOLVANE_SOURCE_DIR "/tests/data/bookmarks/note.alias";
    const auto bookmark = system.bookmarks->bookmarkDataWithContentsOfURL(urlOf(file));
    ASSERT_TRUE(bookmark) << bookmark.error().localizedDescription();
    EXPECT_EQ(bookmark->size(), 648U);
}

} // namespace tolvane::tests::macos
