#include "tests/end_to_end/Corpus.h"
#include "tests/oracle/Agreement.h"
#include "tests/oracle/Tolvane.h"
#include "tests/support/Programs.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvane::tests {
namespace {

using Paths = std::vector<std::string>;

constexpr std::uint32_t nobody = 65'534;

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
    std::error_code failure;
    if (!std::filesystem::is_directory("/dev/shm", failure)) {
        GTEST_SKIP() << "there is no /dev/shm";
    }
    const TemporaryFolder folder("/dev/shm");
    const auto paths = addAttributes(folder, 65'536);
    if (paths.empty()) {
        GTEST_SKIP() << "the file system at /dev/shm takes no attributes from users";
    }
    expectAgreementOnAll(paths);
}

// Root's access is never refused, so these run as somebody else: nobody where the tests run as root.
class ReportAgreementForOthers : public ReportAgreement {
protected:
    // The others have to be able to run the program, wherever it was built.
    void SetUp() override {
        if (geteuid() != 0) {
            GTEST_SKIP() << "running as another user takes root";
        }
        if (const auto outcome = runAsNobody({"--version"}); outcome.status != 0) {
            GTEST_SKIP() << programPath("tolvane-cli") << " is out of reach of other users";
        }
    }

    static ProcessOutcome runAsNobody(const Paths& arguments) {
        auto setup = tolvane(arguments);
        setup.user = nobody;
        setup.folder = "/";
        return run(setup);
    }
};

TEST_F(ReportAgreementForOthers, holdsForFilesThatMayNotBeRead) {
    auto paths = addPermissions(folder);
    const auto more = addKinds(folder);
    paths.insert(paths.end(), more.begin(), more.end());
    const Agreement agreement = expectAgreement(paths, nobody);
    EXPECT_EQ(agreement.compared, paths.size());
}

TEST_F(ReportAgreementForOthers, holdsForAttributesThatMayNotBeRead) {
    const auto file = folder.file("secret", "12345");
    if (!setExtendedAttribute(file, "user.secret", "value")) {
        GTEST_SKIP() << folder.path() << ": " << std::strerror(errno);
    }
    ASSERT_EQ(chmod(file.c_str(), 0600), 0);
    const auto outcome = runAsNobody({"report", "--", file});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_TRUE(outcome.out.contains("URL Keys: data 5 metadata 0 total 5\n")) << outcome.out;
    EXPECT_TRUE(outcome.out.contains("Posix permissions (octal): \n")) << outcome.out;
    EXPECT_EQ(expectAgreement({file}, nobody).compared, 1U);
}

TEST_F(ReportAgreementForOthers, itemsInClosedFoldersAreComplainedOf) {
    const auto closed = folder.folder("closed");
    const auto inside = folder.file("closed/inside");
    const auto open = folder.file("open");
    ASSERT_EQ(chmod(closed.c_str(), 0700), 0);
    const auto outcome = runAsNobody({"report", "--", inside, open});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "tolvane-cli: " + inside + ": Permission denied\n");
    EXPECT_TRUE(outcome.out.starts_with("Details for file open\n")) << outcome.out;
    EXPECT_EQ(expectAgreement({closed}, nobody).compared, 1U);
}

TEST_F(ReportAgreement, aLinkThatLeadsNowhereShowsItselfAndNoMore) {
    const Paths links{folder.symlink("dangling", "missing"), folder.symlink("looping", "looping")};
    for (const auto& link : links) {
        const auto outcome = run(tolvane({"report", link}));
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        const std::string middle = "\nSizes:\n     URL Keys: data 7 metadata 0 total 7\n"
                                   "     File system: data 0 metadata 0 total 0\n"
                                   "Posix permissions (octal): \nOwner:  ID \nGroup:  ID \n"
                                   "Created:  last modified \nType:  reference count: \n\n"
                                   "Bookmark (Base-64):\nYm9va";
        EXPECT_TRUE(outcome.out.contains("\nvolfs path: \nFileReferenceURL: file:///.file/id="))
            << outcome.out;
        EXPECT_TRUE(outcome.out.contains(middle)) << outcome.out;
        const std::string end = "\n\nBookmark path: " + std::filesystem::canonical(folder.path()).string()
                                + link.substr(link.rfind('/')) + "\n\nExtended attributes: \non ";
        EXPECT_TRUE(outcome.out.contains(end)) << outcome.out;
    }
}

// The names of some attributes are no text. What they hold is shown, but is not part of the sum.
TEST_F(ReportAgreement, attributesWithUnreadableNamesAreShownAndNotCounted) {
    const auto file = folder.file("file");
    if (!setExtendedAttribute(file, "user.\xff", "12345") || !setExtendedAttribute(file, "user.a", "12")) {
        GTEST_SKIP() << folder.path() << ": " << std::strerror(errno);
    }
    const auto outcome = run(tolvane({"report", file}));
    EXPECT_TRUE(outcome.out.contains("File system: data 0 metadata 2 total 2\n")) << outcome.out;
    EXPECT_TRUE(outcome.out.contains("Extended attributes: NSFileExtendedAttributes : {\n"
                                     "    \"user.a\" = <3132>;\n"
                                     "    \"user.\\Ufffd\" = <31323334 35>;\n}\n\non "))
        << outcome.out;
}

} // namespace
} // namespace tolvane::tests
