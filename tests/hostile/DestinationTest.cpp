// Reports saved to where nothing can be written, or only a part, or the inspected item itself.
#include "platform/linux/session/LinuxStreams.h"
#include "tests/hostile/LinuxDetailsWindow.h"
#include "tests/support/MountNamespace.h"
#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Unprivileged.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tolvane::tests {
namespace {

struct stat statusOf(const std::string& path) {
    struct stat status{};
    EXPECT_EQ(lstat(path.c_str(), &status), 0) << path << ": " << std::strerror(errno);
    return status;
}

/// Runs the function in a child process, so that what it does to itself ends with it. True when it got to its
/// end and no expectation failed.
bool holdsInChild(const std::function<void()>& function) {
    const pid_t child = fork();
    if (child == 0) {
        function();
        _exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    while (child > 0 && waitpid(child, &status, 0) < 0 && errno == EINTR) {}
    return child > 0 && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// From here on this call of the process fails with this error, which needs no rights and cannot be undone.
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

/// Waits until the system has taken the new program for the process, which it runs from then on. False when a
/// minute has passed.
bool comesToRun(pid_t process, const std::string& program) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    std::error_code error;
    while (std::filesystem::read_symlink("/proc/" + std::to_string(process) + "/exe", error) != program) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        usleep(1'000);
    }
    return true;
}

class Destination : public testing::Test {
protected:
    void SetUp() override {
        // Each byte is shown as two digits, so reports are then longer than a page, if the system's pages are
        // small enough for the file system to take that many bytes.
        isLong = setExtendedAttribute(item, "user.large", std::string(page * 3 / 4, 'v'));
    }

    /// Expects that saving there says this at the end of the attributes, each time, and that the message goes
    /// into the next report.
    void expectFailure(const std::string& path, const std::string& message) const {
        SCOPED_TRACE(path);
        LinuxDetailsWindow window(item);
        const std::string before = window.attributesText();
        window.save(path);
        EXPECT_EQ(window.attributesText(), before + message);
        window.save(path);
        EXPECT_EQ(window.attributesText(), before + message + message);
        EXPECT_TRUE(window.report().contains("Extended attributes: " + before + message + "\non "))
            << window.report();
    }

    /// Gives the function a memory file system of its own, mounted with these options.
    void withSmallDisk(
        const std::string& options, const std::function<void(const std::string& disk)>& function) {
        const auto disk = folder.folder("small");
        const int answer = answerInMountNamespace([&] {
            if (mount("none", disk.c_str(), "tmpfs", 0, options.c_str()) != 0) {
                return noMounting;
            }
            function(disk);
            return testing::Test::HasFailure() ? 1 : 0;
        });
        if (answer == noMounting) {
            GTEST_SKIP() << "nothing can be mounted here";
        }
        EXPECT_EQ(answer, 0);
    }

    TemporaryFolder folder;
    std::string item = folder.file("item", "words");
    std::size_t page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE)); ///< What such disks are filled by.
    bool isLong = false;
};

