#include "tests/oracle/Tolvane.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

// A second thread, which begins where names come faster than reports are made, takes some 300.
constexpr long allowanceInKilobytes = 1'024;

// Enough to distinguish growth from chance, and few enough for programs that are not optimised.
constexpr std::size_t shortList = 1'000;
constexpr std::size_t longList = 20'000;

class Memory : public testing::TestWithParam<bool> {
protected:
    // The peak of a run when it has reported on all names but still waits for more.
    static long peakAfter(const std::vector<std::string>& names, std::size_t count, bool json) {
        Process process(reportOn({}, json));
        const std::string mark = json ? "\"facts\":" : "Bookmark path: ";
        for (std::size_t written = 0; written < count; written += names.size()) {
            process.write(nulSeparated(names));
        }
        std::size_t reports = 0;
        std::size_t place = 0;
        const bool isComplete = process.waitForOutput([&](const std::string& out) {
            for (auto found = out.find(mark, place); found != std::string::npos;
                 found = out.find(mark, place)) {
                ++reports;
                place = found + mark.size();
            }
            return reports >= count;
        });
        EXPECT_TRUE(isComplete) << reports << " of " << count;
        // Unlike the kernel's figure at the end, this does not count the memory of the test that forked it.
        const long peak = process.memory("VmHWM");
        EXPECT_EQ(process.finish().status, 0);
        return peak;
    }

    TemporaryFolder folder;
};

TEST_P(Memory, doesNotGrowWithTheNumberOfNames) {
    const std::vector<std::string> names{
        folder.file("one"),
        folder.file("two.txt"),
        folder.folder("folder"),
        folder.symlink("link", "one"),
        folder.symlink("dangling", "nothing"),
        "/dev/null",
        "/",
        "/etc",
        "/etc/passwd",
        folder.path()};
    if (!setExtendedAttribute(names.front(), "user.name", std::string(500, 'v'))) {
        RecordProperty("attributes", "none: the file system takes none");
    }
    const auto small = peakAfter(names, shortList, GetParam());
    const auto large = peakAfter(names, longList, GetParam());
    RecordProperty("kilobytesForShortList", static_cast<int>(small));
    RecordProperty("kilobytesForLongList", static_cast<int>(large));
    EXPECT_LE(large, small + allowanceInKilobytes);
}

INSTANTIATE_TEST_SUITE_P(All, Memory, testing::Bool(), [](const auto& json) {
    return std::string(json.param ? "json" : "text");
});

} // namespace
} // namespace tolvane::tests
