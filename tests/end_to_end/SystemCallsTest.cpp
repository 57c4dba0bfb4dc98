#include "tests/end_to_end/SystemCallTrace.h"
#include "tests/oracle/Tolvane.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <regex>
#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using Texts = std::vector<std::string>;

constexpr std::size_t fewFiles = 200;
// One look and a list for the URL's values, two lists for the sum of the attribute sizes, a look and a list
// for the dictionary, and writing.
constexpr std::size_t callsForFacts = 7;
constexpr std::size_t callsForEachAttribute = 2;
// A bookmark takes two looks at the item and one at each folder on the way but "/", and a question whether
// the mounts have changed. Resolving it asks that again and looks at the item once.
constexpr std::size_t callsForBookmark = 5;
// The first file in a folder takes some more, and once a second another one does.
constexpr std::size_t callsForFirstFiles = 100;

// The folders that the path names, without "/".
std::size_t foldersOnTheWay(const std::string& path) {
    return static_cast<std::size_t>(std::ranges::count(path, '/')) - 1;
}

class SystemCalls : public TraceTest {
protected:
    Texts files(std::size_t count, std::size_t attributes) const {
        Texts paths;
        for (std::size_t i = 0; i < count; ++i) {
            paths.push_back(folder.file("file " + std::to_string(i) + ".txt", "text"));
            for (std::size_t k = 0; k < attributes; ++k) {
                if (!setExtendedAttribute(paths.back(), "user.name" + std::to_string(k), "value")) {
                    return {};
                }
            }
        }
        return paths;
    }

    static std::size_t countCalls(const Texts& paths, bool json) {
        ProcessSetup setup = reportOn(paths, json);
        setup.command.insert(setup.command.end(), {"--jobs", "1"});
        return tracedRun(std::move(setup)).size();
    }

    // Start-up is the same in a short and in a long run, so it does not show in their difference.
    static void expectAtMost(std::size_t attributes, const Texts& paths) {
        ASSERT_EQ(paths.size(), 2 * fewFiles);
        const Texts half(paths.begin(), paths.begin() + fewFiles);
        const std::size_t callsAFile = callsForFacts + callsForEachAttribute * attributes + callsForBookmark
                                       + foldersOnTheWay(std::filesystem::canonical(paths.front()).string());
        for (const bool json : {false, true}) {
            const std::size_t inShortRun = countCalls(half, json);
            const std::size_t inLongRun = countCalls(paths, json);
            ASSERT_GT(inLongRun, inShortRun);
            EXPECT_LE(inLongRun - inShortRun, callsAFile * fewFiles + callsForFirstFiles)
                << (json ? "as JSON" : "as text");
        }
    }
};

TEST_F(SystemCalls, areTwelveForAFileOneForEachFolderOnTheWayAndTwoForEachAttribute) {
    for (const std::size_t attributes : {0U, 1U, 4U}) {
        SCOPED_TRACE(attributes);
        const auto paths = files(2 * fewFiles, attributes);
        if (paths.empty()) {
            GTEST_SKIP() << folder.path() << ": " << std::strerror(errno);
        }
        expectAtMost(attributes, paths);
    }
}

TEST_F(SystemCalls, askForSizesAndTypeThenAttributesThenTheDictionaryThenTheBookmark) {
    const auto paths = files(1, 2);
    if (paths.empty()) {
        GTEST_SKIP() << folder.path() << ": " << std::strerror(errno);
    }
    std::string order;
    for (const auto& call : tracedRun(tolvane({"report", paths.front()}))) {
        const bool isAboutFile = call.details.contains("\"" + paths.front() + "\"");
        if (call.name == "poll") {
            order += "poll ";
        }
        if (isAboutFile && call.name != "execve" && call.name != "write") {
            order += call.name + " ";
        }
    }
    const std::string values = "statx llistxattr ";
    const std::string sums = "listxattr listxattr getxattr getxattr ";
    const std::string dictionary = "statx listxattr getxattr getxattr ";
    const std::string bookmark = "poll (statx ){2}poll statx ";
    EXPECT_TRUE(std::regex_match(order, std::regex(values + sums + dictionary + bookmark))) << order;
}

TEST_F(SystemCalls, doNotAskForTheProcessorsForOneName) {
    const auto isAboutProcessors = [](const SystemCall& call) {
        return call.name == "sched_getaffinity" || call.details.contains("/sys/devices/system/cpu");
    };
    for (const bool json : {false, true}) {
        EXPECT_TRUE(std::ranges::none_of(tracedRun(reportOn(files(1, 0), json)), isAboutProcessors));
    }
}

} // namespace
} // namespace tolvane::tests
