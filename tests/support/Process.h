/// Runs programs for tests: arguments, names and streams are bytes, without a shell, and without the test's
/// environment except the sanitizers' options.
#pragma once

#include "platform/posix/FileDescriptor.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>
#include <sys/types.h>

namespace tolvane::tests {

/// The search path for programs, the C locale and UTC.
std::vector<std::string> plainEnvironment();

struct ProcessSetup {
    /// The program and its arguments. A program without a slash is searched for in the usual folders.
    std::vector<std::string> command = {};
    /// The contents of standard input.
    std::string input = {};
    std::vector<std::string> environment = plainEnvironment();
    /// The working folder; the test's own if empty.
    std::string folder = {};
    /// The user and group to become, which requires root.
    std::optional<std::uint32_t> user = {};
    /// Descriptors instead of pipes to the test; the caller keeps them.
    std::optional<int> inputDescriptor = {};
    std::optional<int> outputDescriptor = {};
    std::optional<int> errorDescriptor = {};
    /// The standard descriptors that are closed when the program starts.
    std::vector<int> closedDescriptors = {};
    /// Called in the child right before the program starts, so it must not allocate; if it returns false, the
    /// child exits with status 126.
    std::function<bool()> prepare = {};
};

struct ProcessOutcome {
    /// The exit status; nothing if a signal ended the program.
    std::optional<int> status;
    int signal = 0;
    std::string out;
    std::string err;
};

/// A running program. SIGALRM ends it after some minutes, so that no test hangs.
class Process {
public:
    explicit Process(const ProcessSetup& setup);
    Process(const Process&) = delete;
    Process(Process&&) = delete;
    Process& operator=(const Process&) = delete;
    Process& operator=(Process&&) = delete;
    ~Process();

    pid_t id() const { return id_; }

    /// Its memory in kilobytes: the "VmRSS" now, or the "VmHWM" so far. A failure fails the test.
    long memory(const std::string& kind) const;

    /// Appends to standard input.
    void write(std::string_view text) { unwritten_ += text; }

    /// Feeds and reads the streams until the output satisfies the condition; false if the program ends
    /// before.
    bool waitForOutput(const std::function<bool(const std::string& out)>& condition);

    /// Closes standard input, reads the remaining output, and waits for the end.
    ProcessOutcome finish();

private:
    using Descriptor = std::optional<platform::FileDescriptor>;

    void startChild(const ProcessSetup& setup);
    bool exchange();
    void writeSome();

    pid_t id_ = -1;
    Descriptor input_;
    Descriptor output_;
    Descriptor errors_;
    std::string unwritten_;
    bool inputEnds_ = false;
    ProcessOutcome outcome_;
};

/// Runs a program to its end.
ProcessOutcome run(const ProcessSetup& setup);

/// Whether a program of this name is in one of the usual folders. Tests skip themselves if theirs is missing.
bool isInstalled(std::string_view program);

struct Pipe {
    platform::FileDescriptor readEnd;
    platform::FileDescriptor writeEnd;
};

Pipe newPipe();

/// Opens a file, or makes it if the flags say so. A failure fails the test.
platform::FileDescriptor openedFile(const std::string& path, int flags);

/// The lines of a text, without their ends.
std::vector<std::string> linesOf(const std::string& text);

} // namespace tolvane::tests
