// Permissions that are missing somewhere on the way to an item, or at the item itself.
#include "tests/hostile/LostFacts.h"
#include "tests/oracle/Tolvane.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvane::tests {
namespace {

constexpr std::uint32_t nobody = 65'534;

class Denied : public testing::Test {
protected:
    static void setMode(const std::string& path, mode_t mode) {
        EXPECT_EQ(chmod(path.c_str(), mode), 0) << path << ": " << std::strerror(errno);
    }

    /// Runs the program as a user bound by permissions.
    static ProcessOutcome runBound(std::vector<std::string> arguments) {
        auto setup = tolvane(std::move(arguments));
        if (geteuid() == 0) {
            setup.user = nobody;
        }
        return run(setup);
    }

    static Fields reportOn(const std::string& path) {
        const auto outcome = runBound({"report", path});
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        return reportIn(outcome.out, path);
    }

    /// Measuring ended at the attributes, and nothing else differs but the date.
    static void expectHiddenAttributes(const Fields& fields, const Fields& readable) {
        Fields expected = withoutAttributeSizes(readable);
        expected["date"] = fields.at("date");
        EXPECT_EQ(fields, expected);
    }

    TemporaryFolder folder;
    std::string home = std::filesystem::canonical(folder.path()).string();
    std::string near = std::filesystem::canonical(folder.file("near", "words")).string();
};

TEST_F(Denied, atEachFolderOnTheWayIsComplainedOf) {
    const std::vector<std::string> ancestors{home + "/a", home + "/a/b", home + "/a/b/c", home + "/a/b/c/d"};
    for (const auto& ancestor : ancestors) {
        setMode(folder.folder(ancestor.substr(home.size() + 1)), 0755);
    }
    const std::string item = folder.file("a/b/c/d/item", "words");
    const auto made = runBound({"bookmark", "make", home + "/a/b/c/d/item"});
    ASSERT_EQ(made.status, 0) << made.err;
    for (const auto& ancestor : ancestors) {
        SCOPED_TRACE(ancestor);
        setMode(ancestor, 0644);
        const auto outcome = runBound({"report", item, near});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.err, "tolvane-cli: " + item + ": Permission denied\n");
        reportIn(outcome.out, near);
        expectComplaint(
            runBound({"bookmark", "make", item}),
            item + ": A folder on the way to the item may not be searched.");
        const auto resolved = runBound({"bookmark", "resolve", made.out});
        EXPECT_TRUE(isComplaint(resolved)) << resolved.out << resolved.err;
        EXPECT_EQ(reportOn(ancestor).at("permsTextbox"), "644");
        setMode(ancestor, 0755);
    }
    EXPECT_EQ(runBound({"report", item}).status, 0);
}

// The names can be listed, but the values not be measured, which ends the measuring.
TEST_F(Denied, toReadHidesWhatTheAttributesStandBefore) {
    const std::string file = folder.file("file", "words");
    if (!setExtendedAttribute(file, "user.note", "hello")) {
        GTEST_SKIP() << file << ": " << std::strerror(errno);
    }
    const Fields readable = reportOn(file);
    EXPECT_EQ(readable.at("xattrSize"), "5");
    setMode(file, 0000);
    expectHiddenAttributes(reportOn(file), readable);
}

// The permissions on the way to a link's target hide the target's attributes, which ends the measuring; the
// file manager is then not asked about the link either. Its sizes and its bookmark stay.
TEST_F(Denied, behindALinkHidesWhatTheTargetsAttributesStandBefore) {
    const std::string closed = folder.folder("closed");
    folder.file("closed/target", "words");
    const std::string link = folder.symlink("link", closed + "/target");
    const Fields readable = reportOn(link);
    EXPECT_EQ(readable.at("typeTextbox"), "NSFileTypeSymbolicLink: public.symlink");
    setMode(closed, 0000);
    const Fields fields = reportOn(link);
    expectHiddenAttributes(fields, readable);
    EXPECT_EQ(fields.at("bookmarkPathTextbox"), home + "/link");
    setMode(closed, 0755);
}

} // namespace
} // namespace tolvane::tests
