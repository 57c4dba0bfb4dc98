#include "tests/oracle/Tolvane.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <optional>
#include <ostream>
#include <string>
#include <vector>
#include <sys/types.h>

namespace tolvane::tests {
namespace {

constexpr std::int64_t allowanceInKilobytes = 512;

// The most memory that a process has had so far. What wait4 tells in the end would not do: it counts the
// memory of the test itself, of which the process is made.
std::optional<std::int64_t> peakInKilobytes(pid_t process) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string word; status >> word;) {
        std::int64_t kilobytes = 0;
        if (word == "VmHWM:" && status >> kilobytes) {
            return kilobytes;
        }
    }
    return std::nullopt;
}

// Enough to tell growth from chance, and few enough for programs that nothing was optimised in.
constexpr std::size_t shortList = 1'000;
constexpr std::size_t longList = 20'000;

struct Form {
    std::string name;
    bool json;
};

void PrintTo(const Form& form, std::ostream* stream) {
    *stream << form.name;
}

class Memory : public testing::TestWithParam<Form> {
protected:
    // The peak of a run when it has reported on all names but still waits for more.
    static std::int64_t peakAfter(const std::vector<std::string>& names, std::size_t count, bool json) {
        Process process(reportOn({}, json));
        const std::string mark = json ? "\"facts\":" : "Bookmark path: ";
        std::string piece;
        for (const auto& name : names) {
            piece.append(name).push_back('\0');
        }
        for (std::size_t written = 0; written < count; written += names.size()) {
            process.write(piece);
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
        const auto peak = peakInKilobytes(process.id());
        EXPECT_TRUE(peak);
        EXPECT_EQ(process.finish().status, 0);
        return peak.value_or(0);
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
    const auto small = peakAfter(names, shortList, GetParam().json);
    const auto large = peakAfter(names, longList, GetParam().json);
    RecordProperty("kilobytesForShortList", static_cast<int>(small));
    RecordProperty("kilobytesForLongList", static_cast<int>(large));
    EXPECT_GT(small, 0);
    EXPECT_LE(large, small + allowanceInKilobytes);
}

INSTANTIATE_TEST_SUITE_P(
    All, Memory, testing::Values(Form{"text", false}, Form{"json", true}), [](const auto& form) {
        return form.param.name;
    });

} // namespace
} // namespace tolvane::tests
