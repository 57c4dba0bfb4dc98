#include "tests/oracle/Agreement.h"
#include "tests/oracle/BookmarkOracle.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

struct Place {
    std::string name;
    std::string folder; ///< "~" is the user's home folder.
    std::size_t most;   ///< So many items.
    /// How many of a hundred may change meanwhile: what the kernel makes on demand, and devices that others
    /// use, may have another date each time.
    std::size_t restlessPercent;

    friend void PrintTo(const Place& place, std::ostream* stream) { *stream << place.folder; }
};

class SystemFolders : public testing::TestWithParam<Place> {};

TEST_P(SystemFolders, agreeWithOtherPrograms) {
    const auto& folder = GetParam().folder;
    const auto paths = itemsBelow(folder == "~" ? homeFolder() : folder, GetParam().most);
    if (paths.empty()) {
        GTEST_SKIP() << folder << " is not there, is empty or cannot be listed";
    }
    const Agreement agreement = expectAgreement(paths);
    EXPECT_EQ(agreement.compared + agreement.restless.size(), paths.size());
    EXPECT_LE(agreement.restless.size() * 100, paths.size() * GetParam().restlessPercent)
        << testing::PrintToString(agreement.restless);
}

INSTANTIATE_TEST_SUITE_P(
    All,
    SystemFolders,
    testing::Values(
        Place{"home", "~", 50, 90},
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
