#include "cli/ReadingProgress.h"

#include "tests/support/Streams.h"

#include <gtest/gtest.h>

#include <string>

namespace tolvane::tests {
namespace {

constexpr std::uint64_t large = std::uint64_t{100} << 20U;

TEST(ReadingProgress, isOneLineThatIsEmptyInTheEnd) {
    TextOutput errors;
    errors.terminal = true;
    const verification::Progress progress = cli::readingProgress("a\x1B", errors);
    EXPECT_TRUE(progress(0, large));
    EXPECT_TRUE(progress(1, large));
    EXPECT_TRUE(progress(large / 2, large));
    EXPECT_TRUE(progress(large, large));
    EXPECT_EQ(errors.text, "\rReading a\\x1b: 0 %\rReading a\\x1b: 49 %\r\x1B[K");
}

TEST(ReadingProgress, leavesLongNamesOut) {
    TextOutput errors;
    errors.terminal = true;
    cli::readingProgress(std::string(41, 'a'), errors)(0, large);
    EXPECT_EQ(errors.text, "\rReading the file: 0 %");
}

TEST(ReadingProgress, isNotShownOfSmallFilesNorInFiles) {
    TextOutput errors;
    EXPECT_TRUE(cli::readingProgress("a", errors)(0, large));
    errors.terminal = true;
    EXPECT_TRUE(cli::readingProgress("a", errors)(0, 0));
    EXPECT_TRUE(cli::readingProgress("a", errors)(0, 1000));
    EXPECT_EQ(errors.text, "");
}

} // namespace
} // namespace tolvane::tests
