#include "tests/end_to_end/SystemCallTrace.h"
#include "tests/end_to_end/Tolvane.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using Texts = std::vector<std::string>;

constexpr std::size_t fewFiles = 200;
constexpr std::size_t callsForAnyFile = 10;
constexpr std::size_t callsForFilesWithAttributes = 2;
constexpr std::size_t callsForEachAttribute = 3;

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

    // The sanitizers' own bookkeeping does not count.
    static std::size_t countCalls(const Texts& paths, bool json) {
        static const std::set<std::string> bookkeeping{"mmap",     "munmap", "madvise",
                                                       "mprotect", "mremap", "brk"};
        const auto calls = tracedRun(reportOn(paths, json));
        return static_cast<std::size_t>(std::ranges::count_if(
            calls, [](const SystemCall& call) { return !isSanitized || !bookkeeping.contains(call.name); }));
    }

    // Start-up is the same in a short and in a long run, so it does not show in their difference.
    static void expectAtMost(std::size_t callsAFile, const Texts& paths) {
        ASSERT_EQ(paths.size(), 2 * fewFiles);
        const Texts half(paths.begin(), paths.begin() + fewFiles);
        for (const bool json : {false, true}) {
            const auto inShortRun = countCalls(half, json);
            const auto inLongRun = countCalls(paths, json);
            ASSERT_GT(inLongRun, inShortRun);
            EXPECT_LE(inLongRun - inShortRun, callsAFile * fewFiles) << (json ? "as JSON" : "as text");
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

TEST_F(SystemCalls, askForSizesThenAttributesThenTheDictionaryThenTheType) {
    const auto paths = files(1, 2);
    if (paths.empty()) {
        GTEST_SKIP() << folder.path() << ": " << std::strerror(errno);
    }
    std::string order;
    for (const auto& call : tracedRun(tolvane({"report", paths.front()}))) {
        const bool isAboutFile = call.details.contains("\"" + paths.front() + "\"");
        if (isAboutFile && call.name != "execve" && call.name != "write") {
            order += call.name + " ";
        }
    }
    const std::string sizes = "(statx )+(llistxattr )?";
    const std::string sums = "listxattr listxattr getxattr getxattr ";
    const std::string dictionary = "statx (listxattr ){1,2}(getxattr ){2,4}";
    const std::string type = "statx (llistxattr )?";
    EXPECT_TRUE(std::regex_match(order, std::regex(sizes + sums + dictionary + type))) << order;
}

} // namespace
} // namespace tolvane::tests
