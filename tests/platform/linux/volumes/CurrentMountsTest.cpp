#include "platform/linux/volumes/CurrentMounts.h"

#include "platform/linux/files/ItemStatus.h"
#include "tests/platform/linux/FolderTest.h"
#include "tests/support/Mounting.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace tolvane::platform {
namespace {

using CurrentMountsTest = tests::FolderTest;

TEST_F(CurrentMountsTest, reportsTheMountThatAnItemIsOn) {
    CurrentMounts mounts;
    const auto table = mounts.table().value();
    const auto status = statusOfItem("/proc").value();
    if (!status.mountID) {
        GTEST_SKIP() << "this kernel has no mount numbers";
    }
    const Mount* const proc = table->withID(*status.mountID);
    ASSERT_NE(proc, nullptr);
    EXPECT_EQ(proc, table->topmostAt("/proc"));
    EXPECT_EQ(proc->type, "proc");
    EXPECT_EQ(proc->device, status.device);
}

TEST_F(CurrentMountsTest, keepsTheTableAsLongAsNothingChanges) {
    CurrentMounts mounts(folder.file("mountinfo", "1 0 8:1 / / rw - ext4 /dev/sda1 rw\n"));
    const auto first = mounts.table().value();
    EXPECT_EQ(first->mounts().size(), 1U);
    EXPECT_EQ(mounts.table().value(), first);
}

TEST_F(CurrentMountsTest, readsAListOfAnyLength) {
    std::string text;
    for (int i = 1; i <= 5'000; ++i) {
        text += std::to_string(i) + " 0 0:" + std::to_string(i) + " / /mnt/" + std::to_string(i)
                + " rw - tmpfs tmpfs rw\n";
    }
    CurrentMounts mounts(folder.file("mountinfo", text));
    const auto table = mounts.table().value();
    EXPECT_EQ(table->mounts().size(), 5'000U);
    EXPECT_EQ(table->topmostAt("/mnt/5000")->id, 5'000U);
}

TEST_F(CurrentMountsTest, failsWhereThereIsNoList) {
    EXPECT_EQ(CurrentMounts(folder.path("none")).table().error().code, ENOENT);
    EXPECT_EQ(CurrentMounts(folder.path()).table().error().code, EISDIR);
}

TEST_F(CurrentMountsTest, readsAnewAfterMountingAndUnmounting) {
    const auto place = std::filesystem::canonical(folder.folder("place")).string();
    tests::expectWithMounts([&] {
        CurrentMounts mounts;
        const auto before = mounts.table().value();
        EXPECT_EQ(before->topmostAt(place), nullptr);
        if (!tests::mountMemory(place)) {
            return false;
        }
        const auto during = mounts.table().value();
        EXPECT_NE(during, before);
        const Mount* const mount = during->topmostAt(place);
        EXPECT_TRUE(mount != nullptr && mount->source == "tolvane-test");
        EXPECT_EQ(mounts.table().value(), during);
        EXPECT_EQ(umount(place.c_str()), 0);
        EXPECT_EQ(mounts.table().value()->topmostAt(place), nullptr);
        return true;
    });
}

} // namespace
} // namespace tolvane::platform
