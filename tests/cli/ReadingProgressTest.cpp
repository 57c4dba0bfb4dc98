#include "cli/ReadingProgress.h"

#include "tests/support/Streams.h"

#include <gtest/gtest.h>

#include <string>

namespace tolvane::tests {
namespace {

constexpr std::uint64_t large = std::uint64_t{100} << 20U;

class ReadingProgress : public testing::Test {
protected:
    ReadingProgress() { errors.terminal = true; }

    TextOutput errors;
    cli::ReadingProgress progress{errors};
};

TEST_F(ReadingProgress, isOneLineThatIsClearedInTheEnd) {
    const verification::Progress reading = progress.of("a\x1B");
    EXPECT_TRUE(reading(0, large));
    EXPECT_TRUE(reading(1, large));
    EXPECT_TRUE(reading(large / 2, large));
    EXPECT_TRUE(reading(large, large));
    EXPECT_EQ(errors.text, "\rReading a\\x1b: 0 %\rReading a\\x1b: 49 %\r\x1B[K");
}

TEST_F(ReadingProgress, isClearedWhenTheReadingEndsEarly) {
    progress.of("a")(large / 2, large);
    EXPECT_EQ(errors.text, "\rReading a: 49 %\r\x1B[K");
}

TEST_F(ReadingProgress, isAboutOneFileAtATime) {
    const verification::Progress first = progress.of("a");
    const verification::Progress second = progress.of("b");
    first(0, large);
    second(0, large);
    second(large / 2, large);
    EXPECT_EQ(errors.text, "\rReading a: 0 %");
    first(large, large);
    second(large * 3 / 4, large);
    second(large, large);
    EXPECT_EQ(errors.text, "\rReading a: 0 %\r\x1B[K\rReading b: 74 %\r\x1B[K");
}

TEST_F(ReadingProgress, givesWayToOtherText) {
    TextOutput output;
    output.terminal = true;
    cli::OutputBesideProgress text(output, progress);
    EXPECT_TRUE(text.isTerminal());
    const verification::Progress reading = progress.of("a");
    reading(0, large);
    EXPECT_TRUE(text.write("text\n"));
    EXPECT_EQ(errors.text, "\rReading a: 0 %\r\x1B[K");
    EXPECT_EQ(output.text, "text\n");
    reading(large / 2, large);
    EXPECT_TRUE(progress.write("complaint\n"));
    EXPECT_TRUE(text.write("more\n"));
    EXPECT_EQ(errors.text, "\rReading a: 0 %\r\x1B[K\rReading a: 49 %\r\x1B[Kcomplaint\n");
    EXPECT_EQ(output.text, "text\nmore\n");
}

TEST_F(ReadingProgress, leavesLongNamesOut) {
    const verification::Progress reading = progress.of(std::string(41, 'a'));
    reading(0, large);
    EXPECT_EQ(errors.text, "\rReading the file: 0 %");
}

TEST_F(ReadingProgress, isNotShownOfSmallFilesNorInFiles) {
    EXPECT_TRUE(progress.of("a")(0, 0));
    EXPECT_TRUE(progress.of("a")(0, 1000));
    errors.terminal = false;
    EXPECT_FALSE(progress.isTerminal());
    EXPECT_TRUE(progress.of("a")(0, large));
    EXPECT_EQ(errors.text, "");
}

} // namespace
} // namespace tolvane::tests
