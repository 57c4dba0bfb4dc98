#include "tests/hostile/SystemCallGate.h"

#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <fcntl.h>
#include <linux/filter.h>
#include <linux/limits.h>
#include <linux/seccomp.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

namespace tolvane::tests {

namespace {

using platform::FileDescriptor;

constexpr int aMinute = 60'000;

// The calls that read from the file system, and which of their arguments is the path.
struct HeldCall {
    long number;
    const char* name;
    int pathArgument;
};
constexpr int noPath = -1;
constexpr std::array heldCalls{
    HeldCall{SYS_statx, "statx", 1},
    HeldCall{SYS_newfstatat, "newfstatat", 1},
    HeldCall{SYS_openat, "openat", 1},
    HeldCall{SYS_readlinkat, "readlinkat", 1},
    HeldCall{SYS_listxattr, "listxattr", 0},
    HeldCall{SYS_llistxattr, "llistxattr", 0},
    HeldCall{SYS_getxattr, "getxattr", 0},
    HeldCall{SYS_lgetxattr, "lgetxattr", 0},
    HeldCall{SYS_name_to_handle_at, "name_to_handle_at", 1},
    HeldCall{SYS_statfs, "statfs", 0},
    HeldCall{SYS_read, "read", noPath},
    HeldCall{SYS_pread64, "pread64", noPath},
    HeldCall{SYS_getdents64, "getdents64", noPath},
#ifdef SYS_readlink // younger architectures have the other one only
    HeldCall{SYS_readlink, "readlink", 0},
#endif
};

// The filter that stops the calls above and lets all others pass.
std::vector<sock_filter> filterProgram() {
    std::vector<sock_filter> program{{BPF_LD | BPF_W | BPF_ABS, 0, 0, offsetof(seccomp_data, nr)}};
    for (const HeldCall& call : heldCalls) {
        program.push_back({BPF_JMP | BPF_JEQ | BPF_K, 0, 1, static_cast<std::uint32_t>(call.number)});
        program.push_back({BPF_RET | BPF_K, 0, 0, SECCOMP_RET_USER_NOTIF});
    }
    program.push_back({BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW});
    return program;
}

// Both ends need room for one descriptor beside one byte.
struct Parcel {
    char byte = 0;
    iovec content{&byte, 1};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> room{};
    msghdr header{};

    Parcel() {
        header.msg_iov = &content;
        header.msg_iovlen = 1;
        header.msg_control = room.data();
        header.msg_controllen = room.size();
    }
    Parcel(const Parcel&) = delete;
    Parcel& operator=(const Parcel&) = delete;
};

bool sendDescriptor(int channel, int number) {
    Parcel parcel;
    cmsghdr* const control = CMSG_FIRSTHDR(&parcel.header);
    control->cmsg_level = SOL_SOCKET;
    control->cmsg_type = SCM_RIGHTS;
    control->cmsg_len = CMSG_LEN(sizeof number);
    std::memcpy(CMSG_DATA(control), &number, sizeof number);
    return sendmsg(channel, &parcel.header, 0) == 1;
}

// Nothing when the child ended without sending one.
std::optional<FileDescriptor> receivedDescriptor(int channel) {
    Parcel parcel;
    if (recvmsg(channel, &parcel.header, MSG_CMSG_CLOEXEC) != 1) {
        return std::nullopt;
    }
    const cmsghdr* const control = CMSG_FIRSTHDR(&parcel.header);
    if (control == nullptr || control->cmsg_type != SCM_RIGHTS) {
        return std::nullopt;
    }
    int number = -1;
    std::memcpy(&number, CMSG_DATA(control), sizeof number);
    return FileDescriptor::owned(number);
}

// Runs in the child: from here on each of these calls waits for the test, which gets the descriptor to answer
// them.
bool closeGate(const sock_fprog& filter, int channel) {
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) {
        return false;
    }
    const auto listener = FileDescriptor::owned(static_cast<int>(
        syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, SECCOMP_FILTER_FLAG_NEW_LISTENER, &filter)));
    return listener.number() >= 0 && sendDescriptor(channel, listener.number());
}

