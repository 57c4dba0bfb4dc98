// A report looks at items and leaves them alone.
#include "tests/end_to_end/Corpus.h"
#include "tests/end_to_end/SystemCallTrace.h"
#include "tests/oracle/Tolvane.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

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

TEST(NothingTouched, contentsAndDatesStay) {
    const TemporaryFolder folder;
    Texts paths = everything(folder);
    std::erase_if(paths, [&](const std::string& path) { return !path.starts_with(folder.path()); });
    const UntouchedItems items(paths);
    for (const bool json : {false, true}) {
        const auto outcome = run(reportOn(paths, json));
        ASSERT_EQ(outcome.status, 0) << outcome.err;
        items.expectSameStatus();
    }
    items.expectSameContents();
}

class NothingTouchedInTrace : public TraceTest {
protected:
    Texts paths = everything(folder);
    TemporaryFolder elsewhere;
    ProcessSetup reportOnList =
        tolvane({"report", "--files0-from", elsewhere.file("list", nulSeparated(paths))});
};

TEST_F(NothingTouchedInTrace, callsOnItemsOnlyLook) {
    const std::set<std::string> looking{"statx",      "newfstatat", "lstat",     "stat",     "listxattr",
                                        "llistxattr", "getxattr",   "lgetxattr", "readlink", "readlinkat"};
    const std::set<std::string> carrying{"execve", "write", "writev", "read"};
    for (auto setup : {reportOn(paths, true), reportOnList}) {
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

// That is to ask for its UUID. Neither the items nor the folders on the way to them are opened.
TEST_F(NothingTouchedInTrace, onlyTheRootOfAVolumeIsOpenedAndThatOnceAndNotRead) {
    std::set<std::string> watched{paths.begin(), paths.end()};
    for (std::filesystem::path above = std::filesystem::canonical(folder.path()); above.has_relative_path();
         above = above.parent_path()) {
        watched.insert(above.string());
    }
    watched.insert("/");
    std::map<std::string, int> opened;
    std::set<std::string> openRoots;
    for (const auto& [name, details] : tracedRun(reportOnList)) {
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
        EXPECT_TRUE(path == "/" || statusOf(path).st_dev != statusOf(path + "/..").st_dev) << path;
        EXPECT_EQ(times, 1) << path;
    }
}

TEST_F(NothingTouchedInTrace, onlyTheStandardStreamsAreWritten) {
    // Everything that changes a file, a folder or the system, except opening and writing.
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
    for (const auto& [name, details] : tracedRun(reportOnList)) {
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

} // namespace
} // namespace tolvane::tests
