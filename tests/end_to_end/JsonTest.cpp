#include "tests/oracle/Tolvane.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <string>
#include <vector>
#include <fcntl.h>

namespace tolvane::tests {
namespace {

using nlohmann::json;

constexpr double secondsFrom1970To2001 = 978'307'200;

class JsonReports : public testing::Test {
protected:
    static json reportOnOne(const std::string& path) {
        return json::parse(printed({"report", "--json", path}));
    }

    TemporaryFolder folder;
    std::string file = folder.file("file");
};

TEST_F(JsonReports, haveDatesToTheNanosecond) {
    struct Case {
        timespec date;
        std::string iso;
        std::string text;
    };
    const std::vector<Case> cases{
        {{0, 1}, "1970-01-01T00:00:00.000000001Z", "1970-01-01 00:00:00 +0000"},
        {{-1, 999'999'999}, "1969-12-31T23:59:59.999999999Z", "1969-12-31 23:59:59 +0000"},
        {{1'709'164'799, 999'999'999}, "2024-02-28T23:59:59.999999999Z", "2024-02-28 23:59:59 +0000"},
        {{1'709'164'800, 0}, "2024-02-29T00:00:00.000000000Z", "2024-02-29 00:00:00 +0000"}};
    for (const auto& [date, iso, text] : cases) {
        const std::array times{date, date};
        ASSERT_EQ(utimensat(AT_FDCWD, file.c_str(), times.data(), 0), 0) << std::strerror(errno);
        if (statusOf(file).st_mtim.tv_nsec != date.tv_nsec) {
            GTEST_SKIP() << file << " is on a file system without nanoseconds";
        }
        const json object = reportOnOne(file);
        const double seconds = static_cast<double>(date.tv_sec) - secondsFrom1970To2001
                               + static_cast<double>(date.tv_nsec) / 1e9;
        EXPECT_EQ(object["facts"]["modified"]["date"], iso);
        EXPECT_NEAR(object["facts"]["modified"]["seconds"].get<double>(), seconds, 1e-6);
        EXPECT_EQ(object["modifiedTextbox"], text);
    }
}

TEST_F(JsonReports, sayWhenTheyWereGathered) {
    const auto secondsNow = [] {
        const auto now = std::chrono::system_clock::now().time_since_epoch();
        return std::chrono::duration<double>(now).count() - secondsFrom1970To2001;
    };
    const double before = secondsNow();
    const json gathered = reportOnOne(file)["facts"]["gathered"];
    EXPECT_GE(gathered["seconds"].get<double>(), before - 0.001);
    EXPECT_LE(gathered["seconds"].get<double>(), secondsNow() + 0.001);
}

TEST_F(JsonReports, complaintsGoToStandardErrorAlone) {
    const auto outcome = run(tolvane({"report", "--json", file, folder.path("missing"), file}));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "tolvane-cli: " + folder.path("missing") + ": No such file or directory\n");
    const auto lines = linesOf(outcome.out);
    ASSERT_EQ(lines.size(), 2U) << outcome.out;
    for (const auto& line : lines) {
        EXPECT_EQ(json::parse(line)["pathTextbox"], file);
    }
}

} // namespace
} // namespace tolvane::tests
