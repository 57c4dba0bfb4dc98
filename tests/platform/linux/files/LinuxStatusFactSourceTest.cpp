#include "platform/linux/files/LinuxStatusFactSource.h"

#include "tests/platform/linux/FolderTest.h"
#include "tests/support/Process.h"
#include "tests/support/Unprivileged.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvane::platform {
namespace {
using namespace std::string_literals;

class LinuxStatusFactSourceTest : public tests::FolderTest {
protected:
    static Date dateOf(const timespec& time) {
        return Date::fromUnixTime(time.tv_sec, static_cast<std::uint32_t>(time.tv_nsec));
    }

    const LinuxStatusFactSource source;
};

TEST_F(LinuxStatusFactSourceTest, agreesWithStat) {
    for (const auto& path :
         {folder.path(), folder.file("a", "abc"), folder.symlink("link", "a"), folder.fifo("fifo"),
          std::string("/dev/null")}) {
        const auto expected = tests::statusOf(path);
        const auto facts = source.factsOfItemAtPath(path);
        ASSERT_TRUE(facts) << path;
        EXPECT_EQ(facts->mode, expected.st_mode) << path;
        EXPECT_EQ(facts->ownerID, expected.st_uid) << path;
        EXPECT_EQ(facts->groupID, expected.st_gid) << path;
        EXPECT_EQ(facts->allocatedSize, static_cast<std::uint64_t>(expected.st_blocks) * 512) << path;
        EXPECT_EQ(facts->statusChangeDate, dateOf(expected.st_ctim)) << path;
        EXPECT_EQ(facts->accessDate, dateOf(expected.st_atim)) << path;
    }
}

TEST_F(LinuxStatusFactSourceTest, failsAsTheSystemDoes) {
    EXPECT_EQ(source.factsOfItemAtPath(folder.path("none")).error().code, ENOENT);
    EXPECT_EQ(source.factsOfItemAtPath("").error().code, ENOENT);
    EXPECT_EQ(source.factsOfItemAtPath(folder.path() + "\0a"s).error().code, EINVAL);
}

TEST_F(LinuxStatusFactSourceTest, asksWhatTheCurrentUserMayDoButNotOfLinks) {
    EXPECT_FALSE(source.factsOfItemAtPath(folder.symlink("link", "none"))->currentAccess);
    const std::string path = folder.file("a");
    chmod(path.c_str(), 0404);
    chmod(folder.path().c_str(), 0755);
    ASSERT_EQ(chown(path.c_str(), geteuid(), getegid()), 0);
    const auto answer = tests::answerOfUnprivilegedChild([&] {
        const auto facts = source.factsOfItemAtPath(path);
        return facts && facts->currentAccess == ItemAccess{0, EACCES, EACCES} ? 0 : 1;
    });
    EXPECT_EQ(answer, 0);
}

TEST_F(LinuxStatusFactSourceTest, knowsFlagsAsTheirOwnProgramSetsThem) {
    const std::string path = folder.file("a");
    const auto outcome = tests::run({.command = {"chattr", "+d", path}});
    if (outcome.status != 0) {
        GTEST_SKIP() << "this file system has no flags: " << outcome.err;
    }
    const auto facts = source.factsOfItemAtPath(path).value();
    EXPECT_EQ(facts.flags, 0x40U);
    EXPECT_EQ(facts.knownFlags & facts.flags, facts.flags);
}

} // namespace
} // namespace tolvane::platform
