// A report looks at items and leaves them alone.
#include "tests/end_to_end/Corpus.h"
#include "tests/end_to_end/SystemCallTrace.h"
#include "tests/oracle/Tolvane.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <map>
#include <ostream>
#include <set>
#include <string>
#include <vector>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvane::tests {
namespace {

using Texts = std::vector<std::string>;

Texts everything(const TemporaryFolder& folder) {
    Texts paths;
    for (const auto& more :
         {addKinds(folder), addPermissions(folder), addContents(folder), addAttributes(folder, 1'100)}) {
        paths.insert(paths.end(), more.begin(), more.end());
    }
    return paths;
}

// Whatever reading or writing would change.
struct State {
    std::array<std::int64_t, 6> times{};
    std::int64_t size = 0;
    std::uint64_t mode = 0;
    std::string contents;

    bool operator==(const State&) const = default;
};

void PrintTo(const State& state, std::ostream* stream) {
    *stream << "mode " << state.mode << " size " << state.size << " times";
    for (const auto time : state.times) {
        *stream << " " << time;
    }
}

State stateOf(const std::string& path, bool withContents) {
    struct stat status{};
    EXPECT_EQ(lstat(path.c_str(), &status), 0) << path << ": " << std::strerror(errno);
    State state;
    state.times = {status.st_atim.tv_sec,  status.st_atim.tv_nsec, status.st_mtim.tv_sec,
                   status.st_mtim.tv_nsec, status.st_ctim.tv_sec,  status.st_ctim.tv_nsec};
    if (S_ISLNK(status.st_mode)) {
        // Following a link, which a report on its target's attributes has to, counts as access to the link.
        state.times[0] = state.times[1] = 0;
    }
    state.size = status.st_size;
    state.mode = status.st_mode;
    constexpr off_t largestRead = 1'000'000; // The sparse files are left out.
    // An owner who is not root may not read every file of the corpus either.
    const bool readable = access(path.c_str(), R_OK) == 0;
    if (withContents && readable && S_ISREG(status.st_mode) && status.st_size < largestRead) {
        state.contents = contentsOfFile(path);
    }
    return state;
}

class NothingTouched : public testing::Test {
protected:
    TemporaryFolder folder;
};

TEST_F(NothingTouched, contentsAndDatesStay) {
    Texts paths = everything(folder);
    std::erase_if(paths, [this](const std::string& path) { return !path.starts_with(folder.path()); });
    // An access date that lies before the modification date moves with the next reading, whatever the mount.
    constexpr std::array<timespec, 2> accessedBeforeModified{timespec{1'000'000, 0}, {2'000'000, 0}};
    std::map<std::string, std::string> contents;
    for (const auto& path : paths) {
        contents[path] = stateOf(path, true).contents;
    }
    std::map<std::string, State> before;
    for (const auto& path : paths) {
        ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), accessedBeforeModified.data(), AT_SYMLINK_NOFOLLOW), 0)
            << path << ": " << std::strerror(errno);
    }
    for (const auto& path : paths) {
        before[path] = stateOf(path, false);
    }
    for (const bool json : {false, true}) {
        const auto outcome = run(reportOn(paths, json));
        ASSERT_EQ(outcome.status, 0) << outcome.err;
        for (const auto& path : paths) {
            EXPECT_EQ(stateOf(path, false), before[path]) << path;
        }
    }
    for (const auto& path : paths) {
        EXPECT_EQ(stateOf(path, true).contents, contents[path]) << path;
    }
}

class NothingTouchedInTrace : public NothingTouched {
protected:
    void SetUp() override {
        if (const auto obstacle = obstacleToTracing()) {
            GTEST_SKIP() << *obstacle;
        }
    }
};

TEST_F(NothingTouchedInTrace, callsOnItemsOnlyLook) {
    const TemporaryFolder elsewhere;
    const auto paths = everything(folder);
    const auto list = elsewhere.file("list", nulSeparated(paths));
    const std::set<std::string> looking{"statx",      "newfstatat", "lstat",     "stat",     "listxattr",
                                        "llistxattr", "getxattr",   "lgetxattr", "readlink", "readlinkat"};
    const std::set<std::string> carrying{"execve", "write", "writev", "read"};
    for (const std::string option : {"--files0-from", "--json"}) {
        auto setup = option == "--json" ? reportOn(paths, true) : tolvane({"report", option, list});
        setup.folder = "/";
        std::size_t looks = 0;
        for (const auto& [name, details] : tracedRun(setup)) {
            if (details.contains(folder.path()) && !carrying.contains(name)) {
                EXPECT_TRUE(looking.contains(name)) << name << details;
                ++looks;
            }
        }
        EXPECT_GE(looks, paths.size());
    }
}

