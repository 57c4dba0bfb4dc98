// Files of the largest possible size, the sum of whose sizes overflows or just does not.
#include "tests/oracle/ReportText.h"
#include "tests/oracle/Tolvane.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>
#include <unistd.h>

namespace tolvane::tests {
namespace {

constexpr const char* sparseFolder = "/dev/shm"; // takes files of any size, as long as they are empty
constexpr std::int64_t largest = INT64_MAX;

class HugeFiles : public testing::Test {
protected:
    void SetUp() override {
        if (!std::filesystem::is_directory(sparseFolder)) {
            GTEST_SKIP() << "there is no " << sparseFolder;
        }
        folder = std::make_unique<TemporaryFolder>(sparseFolder);
        item = folder->file("huge");
        small = folder->file("small");
        if (truncate(item.c_str(), largest) != 0) {
            GTEST_SKIP() << item << ": " << std::strerror(errno);
        }
    }

    std::unique_ptr<TemporaryFolder> folder;
    std::string item;
    std::string small;
};

TEST_F(HugeFiles, areReportedToTheLastByte) {
    const Fields fields = reportIn(printed({"report", item}), item);
    for (const char* size : {"urlDataSize", "urlTotalSize", "filemanSize", "filemanTotalSize"}) {
        EXPECT_EQ(fields.at(size), "9223372036854775807") << size;
    }
}

// One byte more cannot be counted, so the program stops instead of printing a wrong number.
TEST_F(HugeFiles, stopTheProgramWhereASumOverflows) {
    for (const auto& [attribute, lastWords] :
         {std::pair{"user.note", "tolvane: fatal: the file system's total size overflows"},
          std::pair{"user.com.apple.ResourceFork", "tolvane: fatal: the size of all forks overflows"}}) {
        if (!setExtendedAttribute(item, attribute, "1")) {
            GTEST_SKIP() << item << ": " << std::strerror(errno);
        }
        // In the second case several threads are at work.
        for (const std::size_t before : {1U, 200U}) {
            std::vector<std::string> arguments(before, small);
            arguments.insert(arguments.begin(), {"report", "--jobs", "4"});
            arguments.push_back(item);
            arguments.insert(arguments.end(), 100, small);
            const auto outcome = run(tolvane(arguments));
            EXPECT_EQ(outcome.signal, SIGABRT);
            EXPECT_EQ(reportsIn(outcome.out, std::vector<Heading>(before, headingOf(small))).size(), before);
            EXPECT_TRUE(outcome.err.starts_with(lastWords)) << outcome.err;
            EXPECT_EQ(linesOf(outcome.err).size(), 1U) << outcome.err;
        }
    }
}

} // namespace
} // namespace tolvane::tests
