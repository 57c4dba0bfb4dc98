// Bookmarks of items on volumes that the tests mount themselves, and of items that move meanwhile.
#include "platform/linux/bookmarks/BookmarkMaker.h"
#include "tests/support/MountNamespace.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <set>
#include <utility>
#include <fcntl.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tolvane::platform {

namespace {

using testing::ElementsAre;

// What the program would be: an object for everything that is kept between two bookmarks.
struct Maker {
    Result<BookmarkContents> contents(const std::string& path) {
        return BookmarkMaker(mounts, volumes, account).contents(URL::fileURLWithPath(path));
    }

    CurrentMounts mounts;
    VolumeFacts volumes;
    OwnAccount account;
};

std::int64_t numberOf(const std::string& path) {
    struct stat status{};
    EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
    return static_cast<std::int64_t>(status.st_ino);
}

void write(const std::string& path) {
    std::ofstream(path) << "text";
}

bool mountMemory(const std::string& place) {
    return mount("tolvane-test", place.c_str(), "tmpfs", 0, "size=64k") == 0;
}

bool showAlso(const std::string& from, const std::string& to) {
    return mount(from.c_str(), to.c_str(), nullptr, MS_BIND, nullptr) == 0;
}

class BookmarksOnMounts : public testing::Test {
protected:
    // Where the function's mounts are its own; it answers whether it could make them. What it expects and
    // does not get fails the test.
    static void expectWithMounts(const std::function<bool()>& function) {
        const int answer = tests::answerInMountNamespace([&] {
            return !function() ? tests::noMounting : testing::Test::HasFailure() ? 1 : 0;
        });
        if (answer == tests::noMounting) {
            GTEST_SKIP() << "nothing can be mounted here";
        }
        EXPECT_EQ(answer, 0);
    }

    const tests::TemporaryFolder folder;
    const std::string real = std::filesystem::canonical(folder.path()).string();
    Maker maker;
};

} // namespace

