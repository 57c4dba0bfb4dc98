// The bookmarks in the reports, beyond what every comparison of reports looks at.
#include "platform/bookmark/format/BookmarkContents.h"
#include "platform/bookmark/format/BookmarkReader.h"
#include "platform/values/Base64.h"
#include "tests/oracle/Agreement.h"
#include "tests/oracle/Tolvane.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>
#include <unistd.h>

namespace tolvane::tests {
namespace {

std::string firstLineOf(const std::vector<std::string>& command) {
    const auto out = run({.command = command}).out;
    return out.substr(0, out.find('\n'));
}

platform::BookmarkContents bookmarkOf(const std::string& path) {
    const auto object = nlohmann::json::parse(printed({"report", "--json", "--", path}));
    const auto data = platform::base64DecodedData(object.value("bookmarkTextbox", ""));
    const auto structure = platform::readBookmark(data.value_or(platform::Data()));
    EXPECT_TRUE(structure) << object;
    return structure ? platform::bookmarkContents(*structure) : platform::BookmarkContents();
}

TEST(BookmarkReports, tellTheUUIDThatTheDiskHolds) {
    const auto disk = firstLineOf({"findmnt", "-no", "SOURCE", "/"});
    auto uuid = firstLineOf({"blkid", "-o", "value", "-s", "UUID", disk});
    constexpr std::size_t uuidLength = 36;
    if (uuid.size() != uuidLength) {
        GTEST_SKIP() << "the disk of / cannot be read here, or has no UUID";
    }
    std::ranges::transform(
        uuid, uuid.begin(), [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    EXPECT_EQ(bookmarkOf("/").volume.uuid, uuid);
}

TEST(BookmarkReports, agreeOnWhatLiesInTheHomeFolder) {
    const auto home = firstLineOf({"sh", "-c", "getent passwd \"$(id -u)\" | cut -d : -f 6"});
    std::error_code fault;
    std::vector<std::string> paths;
    constexpr std::size_t enough = 50;
    for (std::filesystem::directory_iterator entry(home, fault);
         !fault && entry != std::filesystem::directory_iterator() && paths.size() < enough;
         entry.increment(fault)) {
        paths.push_back(entry->path().string());
    }
    if (paths.empty()) {
        GTEST_SKIP() << "the user has no home folder, or nothing in it";
    }
    const Agreement agreement = expectAgreement(paths);
    EXPECT_EQ(agreement.compared + agreement.restless.size(), paths.size());
    EXPECT_GT(agreement.compared, 0U);
}

} // namespace
} // namespace tolvane::tests
