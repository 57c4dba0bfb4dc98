#include "platform/linux/files/RealPath.h"

#include "tests/platform/linux/FolderTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvane::platform {
namespace {

using testing::IsEmpty;

std::string textOf(const Result<RealPath>& path) {
    return path ? path->textDownTo(path->components.size()) : path.error().localizedDescription();
}

int errorOf(const std::string& path) {
    const auto real = realPathOfItem(path);
    return real ? 0 : static_cast<int>(real.error().code);
}

using RealPaths = tests::FolderTest;

TEST_F(RealPaths, reportEveryStep) {
    folder.folder("a");
    const auto file = folder.file("a/b");
    const auto path = realPathOfItem(file);
    ASSERT_TRUE(path);
    ASSERT_EQ(path->items.size(), path->components.size() + 1);
    for (std::size_t depth = 0; depth < path->items.size(); ++depth) {
        const auto expected = tests::statusOf(path->textDownTo(depth));
        EXPECT_EQ(path->items[depth].fileNumber, expected.st_ino);
        EXPECT_EQ(path->items[depth].device, expected.st_dev);
    }
    EXPECT_EQ(textOf(path), real + "/a/b");
    EXPECT_EQ(path->textDownTo(0), "/");
    EXPECT_EQ(path->textDownTo(1), "/" + path->components[0]);
}

TEST_F(RealPaths, ofTheRootHaveNoComponents) {
    for (const auto* path : {"/", "//", "/.", "/..", "/../..", "/./", "/tmp/..", "/tmp/../"}) {
        const auto root = realPathOfItem(path);
        ASSERT_TRUE(root) << path;
        EXPECT_THAT(root->components, IsEmpty()) << path;
        EXPECT_EQ(root->items.size(), 1U) << path;
    }
}

TEST_F(RealPaths, leaveOutDotsAndRepeatedSlashesAndFollowLinksOnTheWay) {
    std::filesystem::create_directories(folder.path("a/b"));
    folder.file("a/b/c");
    folder.symlink("relative", "a/b");
    folder.symlink("absolute", folder.path("a"));
    folder.symlink("a/up", "../relative");
    folder.symlink("a/b/last", "c");
    folder.symlink("link to link", "relative/");
    folder.file("\xff\n");
    const std::vector<std::pair<std::string, std::string>> paths{
        {"a//b", "a/b"},
        {"./a/./b", "a/b"},
        {"a/../a/b", "a/b"},
        {"a/.././a//b", "a/b"},
        {"relative/c", "a/b/c"},
        {"absolute/up/c", "a/b/c"},
        {"absolute/up/../b/last", "a/b/last"},
        {"\xff\n", "\xff\n"},
        // The last link is followed where a folder is asked for.
        {"relative", "relative"},
        {"relative/", "a/b"},
        {"relative/.", "a/b"},
        {"relative//", "a/b"},
        {"relative/./", "a/b"},
        {"link to link/", "a/b"},
        {"a/../relative/", "a/b"},
        {"relative/../b", "a/b"},
        {"relative/..", "a"}};
    for (const auto& [name, expected] : paths) {
        EXPECT_EQ(textOf(realPathOfItem(folder.path(name))), real + "/" + expected) << name;
    }
    EXPECT_EQ(realPathOfItem(folder.path("relative"))->items.back().mode & S_IFMT, mode_t{S_IFLNK});
}

TEST_F(RealPaths, agreeWithTheCLibrary) {
    std::filesystem::create_directories(folder.path("a/b"));
    folder.file("a/b/c");
    folder.symlink("l", "a/../a/b/..");
    folder.symlink("a/b/m", "../../l/b");
    for (const auto* name :
         {"l/b/c", "l/b/m/m/m/c", "a/b/m/../../l/b/c", "l/../l/./b/c", "a/b/m/../b/.././b/c"}) {
        EXPECT_EQ(textOf(realPathOfItem(folder.path(name))), std::filesystem::canonical(folder.path(name)))
            << name;
    }
}

TEST_F(RealPaths, failAsASystemCallWould) {
    folder.file("file");
    folder.symlink("loop", "loop");
    folder.symlink("dangling", "nothing");
    const std::vector<std::pair<std::string, int>> errors{
        {folder.path("none"), ENOENT},
        {folder.path("none/.."), ENOENT},
        {folder.path("dangling/"), ENOENT},
        {folder.path("file/below"), ENOTDIR},
        {folder.path("file/"), ENOTDIR},
        {folder.path("file/."), ENOTDIR},
        {folder.path("file/.."), ENOTDIR},
        {folder.path("loop/"), ELOOP},
        {folder.path("loop/below"), ELOOP},
        {folder.path(std::string(256, 'n')), ENAMETOOLONG},
        {folder.path("file") + '\0', EINVAL},
        {"relative", ENOENT},
        {"", ENOENT},
        {folder.path("loop"), 0},
        {folder.path("dangling"), 0}};
    for (const auto& [path, error] : errors) {
        EXPECT_EQ(errorOf(path), error) << path;
    }
}

TEST_F(RealPaths, goThroughAsManyLinksAsTheKernelDoes) {
    folder.folder("end");
    std::string target = "end";
    for (int i = 1; i <= 41; ++i) {
        const auto name = std::to_string(i);
        folder.symlink(name, target);
        target = name;
    }
    EXPECT_EQ(textOf(realPathOfItem(folder.path("40/"))), real + "/end");
    EXPECT_EQ(errorOf(folder.path("41/")), ELOOP);
}

TEST_F(RealPaths, areUnchangedUntilSomethingOnThemIsAnotherItem) {
    folder.folder("a");
    const auto file = folder.file("a/file");
    const auto path = realPathOfItem(file);
    ASSERT_TRUE(path);
    EXPECT_TRUE(isUnchanged(*path));
    // Neither the contents nor what else happens in the folders matters.
    folder.file("a/other");
    folder.file("a/file", "more");
    EXPECT_TRUE(isUnchanged(*path));
    ASSERT_EQ(rename(folder.path("a").c_str(), folder.path("b").c_str()), 0);
    EXPECT_FALSE(isUnchanged(*path));
    folder.folder("a");
    ASSERT_EQ(link(folder.path("b/file").c_str(), file.c_str()), 0);
    EXPECT_FALSE(isUnchanged(*path)) << "the same file in another folder of the same name";
    EXPECT_TRUE(isUnchanged(*realPathOfItem(file)));
}

TEST_F(RealPaths, distinguishItemsByNumberDeviceMountKindAndCreation) {
    const auto status = statusOfItem(folder.file("file")).value();
    EXPECT_TRUE(isSameItem(status, status));
    using Change = void (*)(ItemStatus&);
    const std::array<Change, 5> changes{
        [](ItemStatus& item) { ++item.fileNumber; }, [](ItemStatus& item) { ++item.device; },
        [](ItemStatus& item) { item.mountID = item.mountID.value_or(0) + 1; },
        [](ItemStatus& item) { item.mode = S_IFIFO | 0644U; },
        [](ItemStatus& item) { item.creationDate = Date(1); }};
    for (const Change& change : changes) {
        ItemStatus other = status;
        change(other);
        EXPECT_FALSE(isSameItem(status, other));
    }
    ItemStatus written = status;
    written.size += 1;
    written.linkCount += 1;
    written.modificationDate = Date(1);
    EXPECT_TRUE(isSameItem(status, written));
}

} // namespace
} // namespace tolvane::platform