TEST_F(BookmarksOnMounts, tellEachVolumeOnTheWay) {
    folder.folder("outer");
    const auto outer = real + "/outer";
    const auto inner = outer + "/inner";
    expectWithMounts([&] {
        if (!mountMemory(outer) || mkdir(inner.c_str(), 0755) != 0 || !mountMemory(inner)) {
            return false;
        }
        write(inner + "/file");
        const auto told = maker.contents(inner + "/file");
        EXPECT_TRUE(told) << told.error().localizedDescription();
        if (!told) {
            return true;
        }
        EXPECT_EQ(told->volume.path, inner);
        EXPECT_EQ(told->volume.name, "tolvane-test");
        EXPECT_EQ(told->volume.capacity, 65'536);
        EXPECT_EQ(told->rootVolume.value_or(BookmarkVolume()).path, "/");
        const std::size_t count = told->pathComponents->size();
        const auto& between = told->volumesBetween;
        EXPECT_GE(between.size(), 1U); // the temporary folder may itself lie on another volume
        EXPECT_EQ(between.back().path, outer);
        EXPECT_NE(between.back().uuid, told->volume.uuid);
        const auto lastBetween =
            table_identifier::firstVolumeBetween + static_cast<std::uint32_t>(between.size()) - 1;
        EXPECT_EQ(told->volumeDepths.size(), count + 1);
        EXPECT_EQ(told->volumeDepths[count], 0U);
        EXPECT_EQ(told->volumeDepths[count - 1], table_identifier::target);
        EXPECT_EQ(told->volumeDepths[count - 2], lastBetween);
        EXPECT_EQ(told->fileIDs->at(count - 1), numberOf(inner + "/file"));
        EXPECT_EQ(told->fileIDs->at(count - 2), numberOf(inner)) << "that of the mounted folder";
        EXPECT_EQ(told->fileIDs->at(count - 3), numberOf(outer));
        return true;
    });
}

TEST_F(BookmarksOnMounts, tellTheVolumeOnTopOfOthers) {
    folder.folder("place");
    const auto place = real + "/place";
    expectWithMounts([&] {
        if (!mountMemory(place)) {
            return false;
        }
        write(place + "/covered");
        const auto before = maker.contents(place + "/covered");
        if (mount("on-top", place.c_str(), "tmpfs", 0, "size=128k") != 0) {
            return false;
        }
        write(place + "/seen");
        const auto told = maker.contents(place + "/seen");
        EXPECT_EQ(told.value_or(BookmarkContents()).volume.name, "on-top");
        EXPECT_EQ(told.value_or(BookmarkContents()).volume.capacity, 131'072);
        EXPECT_EQ(before.value_or(BookmarkContents()).volume.name, "tolvane-test");
        EXPECT_FALSE(maker.contents(place + "/covered"));
        return true;
    });
}

TEST_F(BookmarksOnMounts, takeAFolderThatIsSeenElsewhereForAVolumeOfItsOwn) {
    folder.folder("data");
    folder.folder("elsewhere");
    folder.file("data/file");
    expectWithMounts([&] {
        if (!showAlso(real + "/data", real + "/elsewhere")) {
            return false;
        }
        const auto direct = maker.contents(real + "/data/file").value_or(BookmarkContents());
        const auto told = maker.contents(real + "/elsewhere/file").value_or(BookmarkContents());
        EXPECT_EQ(told.volume.path, real + "/elsewhere");
        EXPECT_EQ(told.volume.uuid, direct.volume.uuid);
        EXPECT_EQ(told.volume.capacity, direct.volume.capacity);
        EXPECT_EQ(told.volumeDepths.at(told.volumeDepths.size() - 2), table_identifier::target);
        EXPECT_EQ(told.fileIDs->back(), direct.fileIDs->back());
        const auto place = maker.contents(real + "/elsewhere").value_or(BookmarkContents());
        EXPECT_EQ(place.fileFlags->values, file_flag::directory | file_flag::volume);
        return true;
    });
}

// So a container sees its /etc/hosts.
TEST_F(BookmarksOnMounts, tellAFileThatIsMountedItself) {
    folder.file("data");
    folder.file("hosts");
    expectWithMounts([&] {
        if (!showAlso(real + "/data", real + "/hosts")) {
            return false;
        }
        const auto told = maker.contents(real + "/hosts").value_or(BookmarkContents());
        EXPECT_EQ(told.volume.path, real + "/hosts");
        EXPECT_EQ(told.fileFlags->values, file_flag::regularFile);
        EXPECT_EQ(told.fileName, std::nullopt);
        EXPECT_EQ(told.fileIDs->back(), numberOf(real + "/data"));
        EXPECT_EQ(told.volumeDepths.back(), table_identifier::target);
        return true;
    });
}

TEST_F(BookmarksOnMounts, areMadeWhereTheRootIsNoMountPoint) {
    folder.folder("jail");
    folder.file("jail/file");
    expectWithMounts([&] {
        // The list of mounts has to be seen from inside, and nothing else of the system.
        folder.folder("jail/proc");
        if (mount("proc", (real + "/jail/proc").c_str(), "proc", 0, nullptr) != 0
            && !(mount("/proc", (real + "/jail/proc").c_str(), nullptr, MS_BIND | MS_REC, nullptr) == 0)) {
            return false;
        }
        const auto outside = maker.contents(real + "/jail/file").value_or(BookmarkContents());
        if (chroot((real + "/jail").c_str()) != 0 || chdir("/") != 0) {
            return false;
        }
        Maker inside;
        const auto told = inside.contents("/file").value_or(BookmarkContents());
        EXPECT_EQ(told.pathComponents, std::vector<std::string>{"file"});
        EXPECT_EQ(told.volume.path, "/");
        EXPECT_TRUE(told.volume.wasBoot);
        EXPECT_EQ(told.volume.capacity, outside.volume.capacity);
        EXPECT_EQ(told.volume.uuid, outside.volume.uuid);
        EXPECT_EQ(told.fileIDs->at(0), outside.fileIDs->back());
        const auto version = inside.contents("/proc/version").value_or(BookmarkContents());
        EXPECT_EQ(version.volume.path, "/proc");
        EXPECT_THAT(
            version.volumeDepths, ElementsAre(table_identifier::rootVolume, table_identifier::target, 0));
        return true;
    });
}

TEST_F(BookmarksOnMounts, seeWhatWasMountedSinceTheLast) {
    folder.folder("place");
    folder.file("place/file");
    expectWithMounts([&] {
        const auto place = real + "/place";
        const auto before = maker.contents(place).value_or(BookmarkContents());
        EXPECT_EQ(before.fileFlags->values, file_flag::directory);
        if (!mountMemory(place)) {
            return false;
        }
        const auto during = maker.contents(place).value_or(BookmarkContents());
        EXPECT_EQ(during.fileFlags->values, file_flag::directory | file_flag::volume);
        EXPECT_EQ(during.volume.path, place);
        umount(place.c_str());
        EXPECT_EQ(maker.contents(place).value_or(BookmarkContents()), before);
        return true;
    });
}

// Another process changes two folders of one name for each other all the time. Every bookmark tells the
// numbers of one of them and of the file far down in that one.
TEST_F(BookmarksOnMounts, neverTellHalfOfOneItemAndHalfOfAnother) {
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
        GTEST_SKIP() << "folders cannot be changed for each other here";
    }
    const pid_t other = fork();
    ASSERT_GE(other, 0);
    if (other == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        while (exchange()) {}
        _exit(1);
    }
    for (int i = 0; i < 2'000; ++i) {
        if (const auto told = maker.contents(a + file)) {
            const auto& numbers = *told->fileIDs;
            const std::pair pair(
                numbers[numbers.size() - levels - 2].value_or(0), numbers.back().value_or(0));
            EXPECT_TRUE(sound.contains(pair)) << pair.first << " " << pair.second;
        } else {
            EXPECT_EQ(told.error().code, 256);
        }
    }
    EXPECT_EQ(kill(other, SIGKILL), 0);
    EXPECT_EQ(waitpid(other, nullptr, 0), other);
    EXPECT_TRUE(maker.contents(a + file)) << "nothing moves any more";
}

} // namespace tolvane::platform