TEST_F(Destination, thatCannotBeOpenedIsTold) {
    static_cast<void>(folder.file("file"));
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

TEST_F(Destination, canBeALinkToWhatIsNotThereYet) {
    LinuxDetailsWindow window(item);
    window.save(folder.symlink("link", "target.text"));
    EXPECT_EQ(contentsOfFile(folder.path("target.text")), window.report());
    EXPECT_TRUE(S_ISLNK(statusOf(folder.path("link")).st_mode));
}

TEST_F(Destination, thatVanishedBetweenTwoSavesIsMadeAnewOrTold) {
    LinuxDetailsWindow window(item);
    const auto destination = folder.folder("reports") + "/report.text";
    window.save(destination);
    ASSERT_EQ(unlink(destination.c_str()), 0);
    window.save(destination);
    EXPECT_EQ(contentsOfFile(destination), window.report());
    std::filesystem::remove_all(folder.path("reports"));
    const auto before = window.attributesText();
    window.save(destination);
    EXPECT_EQ(window.attributesText(), before + "No such file or directory");
}

TEST_F(Destination, thatIsAProgramAtWorkIsLeftAlone) {
    const auto program = std::filesystem::canonical(folder.path()).string() + "/sleep";
    std::filesystem::copy_file("/bin/sleep", program);
    ProcessSetup setup;
    setup.command = {program, "1000"};
    Process process(setup);
    ASSERT_TRUE(comesToRun(process.id(), program));
    expectFailure(program, "Text file busy");
    EXPECT_EQ(contentsOfFile(program), contentsOfFile("/bin/sleep"));
    kill(process.id(), SIGKILL);
}

TEST_F(Destination, thatIsDeniedIsLeftAlone) {
    ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
    const auto closed = folder.folder("closed");
    const auto unsearchable = folder.folder("unsearchable");
    const auto foreign = folder.file("foreign", "before");
    ASSERT_EQ(chmod(closed.c_str(), 0555), 0);
    ASSERT_EQ(chmod(unsearchable.c_str(), 0600), 0);
    ASSERT_EQ(chmod(foreign.c_str(), 0444), 0);
    const int answer = answerOfUnprivilegedChild([&] {
        for (const auto& path : {closed + "/report.text", unsearchable + "/report.text", foreign}) {
            expectFailure(path, "Permission denied");
        }
        return HasFailure() ? 1 : 0;
    });
    EXPECT_EQ(answer, 0);
    EXPECT_EQ(contentsOfFile(foreign), "before");
}

// Systems protect files of others in such folders even where their modes let everybody write; those that do
// not, let the report be written. Either is told as it is.
TEST_F(Destination, thatLiesInAForeignStickyFolderIsWrittenOrTold) {
    ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
    const auto sticky = folder.folder("sticky");
    const auto foreign = folder.file("sticky/foreign", "before");
    ASSERT_EQ(chmod(foreign.c_str(), 0666), 0);
    ASSERT_EQ(chmod(sticky.c_str(), 01777), 0);
    const int answer = answerOfUnprivilegedChild([&] {
        LinuxDetailsWindow window(item);
        const auto before = window.attributesText();
        window.save(foreign);
        const bool isWritten = window.attributesText() == before;
        EXPECT_EQ(contentsOfFile(foreign), isWritten ? window.report() : "before");
        EXPECT_EQ(window.attributesText(), before + (isWritten ? "" : "Permission denied"));
        return HasFailure() ? 1 : 0;
    });
    EXPECT_EQ(answer, 0);
}

TEST_F(Destination, onADiskThatFillsUpHoldsWhatFitted) {
    if (!isLong) {
        GTEST_SKIP() << item << " takes no long attribute";
    }
    withSmallDisk("size=" + std::to_string(page), [this](const std::string& disk) {
        LinuxDetailsWindow window(item);
        const auto before = window.attributesText();
        window.save(disk + "/report.text");
        EXPECT_EQ(window.attributesText(), before + "No space left on device");
        EXPECT_GT(window.report().size(), page);
        EXPECT_EQ(contentsOfFile(disk + "/report.text"), window.report().substr(0, page));
        // There is room elsewhere, and the report tells of the failure.
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
        // Emptied, the file gives one page back, which is all that there is for the report.
        LinuxDetailsWindow window(item);
        const auto before = window.attributesText();
        window.save(disk + "/report.text");
        EXPECT_EQ(window.attributesText(), before + "No space left on device");
        EXPECT_GT(window.report().size(), page);
        EXPECT_EQ(contentsOfFile(disk + "/report.text"), window.report().substr(0, page));
    });
}

TEST_F(Destination, onADiskWithoutRoomForOneMoreFileIsTold) {
    withSmallDisk("nr_inodes=1", [this](const std::string& disk) {
        expectFailure(disk + "/report.text", "No space left on device");
    });
}

TEST_F(Destination, onAReadOnlyMountIsTold) {
    withSmallDisk("size=1m", [this](const std::string& disk) {
        std::ofstream(disk + "/report.text") << "before";
        ASSERT_EQ(mount("none", disk.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr), 0)
            << std::strerror(errno);
        expectFailure(disk + "/report.text", "Read-only file system");
        expectFailure(disk + "/new.text", "Read-only file system");
        EXPECT_EQ(contentsOfFile(disk + "/report.text"), "before");
    });
}

// What disks, quotas and servers answer in the midst of writing, or only at its end.
TEST_F(Destination, thatFailsInTheMidstIsTold) {
    const bool canRefuse = holdsInChild([] {
        if (!refuseCall(SYS_getppid, EIO)) {
            _exit(1);
        }
    });
    if (!canRefuse) {
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
                const auto before = window.attributesText();
                ASSERT_TRUE(refuseCall(call, error));
                window.save(destination);
                EXPECT_EQ(window.attributesText(), before + std::strerror(error));
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
        const auto before = window.attributesText();
        const rlimit limit{100, 100};
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
        window.save(destination);
        EXPECT_EQ(window.attributesText(), before + "File too large");
        EXPECT_EQ(contentsOfFile(destination), window.report().substr(0, 100));
    }));
}

// The panel has asked whether it may be replaced. What is written is what was shown before, in the same file:
// under all its names, with its mode, its owner and its attributes.
TEST_F(Destination, canBeTheInspectedItem) {
    const std::string otherName = folder.path("other name");
    ASSERT_EQ(link(item.c_str(), otherName.c_str()), 0);
    ASSERT_EQ(chmod(item.c_str(), 0640), 0);
    if (geteuid() == 0) {
        ASSERT_EQ(chown(item.c_str(), 12, 34), 0);
    }
    const struct stat before = statusOf(item);
    LinuxDetailsWindow window(item);
    const auto shown = window.attributesText();
    window.save(item);
    EXPECT_EQ(window.attributesText(), shown);
    EXPECT_EQ(contentsOfFile(item), window.report());
    EXPECT_EQ(contentsOfFile(otherName), window.report());
    EXPECT_TRUE(window.report().contains("\n     File system: data 5 metadata ")) << "as it was gathered";
    const struct stat after = statusOf(item);
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_nlink, 2U);
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
    EXPECT_EQ(LinuxDetailsWindow(item).attributesText(), shown) << "the attributes stayed";
    // Saved through a link, which stays one.
    window.save(folder.symlink("link", "item"));
    EXPECT_EQ(contentsOfFile(item), window.report());
    EXPECT_EQ(statusOf(item).st_ino, before.st_ino);
}

} // namespace
} // namespace tolvane::tests
