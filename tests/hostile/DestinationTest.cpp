// Reports saved where they cannot be written, or only in part, or over the inspected item itself.
#include "platform/posix/FileDescriptorStreams.h"
#include "tests/support/LinuxDetailsWindow.h"
#include "tests/support/Mounting.h"
#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Unprivileged.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace tolvane::tests {
namespace {

/// Runs the function in a child process, which it may change for good. False if an expectation failed there.
bool holdsInChild(
    const std::function<void()>& function,
    int (*answerOf)(const std::function<int()>& function) = answerOfChild) {
    return answerOf([&] {
               function();
               return testing::Test::HasFailure() ? 1 : 0;
           })
           == 0;
}

/// Makes all further calls of this number fail in this process.
bool refuseCall(long number, int error) {
    std::array<sock_filter, 4> program{{
        {BPF_LD | BPF_W | BPF_ABS, 0, 0, offsetof(seccomp_data, nr)},
        {BPF_JMP | BPF_JEQ | BPF_K, 0, 1, static_cast<std::uint32_t>(number)},
        {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ERRNO | static_cast<std::uint32_t>(error)},
        {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW},
    }};
    const sock_fprog filter{program.size(), program.data()};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0
           && syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, 0, &filter) == 0;
}

class Destination : public testing::Test {
protected:
    void SetUp() override {
        // Each byte is shown as two digits, so reports are longer than a page if the file system takes this
        // value.
        isLong = setExtendedAttribute(item, "user.large", std::string(page * 3 / 4, 'v'));
    }

    /// Expects that saving there adds this message to the attributes.
    static void expectMessage(
        LinuxDetailsWindow& window, const std::string& path, const std::string& message) {
        const std::string before = window.attributesText();
        window.save(path);
        EXPECT_EQ(window.attributesText(), before + message) << path;
    }

    /// Expects that each saving there adds this message to the attributes, and that it is in the next report.
    void expectFailure(const std::string& path, const std::string& message) const {
        SCOPED_TRACE(path);
        LinuxDetailsWindow window(item);
        const std::string before = window.attributesText();
        expectMessage(window, path, message);
        expectMessage(window, path, message);
        EXPECT_TRUE(window.report().contains("Extended attributes: " + before + message + "\non "))
            << window.report();
    }

    /// Gives the function a memory file system of its own, mounted with these options.
    void withSmallDisk(
        const std::string& options, const std::function<void(const std::string& disk)>& function) {
        const auto disk = folder.folder("small");
        expectWithMounts([&] {
            const bool isMounted = mountMemory(disk, "none", options.c_str());
            if (isMounted) {
                function(disk);
            }
            return isMounted;
        });
    }

    /// Saves to a disk where one page is left, which holds the beginning of the report then.
    void expectPageOfReport(LinuxDetailsWindow& window, const std::string& path) const {
        expectMessage(window, path, "No space left on device");
        EXPECT_GT(window.report().size(), page);
        EXPECT_EQ(contentsOfFile(path), window.report().substr(0, page));
    }

    TemporaryFolder folder;
    std::string item = folder.file("item", "words");
    std::size_t page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE)); ///< What such disks are filled by.
    bool isLong = false;
};

