#include "platform/linux/bookmarks/KnownFolders.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace tolvane::platform {
namespace {

class KnownFoldersTest : public testing::Test {
protected:
    void keep(const std::string& folder, const std::string& user = {}) {
        BookmarkContents contents;
        contents.userName = user;
        folders.keep({folder, {}, nullptr, contents});
    }

    std::chrono::steady_clock::time_point now;
    KnownFolders folders{[this] { return now; }};
};

TEST_F(KnownFoldersTest, areFoundByTheirFolder) {
    keep("");
    keep("/a");
    keep("/a/b");
    for (const std::string folder : {"", "/a", "/a/b"}) {
        ASSERT_NE(folders.at(folder), nullptr) << folder;
        EXPECT_EQ(folders.at(folder)->folder, folder);
    }
    for (const std::string folder : {"/", "/a/", "/a/b/c", "/A"}) {
        EXPECT_EQ(folders.at(folder), nullptr) << folder;
    }
}

TEST_F(KnownFoldersTest, giveWayToALaterOneAtTheFolder) {
    keep("/a", "first");
    now += std::chrono::milliseconds(900);
    keep("/a", "second");
    now += std::chrono::milliseconds(900);
    ASSERT_NE(folders.at("/a"), nullptr);
    EXPECT_EQ(folders.at("/a")->contents.userName, "second");
}

TEST_F(KnownFoldersTest, areNoMoreThanSixteen) {
    for (int i = 0; i < 17; ++i) {
        keep("/" + std::to_string(i));
    }
    EXPECT_EQ(folders.at("/0"), nullptr);
    EXPECT_NE(folders.at("/1"), nullptr);
    EXPECT_NE(folders.at("/16"), nullptr);
}

} // namespace
} // namespace tolvane::platform
