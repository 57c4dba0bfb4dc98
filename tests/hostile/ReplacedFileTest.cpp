// A file to be previewed that is replaced between the look at it and its opening.
#include "platform/posix/PosixFileContents.h"
#include "tests/hostile/ReportSteps.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace tolvane::tests {
namespace {

using ReplacedFileThroughGate = GatedReport;

constexpr const char* itemVariable = "TOLVANE_TEST_ITEM";

/// Disabled since it runs in a process of its own only, through the gate of the test below.
TEST(ReplacedFile, DISABLED_isRefused) {
    const char* const item = std::getenv(itemVariable);
    ASSERT_NE(item, nullptr);
    const auto opened = platform::PosixFileContents().openForReading(item);
    ASSERT_FALSE(opened);
    EXPECT_EQ(opened.error().value(), EINVAL);
}

TEST_F(ReplacedFileThroughGate, isNotReadWhenItIsAFifoOnceItIsOpened) {
    const std::string fifo = folder.fifo("fifo");
    bool isReplaced = false;
    const auto outcome = runThroughGate(
        {"/usr/bin/env", "-u", "GTEST_TOTAL_SHARDS", "-u", "GTEST_SHARD_INDEX",
         std::string(itemVariable) + "=" + item, std::filesystem::read_symlink("/proc/self/exe").string(),
         "--gtest_filter=ReplacedFile.DISABLED_isRefused", "--gtest_also_run_disabled_tests"},
        [&](const PendingCall& call) {
            if (call.name == "openat" && call.path == item && !isReplaced) {
                std::filesystem::rename(fifo, item);
                isReplaced = true;
            }
            return 0;
        });
    EXPECT_TRUE(isReplaced);
    EXPECT_EQ(outcome.status, 0) << outcome.out;
    EXPECT_TRUE(outcome.out.contains("[  PASSED  ] 1 test.")) << outcome.out;
}

} // namespace
} // namespace tolvane::tests
