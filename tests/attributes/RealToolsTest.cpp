// Attributes that other programs write, compared with what they print of them.
#include "tests/attributes/Explaining.h"
#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace tolvane::tests {
namespace {

class RealTools : public testing::Test {
protected:
    static bool needs(const std::vector<std::string>& programs) {
        return geteuid() == 0 && std::ranges::all_of(programs, [](const std::string& program) {
                   return isInstalled(program);
               });
    }

    /// What the program prints; it has to succeed.
    static std::string outputOf(const std::vector<std::string>& command) {
        const ProcessOutcome outcome = run({.command = command});
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        return outcome.out;
    }

    static std::string valueOf(const std::string& path, const char* name) {
        std::string value(65'536, '\0');
        const ssize_t length = getxattr(path.c_str(), name, value.data(), value.size());
        EXPECT_GE(length, 0) << path << " has no " << name;
        value.resize(length < 0 ? 0 : static_cast<std::size_t>(length));
        return value;
    }

    TemporaryFolder folder;
};

TEST_F(RealTools, writeCapabilitiesThatGetcapPrintsAsWeDo) {
    if (!needs({"setcap", "getcap"})) {
        GTEST_SKIP() << "needs root, setcap and getcap";
    }
    const std::string path = folder.file("program");
    for (const std::string text :
         {"cap_net_raw+ep", "cap_net_raw,cap_syslog+ep", "cap_net_raw+p", "cap_net_raw+ep cap_syslog+ei",
          "cap_chown+ip cap_syslog+p cap_kill+i", "=ep", "=p", "=ep cap_chown-ep",
          "cap_checkpoint_restore=ep"}) {
        outputOf({"setcap", text, path});
        EXPECT_EQ(
            path + " "
                + explained("security.capability", valueOf(path, "security.capability")).fields.at(0).text
                + "\n",
            outputOf({"getcap", path}));
    }
}

/// The lines of getfacl, but for those of a default list, with effective rights as we write them.
std::vector<std::string> accessLinesOf(const std::string& printed, bool isDefault) {
    std::vector<std::string> lines;
    for (std::string line : linesOf(printed)) {
        const std::string prefix = "default:";
        if (line.empty() || line.starts_with(prefix) != isDefault) {
            continue;
        }
        line.erase(0, isDefault ? prefix.size() : 0);
        if (const std::size_t tab = line.find('\t'); tab != std::string::npos) {
            line = line.substr(0, tab) + " (effective: " + line.substr(line.rfind(':') + 1) + ")";
        }
        lines.push_back("Entry: " + line);
    }
    return lines;
}

TEST_F(RealTools, writeAccessControlListsThatGetfaclPrintsAsWeDo) {
    if (!needs({"setfacl", "getfacl"})) {
        GTEST_SKIP() << "needs root, setfacl and getfacl";
    }
    const std::string path = folder.file("item");
    const std::vector<std::string> print{"getfacl", "--omit-header", "--absolute-names", "--numeric", path};
    for (const std::string text : {"u:1:rw,g:2:rx,m::r", "u:7:rwx", "g:4000000000:w", "u:1:-,m::-"}) {
        outputOf({"setfacl", "--set", "u::rwx,g::rx,o::r," + text, path});
        EXPECT_EQ(
            explainedLines("system.posix_acl_access", valueOf(path, "system.posix_acl_access")),
            accessLinesOf(outputOf(print), false));
    }
}

TEST_F(RealTools, writeListsForNewItemsThatGetfaclPrintsAsWeDo) {
    if (!needs({"setfacl", "getfacl"})) {
        GTEST_SKIP() << "needs root, setfacl and getfacl";
    }
    outputOf({"setfacl", "-d", "-m", "u:7:rw,g:8:r,m::r", folder.path()});
    EXPECT_EQ(
        explainedLines("system.posix_acl_default", valueOf(folder.path(), "system.posix_acl_default")),
        accessLinesOf(
            outputOf({"getfacl", "--omit-header", "--absolute-names", "--numeric", folder.path()}), true));
}

TEST_F(RealTools, keepOwnerAndModeInABackup) {
    if (!needs({"rsync"})) {
        GTEST_SKIP() << "needs root and rsync";
    }
    const std::string path = folder.file("original");
    ASSERT_EQ(chown(path.c_str(), 1234, 5678), 0);
    ASSERT_EQ(chmod(path.c_str(), 04750), 0);
    outputOf({"rsync", "-a", "-M--fake-super", path, folder.path() + "/copy"});
    EXPECT_THAT(
        explainedLines("user.rsync.%stat", valueOf(folder.path() + "/copy", "user.rsync.%stat")),
        testing::ElementsAre(
            "Kind: regular file", "Permissions: rwsr-x--- (4750)", "Owner: 1234", "Group: 5678"));
}

} // namespace
} // namespace tolvane::tests