TEST_F(Destination, thatCannotBeOpenedIsReported) {
    folder.file("file");
    expectFailure(folder.folder("folder"), "Is a directory");
    expectFailure(folder.path("vanished/report.text"), "No such file or directory");
    expectFailure(folder.path("file/report.text"), "Not a directory");
    expectFailure(folder.symlink("loop", "loop"), "Too many levels of symbolic links");
    expectFailure(folder.symlink("astray", "vanished/report.text"), "No such file or directory");
    expectFailure(folder.fifo("fifo"), "No program is reading from this FIFO");
    expectFailure(folder.socket("socket"), "No such device or address");
    expectFailure(folder.path(std::string(256, 'n')), "File name too long");
    expectFailure(folder.path(std::string(5'000, '/') + "report.text"), "File name too long");
}

TEST_F(Destination, canBeALinkToAMissingFile) {
    LinuxDetailsWindow window(item);
    window.save(folder.symlink("link", "target.text"));
    EXPECT_EQ(contentsOfFile(folder.path("target.text")), window.report());
    EXPECT_TRUE(S_ISLNK(statusOf(folder.path("link")).st_mode));
}

TEST_F(Destination, thatVanishedBetweenTwoSavesIsMadeAnewOrReported) {
    LinuxDetailsWindow window(item);
    const auto destination = folder.folder("reports") + "/report.text";
    window.save(destination);
    ASSERT_EQ(unlink(destination.c_str()), 0);
    window.save(destination);
    EXPECT_EQ(contentsOfFile(destination), window.report());
    std::filesystem::remove_all(folder.path("reports"));
    expectMessage(window, destination, "No such file or directory");
}

TEST_F(Destination, thatIsAProgramAtWorkIsLeftAlone) {
    const auto program = std::filesystem::canonical(folder.path()).string() + "/sleep";
    std::filesystem::copy_file("/bin/sleep", program);
    Process process({.command = {program, "1000"}});
    while (std::filesystem::read_symlink("/proc/" + std::to_string(process.id()) + "/exe") != program) {
        usleep(1'000);
    }
    expectFailure(program, "Text file busy");
    EXPECT_EQ(contentsOfFile(program), contentsOfFile("/bin/sleep"));
}

TEST_F(Destination, thatIsDeniedIsLeftAlone) {
    const auto closed = folder.folder("closed");
    const auto unsearchable = folder.folder("unsearchable");
    const auto foreign = folder.file("foreign", "before");
    ASSERT_EQ(chmod(closed.c_str(), 0555), 0);
    ASSERT_EQ(chmod(unsearchable.c_str(), 0600), 0);
    ASSERT_EQ(chmod(foreign.c_str(), 0444), 0);
    EXPECT_TRUE(holdsInChild(
        [&] {
            for (const auto& path : {closed + "/report.text", unsearchable + "/report.text", foreign}) {
                expectFailure(path, "Permission denied");
            }
        },
        answerOfUnprivilegedChild));
    EXPECT_EQ(contentsOfFile(foreign), "before");
}

// Some systems protect files of others in such folders even if their modes let everyone write.
TEST_F(Destination, thatLiesInAForeignStickyFolderIsWrittenOrReported) {
    const auto sticky = folder.folder("sticky");
    const auto foreign = folder.file("sticky/foreign", "before");
    ASSERT_EQ(chmod(foreign.c_str(), 0666), 0);
    ASSERT_EQ(chmod(sticky.c_str(), 01777), 0);
    EXPECT_TRUE(holdsInChild(
        [&] {
            LinuxDetailsWindow window(item);
            const auto before = window.attributesText();
            window.save(foreign);
            const bool isWritten = window.attributesText() == before;
            EXPECT_EQ(contentsOfFile(foreign), isWritten ? window.report() : "before");
            EXPECT_EQ(window.attributesText(), before + (isWritten ? "" : "Permission denied"));
        },
        answerOfUnprivilegedChild));
}

TEST_F(Destination, onADiskThatFillsUpHoldsWhatFitted) {
    if (!isLong) {
        GTEST_SKIP() << item << " takes no long attribute";
    }
    withSmallDisk("size=" + std::to_string(page), [this](const std::string& disk) {
        LinuxDetailsWindow window(item);
        expectPageOfReport(window, disk + "/report.text");
        // There is room elsewhere, and the report contains the failure.
        window.save(folder.path("elsewhere.text"));
        EXPECT_TRUE(
            contentsOfFile(folder.path("elsewhere.text")).contains("}\nNo space left on device\non "));
    });
}

TEST_F(Destination, onAFullDiskLosesWhatItHeld) {
    if (!isLong) {
        GTEST_SKIP() << item << " takes no long attribute";
    }
    withSmallDisk("size=" + std::to_string(2 * page), [this](const std::string& disk) {
        std::ofstream(disk + "/report.text") << "before";
        std::ofstream(disk + "/filling") << std::string(page, 'f');
        // Emptied, the file frees its page, the only one for the report.
        LinuxDetailsWindow window(item);
        expectPageOfReport(window, disk + "/report.text");
    });
}

TEST_F(Destination, onADiskWithoutRoomForOneMoreFileIsReported) {
    withSmallDisk("nr_inodes=1", [this](const std::string& disk) {
        expectFailure(disk + "/report.text", "No space left on device");
    });
}

TEST_F(Destination, onAReadOnlyMountIsReported) {
    withSmallDisk("size=1m", [this](const std::string& disk) {
        std::ofstream(disk + "/report.text") << "before";
        ASSERT_EQ(mount("none", disk.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr), 0)
            << std::strerror(errno);
        expectFailure(disk + "/report.text", "Read-only file system");
        expectFailure(disk + "/new.text", "Read-only file system");
        EXPECT_EQ(contentsOfFile(disk + "/report.text"), "before");
    });
}

// As disks, quotas and servers fail during writing, or only at its end.
TEST_F(Destination, thatFailsDuringWritingIsReported) {
    if (answerOfChild([] { return refuseCall(SYS_getppid, EIO) ? 0 : 1; }) != 0) {
        GTEST_SKIP() << "calls cannot be made to fail here";
    }
    for (const long call : {SYS_write, SYS_close}) {
        for (const int error : {EIO, ENOSPC, EDQUOT, EFBIG, EROFS, ENOMEM, ESTALE}) {
            SCOPED_TRACE(std::to_string(call) + " " + std::strerror(error));
            const auto destination = folder.path("report.text");
            EXPECT_TRUE(holdsInChild([&] {
                LinuxDetailsWindow window(item);
                // A sanitizer makes such calls itself when it meets a type for the first time.
                window.save(folder.path("first report.text"));
                ASSERT_TRUE(refuseCall(call, error));
                expectMessage(window, destination, std::strerror(error));
            }));
            EXPECT_EQ(contentsOfFile(destination).empty(), call == SYS_write) << "nothing is cleaned up";
        }
    }
}

TEST_F(Destination, pastTheLimitForAFilesSizeHoldsWhatFitted) {
    const auto destination = folder.path("report.text");
    EXPECT_TRUE(holdsInChild([&] {
        platform::makeWriteFailuresErrors();
        LinuxDetailsWindow window(item);
        const rlimit limit{100, 100};
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
        expectMessage(window, destination, "File too large");
        EXPECT_EQ(contentsOfFile(destination), window.report().substr(0, 100));
    }));
}

// The panel has asked whether it may be replaced. What was shown before is written to the same file, which
// keeps its owner and attributes.
TEST_F(Destination, canBeTheInspectedItem) {
    if (geteuid() == 0) {
        ASSERT_EQ(chown(item.c_str(), 12, 34), 0);
    }
    const struct stat before = statusOf(item);
    LinuxDetailsWindow window(item);
    const auto shown = window.attributesText();
    window.save(item);
    EXPECT_EQ(window.attributesText(), shown);
    EXPECT_EQ(contentsOfFile(item), window.report());
    EXPECT_TRUE(window.report().contains("\n     File system: data 5 metadata ")) << "as it was gathered";
    const struct stat after = statusOf(item);
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
    EXPECT_EQ(LinuxDetailsWindow(item).attributesText(), shown) << "the attributes stayed";
}

} // namespace
} // namespace tolvane::tests
