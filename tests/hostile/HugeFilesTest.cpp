// Files of the largest size that there is, whose sizes can just be added up, or no more.
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
    const auto outcome = run(tolvane({"report", item}));
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    const auto reports = splitReports(outcome.out, {headingOf(item)});
    ASSERT_TRUE(reports) << outcome.out;
    const Fields fields = fieldsOf(reports->front(), headingOf(item)).value_or(Fields{});
    for (const char* size : {"urlDataSize", "urlTotalSize", "filemanSize", "filemanTotalSize"}) {
        EXPECT_EQ(fields.at(size), "9223372036854775807") << size;
    }
}

// One byte more cannot be counted. That is a stop, on purpose, and no wrong number.
TEST_F(HugeFiles, stopTheProgramWhereASumOverflows) {
    struct Case {
        const char* attribute;
        const char* lastWords;
    };
    for (const auto& [attribute, lastWords] :
         {Case{"user.note", "tolvane: fatal: the file system's total size overflows"},
          Case{"user.com.apple.ResourceFork", "tolvane: fatal: the size of all forks overflows"}}) {
        if (!setExtendedAttribute(item, attribute, "1")) {
            GTEST_SKIP() << item << ": " << std::strerror(errno);
        }
        const auto outcome = run(tolvane({"report", small, item, small}));
        EXPECT_EQ(outcome.signal, SIGABRT);
        EXPECT_TRUE(splitReports(outcome.out, {headingOf(small)})) << outcome.out;
        EXPECT_TRUE(outcome.err.starts_with(lastWords)) << outcome.err;
        EXPECT_EQ(linesOf(outcome.err).size(), 1U) << outcome.err;
    }
}

} // namespace
} // namespace tolvane::tests
