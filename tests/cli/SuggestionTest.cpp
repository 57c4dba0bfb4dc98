#include "cli/Suggestion.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

std::string nearest(const std::string& typed) {
    static const std::vector<std::string> words{"make", "read", "show", "resolve", "report"};
    return cli::nearestWord(typed, words).value_or("none");
}

TEST(Suggestion, findsTheWordThatWasMistyped) {
    EXPECT_EQ(nearest("reprot"), "report") << "two letters swapped";
    EXPECT_EQ(nearest("reslove"), "resolve");
    EXPECT_EQ(nearest("shwo"), "show");
    EXPECT_EQ(nearest("shows"), "show") << "one too many";
    EXPECT_EQ(nearest("mak"), "make") << "one missing";
    EXPECT_EQ(nearest("reed"), "read") << "one wrong";
    EXPECT_EQ(nearest("risolv"), "resolve");
    EXPECT_EQ(nearest("show"), "show");
}

TEST(Suggestion, findsNoneForAnotherWord) {
    EXPECT_EQ(nearest("describe"), "none");
    EXPECT_EQ(nearest("/etc/passwd"), "none");
    EXPECT_EQ(nearest(""), "none");
    EXPECT_EQ(nearest("a"), "none");
    EXPECT_EQ(nearest("xx"), "none");
    EXPECT_EQ(nearest(std::string(1'000'000, 's')), "none");
    EXPECT_EQ(cli::nearestWord("show", {}), std::nullopt);
}

TEST(Suggestion, takesTheFirstOfSeveralAsNear) {
    const std::vector<std::string> words{"load", "road"};
    EXPECT_EQ(cli::nearestWord("toad", words), "load");
}

} // namespace
} // namespace tolvane::tests
