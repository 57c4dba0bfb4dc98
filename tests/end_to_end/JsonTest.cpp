#include "tests/oracle/Expectation.h"
#include "tests/oracle/ReportText.h"
#include "tests/oracle/Tolvane.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvane::tests {
namespace {

using nlohmann::json;

class JsonReports : public testing::Test {
protected:
    static json reportOnOne(const std::string& path) {
        const auto outcome = run(tolvane({"report", "--json", "--", path}));
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        EXPECT_EQ(linesOf(outcome.out).size(), 1U) << outcome.out;
        EXPECT_TRUE(outcome.out.ends_with("}\n")) << outcome.out;
        return json::parse(outcome.out, nullptr, false);
    }

    TemporaryFolder folder;
};

TEST_F(JsonReports, areOneLineEachWhateverTheNames) {
    const std::vector<std::string> paths{folder.file("plain"),   folder.file("line\nfeed"),
                                         folder.file("caf\xe9"), folder.file("\"quoted\\\""),
                                         folder.file("\u2028"),  folder.file("bell\a\x1b")};
    const auto outcome = run(reportOn(paths, true));
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    const auto lines = linesOf(outcome.out);
    ASSERT_EQ(lines.size(), paths.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const json object = json::parse(lines[i], nullptr, false);
        ASSERT_TRUE(object.is_object()) << lines[i];
        EXPECT_EQ(object["pathTextbox"], readableText(paths[i]));
    }
}

TEST_F(JsonReports, haveThePathsBytesWhereThePathIsNoText) {
    EXPECT_EQ(reportOnOne(folder.file("caf\u00e9"))["facts"]["pathBytes"], nullptr);
    for (const std::string name : {"caf\xe9", "\xff", "ok\xed\xa0\x80"}) {
        const auto path = folder.file(name);
        const json object = reportOnOne(path);
        EXPECT_EQ(object["facts"]["pathBytes"], hexText(path));
        EXPECT_EQ(object["pathTextbox"], readableText(path));
    }
}

TEST_F(JsonReports, keepNumbersAtTheirFullWidth) {
    constexpr std::int64_t size = (std::int64_t{1} << 43) + 1;
    const auto path = folder.file("large");
    ASSERT_EQ(truncate(path.c_str(), size), 0) << std::strerror(errno);
    const json object = reportOnOne(path);
    for (const std::string key : {"urlTotalSize", "urlDataSize", "filemanSize"}) {
        EXPECT_EQ(object["facts"][key].get<std::int64_t>(), size) << key;
        EXPECT_EQ(object[key], std::to_string(size)) << key;
    }
    if (geteuid() == 0) {
        constexpr std::uint32_t largest = 4'294'967'294;
        ASSERT_EQ(chown(path.c_str(), largest, largest), 0) << std::strerror(errno);
        const json owned = reportOnOne(path);
        EXPECT_EQ(owned["facts"]["ownerID"].get<std::uint64_t>(), largest);
        EXPECT_EQ(owned["facts"]["groupID"].get<std::uint64_t>(), largest);
        EXPECT_EQ(owned["ownerIDTextbox"], std::to_string(largest));
    }
}

TEST_F(JsonReports, haveDatesToTheNanosecond) {
    const auto path = folder.file("file");
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
        const timespec times[]{date, date};
        ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0) << std::strerror(errno);
        struct stat status{};
        ASSERT_EQ(stat(path.c_str(), &status), 0);
        if (status.st_mtim.tv_nsec != date.tv_nsec) {
            GTEST_SKIP() << folder.path() << " is on a file system without nanoseconds";
        }
        const json object = reportOnOne(path);
        const double seconds =
            static_cast<double>(date.tv_sec) - 978'307'200 + static_cast<double>(date.tv_nsec) / 1e9;
        EXPECT_EQ(object["facts"]["modified"]["date"], iso);
        EXPECT_NEAR(object["facts"]["modified"]["seconds"].get<double>(), seconds, 1e-6);
        EXPECT_EQ(object["modifiedTextbox"], text);
    }
}

TEST_F(JsonReports, sayWhenTheyWereGathered) {
    const auto secondsNow = [] {
        const auto now = std::chrono::system_clock::now().time_since_epoch();
        return std::chrono::duration<double>(now).count() - 978'307'200;
    };
    const double before = secondsNow();
    const json gathered = reportOnOne(folder.file("file"))["facts"]["gathered"];
    EXPECT_GE(gathered["seconds"].get<double>(), before - 0.001);
    EXPECT_LE(gathered["seconds"].get<double>(), secondsNow() + 0.001);
}

TEST_F(JsonReports, haveAttributesAsHexadecimal) {
    const auto path = folder.file("file");
    EXPECT_EQ(reportOnOne(path)["facts"]["extendedAttributes"], json::object());
    const std::string value("\0\x01\x7f\x80\xff\n", 6);
    if (!setExtendedAttribute(path, "user.bytes", value) || !setExtendedAttribute(path, "user.empty", "")) {
        GTEST_SKIP() << folder.path() << ": " << std::strerror(errno);
    }
    const json expected{{"user.bytes", "00017f80ff0a"}, {"user.empty", ""}};
    EXPECT_EQ(reportOnOne(path)["facts"]["extendedAttributes"], expected);
}

TEST_F(JsonReports, complaintsGoToStandardErrorAlone) {
    const auto file = folder.file("file");
    const auto outcome = run(tolvane({"report", "--json", file, folder.path("missing"), file}));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "tolvane-cli: " + folder.path("missing") + ": No such file or directory\n");
    const auto lines = linesOf(outcome.out);
    ASSERT_EQ(lines.size(), 2U) << outcome.out;
    for (const auto& line : lines) {
        EXPECT_EQ(json::parse(line, nullptr, false)["pathTextbox"], file);
    }
}

} // namespace
} // namespace tolvane::tests
