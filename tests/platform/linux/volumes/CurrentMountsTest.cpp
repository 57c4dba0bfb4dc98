#include "platform/linux/volumes/CurrentMounts.h"

#include "platform/linux/files/ItemStatus.h"
#include "tests/support/MountNamespace.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <sys/mount.h>

namespace tolvane::platform {

namespace {

using tests::TemporaryFolder;

} // namespace

TEST(CurrentMounts, tellsTheMountThatAnItemIsOn) {
    CurrentMounts mounts;
    const auto table = mounts.table();
    ASSERT_TRUE(table) << table.error().localizedDescription();
    const auto status = statusOfItem("/proc");
    ASSERT_TRUE(status);
    if (!status->mountID) {
        GTEST_SKIP() << "this kernel does not tell mounts apart";
    }
    const Mount* const proc = (*table)->withID(*status->mountID);
    ASSERT_NE(proc, nullptr);
    EXPECT_EQ(proc, (*table)->topmostAt("/proc"));
    EXPECT_EQ(proc->type, "proc");
    EXPECT_EQ(proc->device, status->device);
}

TEST(CurrentMounts, keepsTheTableAsLongAsNothingChanges) {
    const TemporaryFolder folder;
    CurrentMounts mounts(folder.file("mountinfo", "1 0 8:1 / / rw - ext4 /dev/sda1 rw\n"));
    const auto first = mounts.table();
    ASSERT_TRUE(first);
    EXPECT_EQ((*first)->mounts().size(), 1U);
    EXPECT_EQ(mounts.table().value(), *first);
}

TEST(CurrentMounts, readsAListOfAnyLength) {
    std::string text;
    for (int i = 1; i <= 5'000; ++i) {
        text += std::to_string(i) + " 0 0:" + std::to_string(i) + " / /mnt/" + std::to_string(i)
                + " rw - tmpfs tmpfs rw\n";
    }
    const TemporaryFolder folder;
    CurrentMounts mounts(folder.file("mountinfo", text));
    const auto table = mounts.table();
    ASSERT_TRUE(table);
    EXPECT_EQ((*table)->mounts().size(), 5'000U);
    EXPECT_EQ((*table)->topmostAt("/mnt/5000")->id, 5'000U);
}

TEST(CurrentMounts, failsWhereThereIsNoList) {
    const TemporaryFolder folder;
    EXPECT_EQ(CurrentMounts(folder.path("none")).table().error().code, ENOENT);
    EXPECT_EQ(CurrentMounts(folder.path()).table().error().code, EISDIR);
}

TEST(CurrentMounts, readsAnewAfterMountingAndUnmounting) {
    const TemporaryFolder folder;
    const auto place = std::filesystem::canonical(folder.folder("place")).string();
    const int answer = tests::answerInMountNamespace([&] {
        CurrentMounts mounts;
        const auto before = mounts.table();
        if (!before || (*before)->topmostAt(place) != nullptr) {
            return 1;
        }
        if (mount("tolvane-test", place.c_str(), "tmpfs", 0, "size=16k") != 0) {
            return tests::noMounting;
        }
        const auto during = mounts.table();
        if (!during || *during == *before || (*during)->topmostAt(place) == nullptr
            || (*during)->topmostAt(place)->source != "tolvane-test") {
            return 2;
        }
        if (mounts.table().value() != *during) {
            return 3;
        }
        umount(place.c_str());
        const auto after = mounts.table();
        return after && (*after)->topmostAt(place) == nullptr ? 0 : 4;
    });
    if (answer == tests::noMounting) {
        GTEST_SKIP() << "nothing can be mounted here";
    }
    EXPECT_EQ(answer, 0);
}

} // namespace tolvane::platform
