#include "tests/end_to_end/Corpus.h"
#include "tests/oracle/Agreement.h"
#include "tests/oracle/ReportText.h"
#include "tests/oracle/Tolvane.h"
#include "tests/support/Programs.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvane::tests {
namespace {

using Paths = std::vector<std::string>;

void expectAgreementOnAll(const Paths& paths) {
    ASSERT_FALSE(paths.empty());
    const Agreement agreement = expectAgreement(paths);
    EXPECT_EQ(agreement.compared, paths.size());
    EXPECT_EQ(agreement.restless, Paths{});
}

class ReportAgreement : public testing::Test {
protected:
    TemporaryFolder folder;
};

TEST_F(ReportAgreement, holdsForEveryKindOfItem) {
    expectAgreementOnAll(addKinds(folder));
}

TEST_F(ReportAgreement, holdsForPermissionsAndOwners) {
    expectAgreementOnAll(addPermissions(folder));
}

TEST_F(ReportAgreement, holdsForSizesAndLinkCounts) {
    expectAgreementOnAll(addContents(folder));
}

TEST_F(ReportAgreement, holdsForDatesFarAndNear) {
    expectAgreementOnAll(addDates(folder));
}

TEST_F(ReportAgreement, holdsForOddNames) {
    expectAgreementOnAll(addOddNames(folder));
}

TEST_F(ReportAgreement, holdsForAttributes) {
    const auto paths = addAttributes(folder, 1'100);
    if (paths.empty()) {
        GTEST_SKIP() << folder.path() << " is on a file system without attributes for users";
    }
    expectAgreementOnAll(paths);
}

TEST(ReportAgreementInSharedMemory, holdsForAttributesOf64KiB) {
    if (!std::filesystem::is_directory("/dev/shm")) {
        GTEST_SKIP() << "there is no /dev/shm";
    }
    const TemporaryFolder folder("/dev/shm");
    const auto paths = addAttributes(folder, 65'536);
    if (paths.empty()) {
        GTEST_SKIP() << "the file system at /dev/shm takes no attributes from users";
    }
    expectAgreementOnAll(paths);
}

// Root may read everything, so this compares as another user.
TEST_F(ReportAgreement, holdsForItemsThatMayNotBeRead) {
    constexpr std::uint32_t nobody = 65'534;
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can run the program as another user";
    }
    if (run(tolvane({"--version"}, {.folder = "/", .user = nobody})).status != 0) {
        GTEST_SKIP() << programPath("tolvane-cli") << " is out of reach of other users";
    }
    auto paths = addPermissions(folder);
    const auto more = addKinds(folder);
    paths.insert(paths.end(), more.begin(), more.end());
    paths.push_back(folder.folder("closed"));
    ASSERT_EQ(chmod(paths.back().c_str(), 0700), 0);
    EXPECT_EQ(expectAgreement(paths, nobody).compared, paths.size());
}

} // namespace
} // namespace tolvane::tests
