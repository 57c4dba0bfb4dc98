#include "app/LaunchArguments.h"

#include "platform/values/Error.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <variant>
#include <vector>

namespace tolvane::app {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

platform::Result<std::string> home() {
    return "/home/demo";
}

LaunchRequest read(const std::vector<std::string>& arguments) {
    return readLaunchArguments(arguments, &home);
}

template <typename Request = OpenFiles>
std::vector<std::string> paths(const LaunchRequest& request) {
    std::vector<std::string> found;
    for (const platform::URL& url : std::get<Request>(request).urls) {
        found.push_back(url.path());
    }
    return found;
}

std::string refusal(const std::vector<std::string>& arguments) {
    return std::get<UsageError>(read(arguments)).sentence;
}

TEST(LaunchArguments, opensNothingWithoutNames) {
    EXPECT_THAT(paths(read({})), IsEmpty());
    EXPECT_THAT(paths(read({"--"})), IsEmpty());
}

TEST(LaunchArguments, resolvesRelativeNamesInTheCurrentFolder) {
    EXPECT_THAT(
        paths(read({"a b.txt", "/etc/hosts", "sub/", "-"})),
        ElementsAre("/home/demo/a b.txt", "/etc/hosts", "/home/demo/sub/", "/home/demo/-"));
}

TEST(LaunchArguments, keepsBytesThatAreNotText) {
    EXPECT_THAT(paths(read({"/tmp/\xff\n\x01"})), ElementsAre("/tmp/\xff\n\x01"));
}

TEST(LaunchArguments, opensTheFilesThatFileURLsName) {
    EXPECT_THAT(paths(read({"file:///a%20b", "file://localhost/c%FF"})), ElementsAre("/a b", "/c\xff"));
}

TEST(LaunchArguments, refusesURLsOfOtherMachines) {
    for (const std::string url : {"file://elsewhere/a", "file:///a%00b", "file:///a%2"}) {
        EXPECT_THAT(refusal({url}), HasSubstr(url));
    }
}

TEST(LaunchArguments, readsEverythingAfterTwoDashesAsNames) {
    EXPECT_THAT(
        paths(read({"--", "--help", "-", "--", "file:///a"})),
        ElementsAre("/home/demo/--help", "/home/demo/-", "/home/demo/--", "/home/demo/file:/a"));
}

TEST(LaunchArguments, acceptsWhatIsShownInsteadOfFiles) {
    EXPECT_TRUE(std::holds_alternative<OpenResolver>(read({"--resolver"})));
    EXPECT_TRUE(std::holds_alternative<AwaitRequests>(read({"--await-bus"})));
    EXPECT_THAT(
        paths(read({"--", "--resolver", "--await-bus"})),
        ElementsAre("/home/demo/--resolver", "/home/demo/--await-bus"));
}

TEST(LaunchArguments, refusesWhatCannotBeCombined) {
    for (const std::string option : {"--resolver", "--await-bus"}) {
        EXPECT_EQ(refusal({option, "a"}), "a file cannot be combined with " + option);
        EXPECT_EQ(refusal({"a", option}), "a file cannot be combined with " + option);
        EXPECT_EQ(refusal({"--services", option}), "--services cannot be combined with " + option);
    }
    EXPECT_EQ(refusal({"--resolver", "--await-bus"}), "--await-bus cannot be combined with --resolver");
}

TEST(LaunchArguments, refusesUnknownOptionsAndEmptyNames) {
    EXPECT_EQ(refusal({"a", "--frobnicate"}), "there is no option --frobnicate");
    EXPECT_TRUE(std::holds_alternative<UsageError>(read({""})));
}

TEST(LaunchArguments, takesFileNamesToShow) {
    const auto names = [](const std::vector<std::string>& arguments) {
        return paths<ShowFileNames>(read(arguments));
    };
    EXPECT_THAT(
        names({"--services", "/b", "a b.txt", "file:///c%FF", "/\xff"}),
        ElementsAre("/b", "/home/demo/a b.txt", "/c\xff", "/\xff"));
    EXPECT_THAT(
        names({"a", "--services", "--", "-b", "--services"}),
        ElementsAre("/home/demo/a", "/home/demo/-b", "/home/demo/--services"));
    EXPECT_THAT(names({"--services"}), IsEmpty());
    EXPECT_THAT(paths(read({"--", "--services"})), ElementsAre("/home/demo/--services"));
    for (const std::vector<std::string>& wrong : std::vector<std::vector<std::string>>{
             {"--services", ""}, {"--services", "file://elsewhere/a"}, {"--services=", "a"}}) {
        EXPECT_FALSE(refusal(wrong).empty());
    }
}

TEST(LaunchArguments, printsHelpAndVersion) {
    EXPECT_THAT(std::get<PrintText>(read({"--help", "--wrong"})).text, HasSubstr("Usage: tolvane"));
    EXPECT_THAT(std::get<PrintText>(read({"a", "--version"})).text, HasSubstr("tolvane "));
}

TEST(LaunchArguments, asksForTheCurrentFolderOnlyForRelativeNames) {
    const auto gone = [] {
        return platform::Result<std::string>(std::unexpected(platform::posixError(ENOENT)));
    };
    EXPECT_THAT(paths(readLaunchArguments(std::vector<std::string>{"/a"}, gone)), ElementsAre("/a"));
    const auto request = readLaunchArguments(std::vector<std::string>{"a"}, gone);
    EXPECT_THAT(std::get<UsageError>(request).sentence, HasSubstr("No such file"));
}

} // namespace
} // namespace tolvane::app
