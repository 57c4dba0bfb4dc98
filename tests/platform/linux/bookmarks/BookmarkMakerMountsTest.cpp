#include "platform/linux/bookmarks/BookmarkMaker.h"
#include "tests/platform/linux/FolderTest.h"
#include "tests/support/Mounting.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <set>
#include <utility>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tolvane::platform {
namespace {

using testing::ElementsAre;
using tests::expectWithMounts;
using tests::mountAgain;
using tests::mountMemory;

struct Maker {
    Result<BookmarkContents> make(const std::string& path) {
        return BookmarkMaker(mounts, volumes, account, knownFolders).contents(URL::fileURLWithPath(path));
    }
    BookmarkContents contents(const std::string& path) {
        const auto bookmark = make(path);
        EXPECT_TRUE(bookmark) << path << ": " << bookmark.error().localizedDescription();
        return bookmark.value_or(BookmarkContents());
    }

    CurrentMounts mounts;
    VolumeFacts volumes;
    KnownFolders knownFolders;
    OwnAccount account;
};

std::int64_t numberOf(const std::string& path) {
    return static_cast<std::int64_t>(tests::statusOf(path).st_ino);
}

class BookmarksOnMounts : public tests::FolderTest {
protected:
    Maker maker;
};

TEST_F(BookmarksOnMounts, reportEachVolumeOnTheWay) {
    folder.folder("outer");
    const auto outer = real + "/outer";
    const auto inner = outer + "/inner";
    expectWithMounts([&] {
        if (!mountMemory(outer) || mkdir(inner.c_str(), 0755) != 0 || !mountMemory(inner)) {
            return false;
        }
        const auto bookmark = maker.contents(folder.file("outer/inner/file"));
        EXPECT_EQ(bookmark.volume.path, inner);
        EXPECT_EQ(bookmark.volume.name, "tolvane-test");
        EXPECT_EQ(bookmark.volume.capacity, 65'536);
        EXPECT_EQ(bookmark.rootVolume.value_or(BookmarkVolume()).path, "/");
        const std::size_t count = bookmark.pathComponents->size();
        const auto& between = bookmark.volumesBetween;
        EXPECT_GE(between.size(), 1U); // the temporary folder may itself lie on another volume
        EXPECT_EQ(between.back().path, outer);
        EXPECT_NE(between.back().uuid, bookmark.volume.uuid);
        const auto lastBetween =
            table_identifier::firstVolumeBetween + static_cast<std::uint32_t>(between.size()) - 1;
        EXPECT_EQ(bookmark.volumeDepths.size(), count + 1);
        EXPECT_EQ(bookmark.volumeDepths[count], 0U);
        EXPECT_EQ(bookmark.volumeDepths[count - 1], table_identifier::target);
        EXPECT_EQ(bookmark.volumeDepths[count - 2], lastBetween);
        EXPECT_EQ(bookmark.fileIDs->at(count - 1), numberOf(inner + "/file"));
        EXPECT_EQ(bookmark.fileIDs->at(count - 2), numberOf(inner)) << "that of the mounted folder";
        EXPECT_EQ(bookmark.fileIDs->at(count - 3), numberOf(outer));
        return true;
    });
}

TEST_F(BookmarksOnMounts, reportTheVolumeOnTopOfOthers) {
    folder.folder("place");
    const auto place = real + "/place";
    expectWithMounts([&] {
        if (!mountMemory(place)) {
            return false;
        }
        EXPECT_EQ(maker.contents(folder.file("place/covered")).volume.name, "tolvane-test");
        if (!mountMemory(place, "on-top", "size=128k")) {
            return false;
        }
        const auto bookmark = maker.contents(folder.file("place/seen"));
        EXPECT_EQ(bookmark.volume.name, "on-top");
        EXPECT_EQ(bookmark.volume.capacity, 131'072);
        EXPECT_FALSE(maker.make(place + "/covered"));
        return true;
    });
}

TEST_F(BookmarksOnMounts, seeWhatWasMountedOverAFolderAndUnmountedSinceTheLastOne) {
    folder.folder("place");
    folder.file("place/before");
    const auto place = real + "/place";
    for (const auto& mountPoint : {place, real}) {
        expectWithMounts([&] {
            const auto before = maker.contents(place);
            EXPECT_EQ(before.fileFlags->values, file_flag::directory);
            maker.contents(place + "/before");
            if (!mountMemory(mountPoint)) {
                return false;
            }
            std::filesystem::create_directories(place);
            std::ofstream(place + "/after") << "words";
            const auto during = maker.contents(place);
            EXPECT_EQ(during.volume.path, mountPoint);
            EXPECT_EQ(
                during.fileFlags->values,
                file_flag::directory | (mountPoint == place ? file_flag::volume : 0));
            const auto bookmark = maker.contents(place + "/after");
            EXPECT_EQ(bookmark.volume.path, mountPoint);
            EXPECT_EQ(bookmark.fileIDs->back(), numberOf(place + "/after"));
            EXPECT_EQ(umount(mountPoint.c_str()), 0);
            EXPECT_EQ(maker.contents(place), before);
            return true;
        });
    }
}

TEST_F(BookmarksOnMounts, takeAFolderThatIsSeenElsewhereForAVolumeOfItsOwn) {
    folder.folder("data");
    folder.folder("elsewhere");
    folder.file("data/file");
    expectWithMounts([&] {
        if (!mountAgain(real + "/data", real + "/elsewhere")) {
            return false;
        }
        const auto direct = maker.contents(real + "/data/file");
        const auto bookmark = maker.contents(real + "/elsewhere/file");
        EXPECT_EQ(bookmark.volume.path, real + "/elsewhere");
        EXPECT_EQ(bookmark.volume.uuid, direct.volume.uuid);
        EXPECT_EQ(bookmark.volume.capacity, direct.volume.capacity);
        EXPECT_EQ(bookmark.volumeDepths.at(bookmark.volumeDepths.size() - 2), table_identifier::target);
        EXPECT_EQ(bookmark.fileIDs->back(), direct.fileIDs->back());
        const auto flags = maker.contents(real + "/elsewhere").fileFlags;
        EXPECT_EQ(flags->values, file_flag::directory | file_flag::volume);
        return true;
    });
}

// A container has its /etc/hosts like this.
TEST_F(BookmarksOnMounts, reportAFileThatIsMountedItself) {
    folder.file("data");
    folder.file("hosts");
    expectWithMounts([&] {
        if (!mountAgain(real + "/data", real + "/hosts")) {
            return false;
        }
        const auto bookmark = maker.contents(real + "/hosts");
        EXPECT_EQ(bookmark.volume.path, real + "/hosts");
        EXPECT_EQ(bookmark.fileFlags->values, file_flag::regularFile);
        EXPECT_EQ(bookmark.fileName, std::nullopt);
        EXPECT_EQ(bookmark.fileIDs->back(), numberOf(real + "/data"));
        EXPECT_EQ(bookmark.volumeDepths.back(), table_identifier::target);
        return true;
    });
}

TEST_F(BookmarksOnMounts, areMadeWhereTheRootIsNoMountPoint) {
    folder.folder("jail");
    folder.file("jail/file");
    expectWithMounts([&] {
        const auto proc = folder.folder("jail/proc");
        if (mount("proc", proc.c_str(), "proc", 0, nullptr) != 0
            && mount("/proc", proc.c_str(), nullptr, MS_BIND | MS_REC, nullptr) != 0) {
            return false;
        }
        const auto outside = maker.contents(real + "/jail/file");
        if (chroot((real + "/jail").c_str()) != 0 || chdir("/") != 0) {
            return false;
        }
        Maker inside;
        const auto bookmark = inside.contents("/file");
        EXPECT_EQ(bookmark.pathComponents, std::vector<std::string>{"file"});
        EXPECT_EQ(bookmark.volume.path, "/");
        EXPECT_TRUE(bookmark.volume.wasBoot);
        EXPECT_EQ(bookmark.volume.capacity, outside.volume.capacity);
        EXPECT_EQ(bookmark.volume.uuid, outside.volume.uuid);
        EXPECT_EQ(bookmark.fileIDs->at(0), outside.fileIDs->back());
        const auto version = inside.contents("/proc/version");
        EXPECT_EQ(version.volume.path, "/proc");
        EXPECT_THAT(
            version.volumeDepths, ElementsAre(table_identifier::rootVolume, table_identifier::target, 0));
        return true;
    });
}

// While another process keeps exchanging two folders, each bookmark has the numbers of one of them and of the
// file in it.
TEST_F(BookmarksOnMounts, neverReportHalfOfOneItemAndHalfOfAnother) {
    constexpr int levels = 20;
    std::string below;
    for (int i = 0; i < levels; ++i) {
        below += "/d";
    }
    for (const std::string name : {"a", "b"}) {
        std::filesystem::create_directories(folder.path(name + below));
        folder.file(name + below + "/file");
    }
    const auto a = real + "/a";
    const auto b = real + "/b";
    const auto file = below + "/file";
    const std::set<std::pair<std::int64_t, std::int64_t>> sound{
        {numberOf(a), numberOf(a + file)}, {numberOf(b), numberOf(b + file)}};
    const auto exchange = [&] {
        return renameat2(AT_FDCWD, a.c_str(), AT_FDCWD, b.c_str(), RENAME_EXCHANGE) == 0;
    };
    if (!exchange()) {
        GTEST_SKIP() << "folders cannot be exchanged here";
    }
    const pid_t other = fork();
    ASSERT_GE(other, 0);
    if (other == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        while (exchange()) {}
        _exit(1);
    }
    for (int i = 0; i < 2'000; ++i) {
        if (const auto bookmark = maker.make(a + file)) {
            const auto& numbers = *bookmark->fileIDs;
            const std::pair pair(
                numbers[numbers.size() - levels - 2].value_or(0), numbers.back().value_or(0));
            EXPECT_TRUE(sound.contains(pair)) << pair.first << " " << pair.second;
        } else {
            EXPECT_EQ(bookmark.error().code, 256);
        }
    }
    EXPECT_EQ(kill(other, SIGKILL), 0);
    EXPECT_EQ(waitpid(other, nullptr, 0), other);
    EXPECT_TRUE(maker.make(a + file)) << "nothing moves any more";
}

} // namespace
} // namespace tolvane::platform
