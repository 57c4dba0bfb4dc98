#include "cli/Output.h"

#include "tests/support/Streams.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

namespace tolvane::tests {
namespace {

TEST(Output, gathersSmallWrites) {
    TextOutput stream;
    cli::Output output(stream);
    EXPECT_TRUE(output.write("one "));
    EXPECT_TRUE(output.write("two"));
    EXPECT_EQ(stream.text, "");
    EXPECT_TRUE(output.flush());
    EXPECT_EQ(stream.text, "one two");
    EXPECT_TRUE(output.flush());
    EXPECT_EQ(stream.writes, 1U) << "nothing is written twice";
}

TEST(Output, writesOutWhatHasBecomeLarge) {
    TextOutput stream;
    cli::Output output(stream);
    EXPECT_TRUE(output.write(std::string(100'000, 'x')));
    EXPECT_EQ(stream.text.size(), 100'000U);
}

TEST(Output, givesATerminalEverythingAtOnce) {
    TextOutput stream;
    stream.terminal = true;
    cli::Output output(stream);
    EXPECT_TRUE(output.write("shown"));
    EXPECT_EQ(stream.text, "shown");
}

TEST(Output, writesNothingAfterItsFirstFailure) {
    TextOutput stream;
    stream.capacity = 3;
    stream.failure = platform::posixError(ENOSPC);
    cli::Output output(stream);
    EXPECT_TRUE(output.write("long text"));
    EXPECT_FALSE(output.flush());
    ASSERT_TRUE(output.failure());
    EXPECT_EQ(output.failure()->code, ENOSPC);
    EXPECT_FALSE(output.write("x"));
    EXPECT_FALSE(output.flush());
    EXPECT_EQ(stream.text, "");
    EXPECT_EQ(stream.writes, 1U);
}

} // namespace
} // namespace tolvane::tests
