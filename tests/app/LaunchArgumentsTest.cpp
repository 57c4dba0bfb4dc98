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

std::vector<std::string> paths(const LaunchRequest& request) {
    std::vector<std::string> found;
    for (const platform::URL& url : std::get<OpenFiles>(request).urls) {
        found.push_back(url.path());
    }
    return found;
}

TEST(LaunchArguments, opensNothingWithoutNames) {
    EXPECT_THAT(paths(read({})), IsEmpty());
    EXPECT_THAT(paths(read({"--"})), IsEmpty());
}

TEST(LaunchArguments, takesRelativeNamesInTheCurrentFolder) {
    EXPECT_THAT(
        paths(read({"a b.txt", "/etc/hosts", "sub/"})),
        ElementsAre("/home/demo/a b.txt", "/etc/hosts", "/home/demo/sub/"));
}

TEST(LaunchArguments, keepsBytesThatAreNoText) {
    EXPECT_THAT(paths(read({"/tmp/\xff\n\x01"})), ElementsAre("/tmp/\xff\n\x01"));
}

TEST(LaunchArguments, takesFileURLsForTheFilesTheyName) {
    EXPECT_THAT(paths(read({"file:///a%20b", "file://localhost/c%FF"})), ElementsAre("/a b", "/c\xff"));
}

TEST(LaunchArguments, refusesURLsOfOtherMachines) {
    const auto request = read({"file://elsewhere/a"});
    EXPECT_THAT(std::get<UsageError>(request).sentence, HasSubstr("file://elsewhere/a"));
    EXPECT_TRUE(std::holds_alternative<UsageError>(read({"file:///a%00b"})));
    EXPECT_TRUE(std::holds_alternative<UsageError>(read({"file:///a%2"})));
}

TEST(LaunchArguments, takesEverythingAfterTwoDashesForNames) {
    EXPECT_THAT(
        paths(read({"--", "--help", "-", "--", "file:///a"})),
        ElementsAre("/home/demo/--help", "/home/demo/-", "/home/demo/--", "/home/demo/file:/a"));
}

TEST(LaunchArguments, takesWhatIsShownInPlaceOfFiles) {
    EXPECT_TRUE(std::holds_alternative<OpenResolver>(read({"--resolver"})));
    EXPECT_TRUE(std::holds_alternative<AwaitRequests>(read({"--await-bus"})));
    EXPECT_THAT(
        paths(read({"--", "--resolver", "--await-bus"})),
        ElementsAre("/home/demo/--resolver", "/home/demo/--await-bus"));
}

TEST(LaunchArguments, refusesWhatCannotBeCombined) {
    const auto refused = [](const std::vector<std::string>& arguments, const std::string& sentence) {
        EXPECT_EQ(std::get<UsageError>(read(arguments)).sentence, sentence);
    };
    for (const std::string option : {"--resolver", "--await-bus"}) {
        refused({option, "a"}, "a file cannot be combined with " + option);
        refused({"a", option}, "a file cannot be combined with " + option);
        refused({"--services", option}, "--services cannot be combined with " + option);
    }
    refused({"--resolver", "--await-bus"}, "--await-bus cannot be combined with --resolver");
}

TEST(LaunchArguments, takesASingleDashForAName) {
    EXPECT_THAT(paths(read({"-"})), ElementsAre("/home/demo/-"));
}

TEST(LaunchArguments, refusesUnknownOptionsAndEmptyNames) {
    EXPECT_EQ(std::get<UsageError>(read({"a", "--frobnicate"})).sentence, "there is no option --frobnicate");
    EXPECT_TRUE(std::holds_alternative<UsageError>(read({""})));
}

TEST(LaunchArguments, takesFileNamesToShow) {
    const auto names = [](const std::vector<std::string>& arguments) {
        std::vector<std::string> found;
        const auto request = read(arguments);
        for (const platform::URL& url : std::get<ShowFileNames>(request).urls) {
            found.push_back(url.path());
        }
        return found;
    };
    EXPECT_THAT(
        names({"--services", "/b", "a b.txt", "file:///c%FF", "/\xff"}),
        ElementsAre("/b", "/home/demo/a b.txt", "/c\xff", "/\xff"));
    EXPECT_THAT(
        names({"a", "--services", "--", "-b", "--services"}),
        ElementsAre("/home/demo/a", "/home/demo/-b", "/home/demo/--services"));
    EXPECT_THAT(names({"--services"}), IsEmpty());
    EXPECT_THAT(paths(read({"--", "--services"})), ElementsAre("/home/demo/--services"));
    EXPECT_TRUE(std::holds_alternative<UsageError>(read({"--services", ""})));
    EXPECT_TRUE(std::holds_alternative<UsageError>(read({"--services", "file://elsewhere/a"})));
    EXPECT_TRUE(std::holds_alternative<UsageError>(read({"--services=", "a"})));
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
