#include "tests/end_to_end/SystemCallTrace.h"
#include "tests/oracle/Tolvane.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <regex>
#include <set>
#include <string>
#include <vector>
#include <sys/stat.h>

namespace tolvane::tests {
namespace {

using Texts = std::vector<std::string>;

constexpr std::size_t fewFiles = 200;
constexpr std::size_t callsForAnyFile = 10;
constexpr std::size_t callsForFilesWithAttributes = 2;
constexpr std::size_t callsForEachAttribute = 3;

// A bookmark takes two looks at each step from "/" down to the item, two calls for each volume on the way,
// one to see whether the mounts have changed, and one look at the home folder. Resolving it asks about the
// mounts again and looks at the item once.
std::size_t callsForABookmark(const std::string& path) {
    std::size_t steps = 0;
    std::set<dev_t> volumes;
    for (std::size_t end = 0; end != std::string::npos; ++steps) {
        const auto next = path.find('/', end + 1);
        volumes.insert(statusOf(steps == 0 ? "/" : path.substr(0, end)).st_dev);
        end = end == path.size() ? std::string::npos : std::min(next, path.size());
    }
    return 2 * steps + 2 * volumes.size() + 4;
}

class SystemCalls : public testing::Test {
protected:
    void SetUp() override {
        if (const auto obstacle = obstacleToTracing()) {
            GTEST_SKIP() << *obstacle;
        }
    }

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

    struct Count {
        std::size_t forFiles = 0;
        std::size_t forBookmarks = 0;
    };

    // A file's bookmark begins with the question whether the mounts have changed, and its looks go on until
    // the next file is named for the first time.
    static Count countCalls(const Texts& paths, bool json) {
        static const std::set<std::string> looks{"poll", "statx", "statfs", "readlink"};
        Count count;
        auto next = paths.begin();
        bool isInBookmark = false;
        ProcessSetup setup = reportOn(paths, json);
        setup.command.insert(setup.command.end(), {"--jobs", "1"});
        for (const SystemCall& call : tracedRun(std::move(setup))) {
            if (next != paths.end() && call.name == "statx" && call.details.contains("\"" + *next + "\"")) {
                ++next;
                isInBookmark = false;
            }
            isInBookmark = isInBookmark || (call.name == "poll" && call.details.contains("POLLPRI"));
            if (isInBookmark && looks.contains(call.name)) {
                ++count.forBookmarks;
            } else {
                ++count.forFiles;
            }
        }
        EXPECT_TRUE(next == paths.end()) << *next << " was not looked at";
        return count;
    }

    // Start-up is the same in a short and in a long run, so it does not show in their difference.
    static void expectAtMost(std::size_t callsAFile, const Texts& paths) {
        ASSERT_EQ(paths.size(), 2 * fewFiles);
        const Texts half(paths.begin(), paths.begin() + fewFiles);
        const std::size_t callsABookmark =
            callsForABookmark(std::filesystem::canonical(paths.front()).string());
        for (const bool json : {false, true}) {
            const Count inShortRun = countCalls(half, json);
            const Count inLongRun = countCalls(paths, json);
            ASSERT_GT(inLongRun.forFiles, inShortRun.forFiles);
            ASSERT_GT(inLongRun.forBookmarks, inShortRun.forBookmarks);
            EXPECT_LE(inLongRun.forFiles - inShortRun.forFiles, callsAFile * fewFiles)
                << (json ? "as JSON" : "as text");
            EXPECT_LE(inLongRun.forBookmarks - inShortRun.forBookmarks, callsABookmark * fewFiles)
                << (json ? "as JSON" : "as text");
        }
    }

    TemporaryFolder folder;
};

TEST_F(SystemCalls, areAtMostTenForAFileWithoutAttributes) {
    expectAtMost(callsForAnyFile, files(2 * fewFiles, 0));
}

TEST_F(SystemCalls, areThreeMoreForEachAttribute) {
    for (const std::size_t attributes : {1U, 4U}) {
        const auto paths = files(2 * fewFiles, attributes);
        if (paths.empty()) {
            GTEST_SKIP() << folder.path() << ": " << std::strerror(errno);
        }
        expectAtMost(
            callsForAnyFile + callsForFilesWithAttributes + callsForEachAttribute * attributes, paths);
    }
}

TEST_F(SystemCalls, askForSizesThenAttributesThenTheDictionaryThenTheTypeThenTheBookmark) {
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
    const std::string sizes = "(statx )+(llistxattr )?";
    const std::string sums = "listxattr listxattr getxattr getxattr ";
    const std::string dictionary = "statx (listxattr ){1,2}(getxattr ){2,4}";
    const std::string type = "statx (llistxattr )?";
    const std::string bookmark = "poll (statx ){2}poll statx ";
    EXPECT_TRUE(std::regex_match(order, std::regex(sizes + sums + dictionary + type + bookmark))) << order;
}

} // namespace
} // namespace tolvane::tests
