#include "platform/posix/PosixFileContents.h"

#include "tests/platform/linux/FolderTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <ctime>
#include <string>
#include <vector>
#include <fcntl.h>

namespace tolvane::platform {
namespace {

using testing::UnorderedElementsAre;

class PosixFileContentsTest : public tests::FolderTest {
protected:
    static std::error_code error(int number) { return {number, std::generic_category()}; }

    std::string read(const std::string& path, std::uint64_t offset, std::size_t length) const {
        const auto file = files.openForReading(path);
        EXPECT_TRUE(file);
        std::vector<std::byte> room(length);
        const auto count = (*file)->read(offset, room);
        EXPECT_TRUE(count);
        return {reinterpret_cast<const char*>(room.data()), count.value_or(0)};
    }

    std::vector<std::string> entriesOf(const std::string& path) const {
        std::vector<std::string> names;
        EXPECT_TRUE(files.visitFolder(path, [&](std::string_view name, const ItemLook&) {
            names.emplace_back(name);
            return true;
        }));
        return names;
    }

    PosixFileContents files;
};

TEST_F(PosixFileContentsTest, looksAtItemsAndAtTheTargetsOfLinks) {
    folder.file("file", "four");
    folder.folder("folder");
    folder.symlink("link", "file");
    EXPECT_EQ(files.lookAtItem(folder.path("link"))->kind, ItemKind::symbolicLink);
    EXPECT_EQ(files.lookAtItem(folder.fifo("fifo"))->kind, ItemKind::fifo);
    ASSERT_EQ(chmod(folder.path("file").c_str(), 04751), 0);
    const auto file = files.lookAtTarget(folder.path("link"));
    ASSERT_TRUE(file);
    EXPECT_EQ(file->kind, ItemKind::regularFile);
    EXPECT_EQ(file->size, 4U);
    EXPECT_EQ(file->permissions, 04751U);
    EXPECT_EQ(*file, *files.lookAtItem(folder.path("file")));
    EXPECT_NE(file->fileNumber, files.lookAtItem(folder.path("folder"))->fileNumber);
    EXPECT_EQ(files.destinationOfSymbolicLink(folder.path("link")), "file");
}

TEST_F(PosixFileContentsTest, reportsWhyThereIsNothing) {
    EXPECT_EQ(files.lookAtItem(folder.path("missing")).error(), error(ENOENT));
    EXPECT_EQ(files.lookAtTarget(folder.symlink("loop", "loop")).error(), error(ELOOP));
    EXPECT_EQ(files.destinationOfSymbolicLink(folder.file("file")).error(), error(EINVAL));
    const std::string path("/tmp\0x", 6);
    EXPECT_EQ(files.lookAtItem(path).error(), error(EINVAL));
    EXPECT_EQ(files.lookAtTarget(path).error(), error(EINVAL));
    EXPECT_EQ(files.destinationOfSymbolicLink(path).error(), error(EINVAL));
    EXPECT_EQ(files.openForReading(path).error(), error(EINVAL));
    EXPECT_EQ(files.visitFolder(path, {}).error(), error(EINVAL));
}

TEST_F(PosixFileContentsTest, readsAnyStretchOfAFile) {
    const std::string path = folder.file("file", "0123456789");
    EXPECT_EQ(read(path, 0, 4), "0123");
    EXPECT_EQ(read(path, 8, 4), "89");
    EXPECT_EQ(read(path, 10, 4), "");
    EXPECT_EQ(read(path, UINT64_MAX, 4), "");
    EXPECT_EQ(read(folder.symlink("link", "file"), 3, 2), "34");
    EXPECT_EQ((*files.openForReading(path))->size(), 10U);
}

TEST_F(PosixFileContentsTest, opensRegularFilesOnlyAndWaitsForNone) {
    for (const std::string& path :
         {folder.fifo("fifo"), folder.socket("socket"), std::string("/dev/zero"),
          folder.symlink("link", folder.path("fifo"))}) {
        EXPECT_EQ(files.openForReading(path).error(), error(EINVAL)) << path;
    }
    EXPECT_EQ(files.openForReading(folder.path()).error(), error(EISDIR));
    EXPECT_EQ(files.openForReading(folder.path("missing")).error(), error(ENOENT));
}

TEST_F(PosixFileContentsTest, leavesTheAccessDate) {
    const std::string path = folder.file("file", "text");
    const timespec dates[2] = {{1'000'000, 0}, {2'000'000'000, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), dates, 0), 0);
    EXPECT_EQ(read(path, 0, 4), "text");
    EXPECT_EQ(tests::statusOf(path).st_atim.tv_sec, 1'000'000);
}

TEST_F(PosixFileContentsTest, visitsTheEntriesOfAFolderButFollowsALinkToOneBeforeASlashOnly) {
    folder.folder("folder");
    folder.file("folder/a");
    folder.folder("folder/b");
    folder.fifo("folder/\xFF");
    folder.symlink("folder/d", "missing");
    const std::string link = folder.symlink("link", "folder");
    for (const std::string& path : {folder.path("folder"), link + "/"}) {
        EXPECT_THAT(entriesOf(path), UnorderedElementsAre("a", "b", "\xFF", "d")) << path;
    }
    int visited = 0;
    const auto untilTwo = [&](std::string_view, const ItemLook&) { return ++visited < 2; };
    EXPECT_TRUE(files.visitFolder(folder.path("folder"), untilTwo));
    EXPECT_EQ(visited, 2);
    EXPECT_FALSE(files.visitFolder(link, untilTwo));
    EXPECT_EQ(files.visitFolder(folder.file("file"), untilTwo).error(), error(ENOTDIR));
}

} // namespace
} // namespace tolvane::platform
