// Running a program as a test needs it: its arguments, names and streams are bytes, no shell comes between,
// and nothing of the test's own environment gets through but what the sanitizers are told.
#pragma once

#include "platform/linux/FileDescriptor.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>
#include <sys/types.h>

namespace tolvane::tests {

/// Where programs named without a slash are looked for, the C locale and UTC.
std::vector<std::string> plainEnvironment();

struct ProcessSetup {
    /// The program and its arguments. The program is looked for in the usual folders unless it has a slash.
    std::vector<std::string> command;
    /// What standard input holds.
    std::string input;
    std::vector<std::string> environment = plainEnvironment();
    /// The working folder; the test's own where empty.
    std::string folder;
    /// The user and group to become, which takes root.
    std::optional<std::uint32_t> user;
    /// Descriptors to use in place of pipes to the test; they stay the caller's.
    std::optional<int> inputDescriptor;
    std::optional<int> outputDescriptor;
    std::optional<int> errorDescriptor;
    /// The standard descriptors that are not open when the program starts.
    std::vector<int> closedDescriptors;
};

struct ProcessOutcome {
    /// The exit status; nothing when a signal ended the program.
    std::optional<int> status;
    int signal = 0;
    std::string out;
    std::string err;
};

/// A program that runs. One that goes on for minutes is ended by SIGALRM, so that no test waits for ever.
class Process {
public:
    explicit Process(const ProcessSetup& setup);
    Process(const Process&) = delete;
    Process(Process&&) = delete;
    Process& operator=(const Process&) = delete;
    Process& operator=(Process&&) = delete;
    ~Process();

    pid_t id() const { return id_; }

    /// Adds to what standard input holds.
    void write(std::string_view text) { unwritten_ += text; }

    /// Feeds and reads the streams until the output so far satisfies the condition; false when it ended
    /// before.
    bool waitForOutput(const std::function<bool(const std::string& out)>& condition);

    /// Ends standard input, reads all that is left, and waits for the end.
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

/// Runs a program from beginning to end.
ProcessOutcome run(const ProcessSetup& setup);

/// The lines of a text, without their ends.
std::vector<std::string> linesOf(const std::string& text);

} // namespace tolvane::tests
