#include "tests/oracle/Agreement.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <ostream>
#include <string>
#include <system_error>
#include <vector>
#include <unistd.h>

namespace tolvane::tests {
namespace {

struct Place {
    std::string name;
    std::string folder;
    /// So many items at most, in the order in which the folder lists them.
    std::size_t most;
    /// How many of a hundred may change meanwhile: what the kernel makes on demand, and devices that others
    /// use, may have another date each time.
    std::size_t restlessPercent;

    friend void PrintTo(const Place& place, std::ostream* stream) { *stream << place.folder; }
};

std::vector<std::string> itemsBelow(const Place& place) {
    std::vector<std::string> paths;
    std::error_code failure;
    using Walk = std::filesystem::recursive_directory_iterator;
    for (Walk item(place.folder, std::filesystem::directory_options::skip_permission_denied, failure);
         item != Walk() && paths.size() < place.most && !failure; item.increment(failure)) {
        // stat enters a folder to find its mount point, so a folder that this user may not enter has none to
        // compare.
        std::error_code unknown;
        if (!item->is_directory(unknown) || access(item->path().c_str(), X_OK) == 0) {
            paths.push_back(item->path().string());
        }
    }
    return paths;
}

class SystemFolders : public testing::TestWithParam<Place> {};

TEST_P(SystemFolders, agreeWithOtherPrograms) {
    const auto paths = itemsBelow(GetParam());
    if (paths.empty()) {
        GTEST_SKIP() << GetParam().folder << " is not there, is empty or cannot be listed";
    }
    const Agreement agreement = expectAgreement(paths);
    EXPECT_EQ(agreement.compared + agreement.restless.size(), paths.size());
    EXPECT_LE(agreement.restless.size() * 100, paths.size() * GetParam().restlessPercent)
        << agreement.restless.front() << " and others";
}

INSTANTIATE_TEST_SUITE_P(
    All,
    SystemFolders,
    testing::Values(
        Place{"etc", "/etc", 1'500, 1},
        Place{"usrBin", "/usr/bin", 1'000, 1},
        Place{"usrLib", "/usr/lib", 1'000, 1},
        Place{"usrShare", "/usr/share", 2'000, 1},
        Place{"varLib", "/var/lib", 500, 10},
        Place{"dev", "/dev", 500, 10},
        Place{"procSys", "/proc/sys", 500, 30},
        Place{"procTty", "/proc/tty", 50, 30},
        Place{"sysClass", "/sys/class", 300, 30},
        Place{"sysKernel", "/sys/kernel", 500, 30}),
    [](const auto& place) { return place.param.name; });

} // namespace
} // namespace tolvane::tests
