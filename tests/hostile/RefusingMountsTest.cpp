// File systems that keep no extended attributes, refuse them, or are not on disks.
#include "tests/hostile/LostFacts.h"
#include "tests/hostile/ReportSteps.h"
#include "tests/oracle/Agreement.h"
#include "tests/support/Mounting.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <ostream>
#include <string>
#include <system_error>
#include <vector>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvane::tests {
namespace {

using RefusingMounts = GatedReport;

// As on some network volumes.
TEST_F(RefusingMounts, costTheAttributesAndTheDictionary) {
    Fields undisturbed = reportThrough([](const PendingCall&) { return 0; });
    EXPECT_EQ(undisturbed.at("filemanSize"), "5");
    undisturbed.erase("date");
    for (const int error : {ENOTSUP, ENOSYS, EPERM, E2BIG}) {
        SCOPED_TRACE(std::strerror(error));
        expectFields(
            reportThrough(
                [error](const PendingCall& call) { return call.name.ends_with("xattr") ? error : 0; }),
            withoutAttributeSizes(undisturbed));
    }
}

struct Kind {
    const char* type;
    const char* options;
    bool takesFiles;
    /// The part that does not change: the root of some counts processes.
    const char* part = "";

    friend std::ostream& operator<<(std::ostream& stream, const Kind& kind) { return stream << kind.type; }
};

class MountsOfAnyKind : public testing::TestWithParam<Kind> {
protected:
    /// Runs the function with such a file system mounted at `place`, and filled if it takes files.
    void withMount(const std::function<void()>& function) const {
        const std::string layers = folder.folder("layers");
        expectWithMounts([&] {
            std::string options = GetParam().options;
            if (std::string(GetParam().type) == "overlay") {
                if (!makeLayers(layers)) {
                    return false;
                }
                options =
                    "lowerdir=" + layers + "/lower,upperdir=" + layers + "/upper,workdir=" + layers + "/work";
            }
            if (mount("none", place.c_str(), GetParam().type, 0, options.c_str()) != 0) {
                return false;
            }
            if (GetParam().takesFiles) {
                fill();
            }
            function();
            return true;
        });
    }

    /// In memory, since the layers of an overlay may not be an overlay themselves.
    static bool makeLayers(const std::string& layers) {
        if (!mountMemory(layers)) {
            return false;
        }
        for (const char* layer : {"lower", "upper", "work"}) {
            std::filesystem::create_directory(layers + "/" + layer);
        }
        std::ofstream(layers + "/lower/from below") << "words";
        return true;
    }

    /// Some of everything, where the file system takes it.
    void fill() const {
        std::error_code ignored;
        std::ofstream(place + "/file") << "words";
        std::filesystem::create_directory(place + "/folder", ignored);
        std::filesystem::create_symlink("file", place + "/link", ignored);
        std::filesystem::create_symlink("nowhere", place + "/dangling", ignored);
        std::filesystem::create_hard_link(place + "/file", place + "/hard link", ignored);
        static_cast<void>(mkfifo((place + "/fifo").c_str(), 0600));
        static_cast<void>(setExtendedAttribute(place + "/file", "user.note", "hello"));
    }

    /// A folder, and what a walk from it meets first.
    std::vector<std::string> items() const {
        const std::string root = place + GetParam().part;
        std::vector<std::string> paths = itemsBelow(root, 60);
        paths.push_back(root);
        return paths;
    }

    TemporaryFolder folder;
    std::string place = std::filesystem::canonical(folder.folder("place")).string();
};

TEST_P(MountsOfAnyKind, areReportedAsOtherProgramsSeeThemAlsoWhenNothingCanBeWritten) {
    withMount([this] {
        const auto paths = items();
        EXPECT_GT(paths.size(), GetParam().takesFiles ? 4U : 0U);
        const Agreement agreement = expectAgreement(paths);
        EXPECT_GT(agreement.compared, 0U);
        // What the kernel makes on demand may differ each time.
        EXPECT_LE(agreement.restless.size() * 2, paths.size());
        SCOPED_TRACE("read-only");
        ASSERT_EQ(mount("none", place.c_str(), nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr), 0)
            << std::strerror(errno);
        EXPECT_NE(access(place.c_str(), W_OK), 0);
        EXPECT_GT(expectAgreement(items()).compared, 0U);
    });
}

INSTANTIATE_TEST_SUITE_P(
    Of,
    MountsOfAnyKind,
    testing::Values(
        Kind{"ramfs", "", true},
        Kind{"tmpfs", "size=1m", true},
        Kind{"overlay", "", true},
        Kind{"proc", "", false, "/sys/fs"},
        Kind{"sysfs", "", false},
        Kind{"cgroup2", "", false},
        Kind{"devpts", "newinstance", false},
        Kind{"mqueue", "", false},
        Kind{"hugetlbfs", "", false},
        Kind{"debugfs", "", false},
        Kind{"tracefs", "", false},
        Kind{"bpf", "", false}),
    [](const testing::TestParamInfo<Kind>& kind) { return std::string(kind.param.type); });

} // namespace
} // namespace tolvane::tests
