// Items around and beyond the longest path that a system call takes.
#include "platform/posix/FileDescriptor.h"
#include "tests/hostile/LostFacts.h"
#include "tests/oracle/Tolvane.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>
#include <fcntl.h>
#include <linux/limits.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvane::tests {
namespace {

using nlohmann::json;
using platform::FileDescriptor;

/// The longest path that a system call takes, without its NUL.
constexpr std::size_t longestPath = PATH_MAX - 1;

/// A folder made and opened step by step, since its path may be too long.
struct DeepFolder {
    std::string path;
    FileDescriptor opened;
};

class LongPaths : public testing::Test {
protected:
    /// A folder whose path has exactly this length.
    DeepFolder folderOfLength(std::size_t length) const {
        DeepFolder deep{home, FileDescriptor::owned(open(home.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))};
        while (deep.path.size() < length) {
            const std::size_t left = length - deep.path.size() - 1;
            // Never a step of which nothing but its slash would be left.
            const std::string step(left <= 200 ? left : left - 100 < 200 ? 100 : 200, 'd');
            if (mkdirat(deep.opened.number(), step.c_str(), 0755) != 0 && errno != EEXIST) {
                ADD_FAILURE() << deep.path.size() << ": " << std::strerror(errno);
                break;
            }
            deep.opened = FileDescriptor::owned(
                openat(deep.opened.number(), step.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
            deep.path += "/" + step;
        }
        return deep;
    }

    static void makeFile(const DeepFolder& folder, const std::string& name) {
        const auto file = FileDescriptor::owned(
            openat(folder.opened.number(), name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
        EXPECT_EQ(write(file.number(), "words", 5), 5) << std::strerror(errno);
    }

    /// Runs the program in the folder, however long its path is.
    static ProcessOutcome runIn(const DeepFolder& folder, std::vector<std::string> arguments) {
        return run(tolvane(
            std::move(arguments), {.folder = "/proc/self/fd/" + std::to_string(folder.opened.number())}));
    }

    TemporaryFolder folder;
    std::string home = std::filesystem::canonical(folder.path()).string();
    std::string near = std::filesystem::canonical(folder.file("near")).string();
};

TEST_F(LongPaths, areReportedUpToTheLongest) {
    const DeepFolder deep = folderOfLength(longestPath - 10);
    for (const std::size_t length : {longestPath - 1, longestPath}) {
        const std::string name(length - deep.path.size() - 1, 'n');
        makeFile(deep, name);
        const std::string path = deep.path + "/" + name;
        ASSERT_EQ(path.size(), length);
        for (const auto& outcome : {run(tolvane({"report", path})), runIn(deep, {"report", name})}) {
            EXPECT_EQ(outcome.status, 0) << outcome.err;
            Fields fields = reportIn(outcome.out, path);
            EXPECT_EQ(fields["filemanSize"], "5");
            EXPECT_EQ(fields["bookmarkPathTextbox"], path);
        }
        const auto made = printed({"bookmark", "make", path});
        EXPECT_EQ(json::parse(printed({"bookmark", "resolve", "--json", made}))["path"], path);
    }
}

TEST_F(LongPaths, areComplainedOfBeyondTheLongest) {
    const DeepFolder deep = folderOfLength(longestPath - 10);
    for (const std::size_t length : {longestPath + 1, longestPath + 2, longestPath + 200}) {
        const std::string name(length - deep.path.size() - 1, 'n');
        makeFile(deep, name); // there is such an item, only no path to it
        for (const auto& given : {deep.path + "/" + name, name}) {
            const auto outcome = runIn(deep, {"report", given, near});
            EXPECT_EQ(outcome.status, 1);
            EXPECT_EQ(outcome.err, "tolvane-cli: " + given + ": File name too long\n");
            reportIn(outcome.out, near);
        }
        const auto made = runIn(deep, {"bookmark", "make", name});
        EXPECT_TRUE(isComplaint(made));
        EXPECT_TRUE(made.err.starts_with("tolvane-cli: " + name + ": ")) << made.err;
    }
}

TEST_F(LongPaths, mayLeadToTheFolderThatNamesStartIn) {
    const DeepFolder deep = folderOfLength(2 * longestPath);
    makeFile(deep, "item");
    const auto outcome = runIn(deep, {"report", "item", near, "./item", "missing"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(
        outcome.err, "tolvane-cli: item: File name too long\n"
                     "tolvane-cli: ./item: File name too long\n"
                     "tolvane-cli: missing: File name too long\n");
    reportIn(outcome.out, near);
}

// A short path through links to an item whose real path is too long: only the bookmark is missing, which
// would need that path.
TEST_F(LongPaths, canBeShortThroughLinks) {
    const DeepFolder deep = folderOfLength(6'000);
    makeFile(deep, "item");
    const auto half = deep.path.find('/', 3'000);
    folder.symlink("link", deep.path.substr(0, half));
    const std::string path = home + "/link" + deep.path.substr(half) + "/item";
    ASSERT_LT(path.size(), longestPath);
    Fields fields = reportIn(printed({"report", path}), path);
    EXPECT_EQ(fields["filemanSize"], "5");
    EXPECT_EQ(fields["typeTextbox"], "NSFileTypeRegular: public.data");
    EXPECT_EQ(fields["bookmarkTextbox"], "");
    EXPECT_EQ(fields["bookmarkPathTextbox"], noBookmarkText);
    expectComplaint(run(tolvane({"bookmark", "make", path})), path + ": The path to the item is too long.");
}

TEST_F(LongPaths, thatGrowTooLongLeadABookmarkNowhere) {
    const DeepFolder deep = folderOfLength(longestPath - 10);
    makeFile(deep, "item");
    const auto made = printed({"bookmark", "make", deep.path + "/item"});
    const std::string top = deep.path.substr(0, deep.path.find('/', home.size() + 1));
    ASSERT_EQ(std::rename(top.c_str(), (top + "-and-more").c_str()), 0);
    const auto resolved = run(tolvane({"bookmark", "resolve", made}));
    EXPECT_TRUE(isComplaint(resolved)) << resolved.out << resolved.err;
}

} // namespace
} // namespace tolvane::tests
