#include "platform/commandline/CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace tolvane::platform {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using Words = std::vector<std::string>;

const std::vector<HelpRow> rows{
    {"FILE", "is shown"},
    {"-h, --help", "ends"},
    {"--from F", "takes names\nfrom F"},
    {"--formal", "is a flag"},
    {"--", "what follows are names"}};

CommandLine lineOf(const Words& arguments) {
    auto line = parseCommandLine(rows, arguments);
    EXPECT_TRUE(line.has_value()) << line.error();
    return line.value_or(CommandLine());
}

std::string refusalOf(const Words& arguments) {
    const auto line = parseCommandLine(rows, arguments);
    return line ? "accepted" : line.error();
}

TEST(CommandLine, helpIsOneColumnOfTermsAndOneOfTexts) {
    EXPECT_EQ(
        helpText({"it [OPTION…] FILE", "Shows a file", rows, "See also."}),
        "Usage: it [OPTION…] FILE\n"
        "Shows a file\n"
        "\n"
        "  FILE        is shown\n"
        "  -h, --help  ends\n"
        "  --from F    takes names\n"
        "              from F\n"
        "  --formal    is a flag\n"
        "  --          what follows are names\n"
        "\n"
        "See also.\n");
}

TEST(CommandLine, optionsMayStandAnywhereBeforeTheDashes) {
    const CommandLine line =
        lineOf({"a", "--formal", "-", "--from", "--formal", "", "--", "--from", "--", "b"});
    EXPECT_THAT(line.names, ElementsAre("a", "-", "", "--from", "--", "b"));
    EXPECT_EQ(line.namesBeforeDashes, 3U);
    EXPECT_TRUE(line.has("--formal"));
    EXPECT_FALSE(line.has("--help"));
    EXPECT_EQ(line.valueOf("--from"), "--formal");
    EXPECT_EQ(lineOf({"--from="}).valueOf("--from"), "");
    EXPECT_EQ(lineOf({"--from=a=b\xFF\n"}).valueOf("--from"), "a=b\xFF\n");
    EXPECT_EQ(lineOf({"a"}).valueOf("--from"), std::nullopt);
    EXPECT_EQ(lineOf({"a"}).namesBeforeDashes, 1U);
}

// A user may set it, and getopt then stops at the first name.
TEST(CommandLine, theEnvironmentChangesNothing) {
    setenv("POSIXLY_CORRECT", "1", 1);
    EXPECT_TRUE(lineOf({"a", "--formal"}).has("--formal"));
    unsetenv("POSIXLY_CORRECT");
}

TEST(CommandLine, readingStopsAtTheHelp) {
    EXPECT_TRUE(lineOf({"--formal", "--help", "--unknown"}).has("--help"));
    EXPECT_TRUE(lineOf({"-hx"}).has("--help"));
    // Nothing is left over from the last time.
    EXPECT_THAT(lineOf({"a", "b"}).names, ElementsAre("a", "b"));
}

TEST(CommandLine, aRefusalNamesWhatIsWrong) {
    for (const std::string option : {"--unknown=x", "-xh", "-5", "---=a", "--=a"}) {
        EXPECT_EQ(refusalOf({"a", option}), "there is no option " + option);
    }
    EXPECT_EQ(refusalOf({"--fromal"}), "there is no option --fromal; is --formal meant?");
    EXPECT_EQ(refusalOf({"-formal"}), "there is no option -formal; is --formal meant?");
    EXPECT_EQ(refusalOf({"--from"}), "--from needs a value");
    EXPECT_EQ(refusalOf({"--from", "a", "--from=b"}), "--from can be given only once");
    EXPECT_EQ(refusalOf({"--formal="}), "--formal takes no value; this was given: ");
    EXPECT_EQ(refusalOf({"--formal", "--formal=a=b"}), "--formal takes no value; this was given: a=b");
    EXPECT_EQ(refusalOf({"--formal", "--formal"}), "accepted");
}

// What is short for one option today might be short for two tomorrow.
TEST(CommandLine, optionsAreNotAbbreviated) {
    for (const std::string word : {"--fro", "--fo", "--f", "--he", "--fro=a", "--form=x"}) {
        EXPECT_THAT(refusalOf({word, "a"}), testing::StartsWith("there is no option " + word));
    }
}

TEST(CommandLine, aMistypedWordIsRecognised) {
    const std::vector<std::string_view> words{"make", "read", "show", "resolve", "report"};
    const std::vector<std::pair<std::string, std::string>> cases{
        {"reprot", "report"}, {"reslove", "resolve"}, {"shwo", "show"}, {"shows", "show"}, {"mak", "make"},
        {"reed", "read"},     {"risolv", "resolve"},  {"oad", "read"},  {"hsow", "show"}};
    for (const auto& [typed, meant] : cases) {
        EXPECT_EQ(suggestion(typed, words), "; is " + meant + " meant?") << typed;
    }
    for (const std::string& typed :
         {"describe"s, "/etc/passwd"s, ""s, "a"s, "xx"s, "mk"s, std::string(1'000'000, 's')}) {
        EXPECT_EQ(suggestion(typed, words), "") << typed.substr(0, 20);
    }
    EXPECT_EQ(suggestion("toad", std::vector<std::string_view>{"load", "road"}), "; is load meant?");
    EXPECT_EQ(suggestion("show", {}), "");
}

} // namespace
} // namespace tolvane::platform