// The text at an address of another process; empty where there is none.
std::string textOf(pid_t process, std::uint64_t address) {
    constexpr std::uint64_t page = 4096;
    std::string text;
    while (address != 0 && text.size() <= PATH_MAX) {
        std::array<char, page> piece{};
        iovec here{piece.data(), static_cast<std::size_t>(page - address % page)};
        iovec there{here.iov_base, here.iov_len};
        std::memcpy(&there.iov_base, &address, sizeof address);
        const auto length = process_vm_readv(process, &here, 1, &there, 1, 0);
        if (length <= 0) {
            return {};
        }
        const std::string_view read(piece.data(), static_cast<std::size_t>(length));
        text += read.substr(0, read.find('\0'));
        if (read.contains('\0')) {
            break;
        }
        address += static_cast<std::uint64_t>(length);
    }
    return text;
}

PendingCall pendingCall(const seccomp_notif& notice) {
    const auto held = std::ranges::find(heldCalls, notice.data.nr, &HeldCall::number);
    if (held == heldCalls.end()) {
        return {};
    }
    const auto argument = static_cast<std::size_t>(held->pathArgument);
    return {
        held->name, held->pathArgument == noPath
                        ? std::string()
                        : textOf(static_cast<pid_t>(notice.pid), notice.data.args[argument])};
}

void answerOne(int listener, const Gate& gate) {
    seccomp_notif notice{};
    if (ioctl(listener, SECCOMP_IOCTL_NOTIF_RECV, &notice) != 0) {
        return; // the program ended meanwhile
    }
    const int error = gate(pendingCall(notice));
    seccomp_notif_resp answer{};
    answer.id = notice.id;
    answer.error = -error;
    answer.flags = error == 0 ? SECCOMP_USER_NOTIF_FLAG_CONTINUE : 0;
    static_cast<void>(ioctl(listener, SECCOMP_IOCTL_NOTIF_SEND, &answer));
}

void guard(const FileDescriptor& listener, pid_t child, const Gate& gate) {
    const auto end = FileDescriptor::owned(static_cast<int>(syscall(SYS_pidfd_open, child, 0)));
    std::array<pollfd, 2> questions{{{listener.number(), POLLIN, 0}, {end.number(), POLLIN, 0}}};
    while (poll(questions.data(), questions.size(), aMinute) > 0 && questions[1].revents == 0) {
        if ((questions[0].revents & POLLIN) != 0) {
            answerOne(listener.number(), gate);
        } else if (questions[0].revents != 0) {
            questions[0].fd = -1; // all that is left is to wait for the end
        }
    }
    if (questions[1].revents == 0) {
        kill(child, SIGKILL);
    }
}

} // namespace

void GateTest::SetUp() {
    bool sawPath = false;
    const auto outcome = runThroughGate({"/bin/true"}, [&sawPath](const PendingCall& call) {
        sawPath = sawPath || call.path.starts_with('/');
        return 0;
    });
    if (outcome.status != 0 || !sawPath) {
        GTEST_SKIP() << "system calls cannot be held here, or their paths not be read: " << outcome.err;
    }
}

ProcessOutcome runThroughGate(const std::vector<std::string>& command, const Gate& gate) {
    const TemporaryFolder folder;
    const auto nothing = openedFile("/dev/null", O_RDONLY);
    // Into files, for nothing reads a pipe while the gate waits.
    const auto out = openedFile(folder.path("out"), O_WRONLY | O_CREAT);
    const auto err = openedFile(folder.path("err"), O_WRONLY | O_CREAT);
    std::array<int, 2> channel{-1, -1};
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, channel.data()), 0)
        << std::strerror(errno);
    const auto near = FileDescriptor::owned(channel[0]);
    auto far = FileDescriptor::owned(channel[1]);
    std::vector<sock_filter> program = filterProgram();
    const sock_fprog filter{static_cast<unsigned short>(program.size()), program.data()};
    Process process(
        {.command = command,
         .inputDescriptor = nothing.number(),
         .outputDescriptor = out.number(),
         .errorDescriptor = err.number(),
         .prepare = [&] { return closeGate(filter, far.number()); }});
    static_cast<void>(far.close());
    if (const auto listener = receivedDescriptor(near.number())) {
        guard(*listener, process.id(), gate);
    }
    ProcessOutcome outcome = process.finish();
    outcome.out = contentsOfFile(folder.path("out"));
    outcome.err = contentsOfFile(folder.path("err"));
    return outcome;
}

} // namespace tolvane::tests