// To ask for its UUID, and no more than that: neither the items nor the folders on the way to them are
// opened.
TEST_F(NothingTouchedInTrace, onlyTheRootOfAVolumeIsOpenedAndThatOnceAndNotRead) {
    const TemporaryFolder elsewhere;
    const auto paths = everything(folder);
    const auto list = elsewhere.file("list", nulSeparated(paths));
    std::set<std::string> watched{paths.begin(), paths.end()};
    for (std::filesystem::path above = std::filesystem::canonical(folder.path()); above.has_relative_path();
         above = above.parent_path()) {
        watched.insert(above.string());
    }
    watched.insert("/");
    std::map<std::string, int> opened;
    std::set<std::string> openRoots;
    for (const auto& [name, details] : tracedRun(tolvane({"report", "--files0-from", list}))) {
        const auto start = details.find('"') + 1;
        const std::string path = start > 0 ? details.substr(start, details.find('"', start) - start) : "";
        const std::string descriptor = details.substr(1, details.find_first_of(",)") - 1);
        // Some account databases hold on to "/" by its path while they look for files of their own.
        const bool isByPath = path == "/" && details.contains("O_PATH");
        if (name.starts_with("open") && watched.contains(path) && !isByPath) {
            EXPECT_TRUE(details.contains("O_DIRECTORY")) << name << details;
            ++opened[path];
            openRoots.insert(details.substr(details.rfind(' ') + 1));
        } else if (openRoots.contains(descriptor)) {
            EXPECT_TRUE(name == "statx" || name == "ioctl" || name == "close") << name << details;
            if (name == "close") {
                openRoots.erase(descriptor);
            }
        }
    }
    EXPECT_TRUE(openRoots.empty()) << "they would keep the volumes from being unmounted";
    for (const auto& [path, times] : opened) {
        struct stat status{};
        struct stat above{};
        ASSERT_EQ(lstat(path.c_str(), &status), 0);
        ASSERT_EQ(lstat((path + "/..").c_str(), &above), 0);
        EXPECT_TRUE(path == "/" || status.st_dev != above.st_dev) << path;
        EXPECT_EQ(times, 1) << path;
    }
}

TEST_F(NothingTouchedInTrace, onlyTheStandardStreamsAreWritten) {
    const TemporaryFolder elsewhere;
    const auto list = elsewhere.file("list", nulSeparated(everything(folder)));
    // Whatever changes a file, a folder or the system, but for what opens and writes.
    const std::set<std::string> changing{"pwrite64",    "pwritev",      "pwritev2",
                                         "sendfile",    "splice",       "copy_file_range",
                                         "truncate",    "ftruncate",    "fallocate",
                                         "creat",       "mknod",        "mknodat",
                                         "mkdir",       "mkdirat",      "rmdir",
                                         "unlink",      "unlinkat",     "rename",
                                         "renameat",    "renameat2",    "link",
                                         "linkat",      "symlink",      "symlinkat",
                                         "chmod",       "fchmod",       "fchmodat",
                                         "fchmodat2",   "chown",        "lchown",
                                         "fchown",      "fchownat",     "utime",
                                         "utimes",      "utimensat",    "futimesat",
                                         "setxattr",    "lsetxattr",    "fsetxattr",
                                         "removexattr", "lremovexattr", "fremovexattr",
                                         "mount",       "umount2",      "open_by_handle_at"};
    std::size_t writes = 0;
    for (const auto& [name, details] : tracedRun(tolvane({"report", "--files0-from", list}))) {
        EXPECT_FALSE(changing.contains(name)) << name << details;
        if (name == "write" || name == "writev") {
            const bool isToStandardStream = details.starts_with("(1,") || details.starts_with("(2,");
            EXPECT_TRUE(isToStandardStream) << name << details;
            ++writes;
        }
        if (name.starts_with("open")) {
            for (const std::string flag : {"O_WRONLY", "O_RDWR", "O_CREAT", "O_TRUNC", "O_APPEND"}) {
                EXPECT_FALSE(details.contains(flag)) << name << details;
            }
        }
    }
    EXPECT_GT(writes, 0U);
}

// Opening one would wait for somebody at its other end.
TEST_F(NothingTouched, aFifoHoldsNothingUp) {
    const auto fifo = folder.fifo("fifo");
    const auto link = folder.symlink("link", fifo);
    for (const auto& path : {fifo, link}) {
        const auto outcome = run(tolvane({"report", path, folder.path()}));
        EXPECT_EQ(outcome.status, 0) << "ended by signal " << outcome.signal;
        EXPECT_TRUE(outcome.out.contains("Path: " + path + "\n")) << outcome.out;
    }
}

} // namespace
} // namespace tolvane::tests
