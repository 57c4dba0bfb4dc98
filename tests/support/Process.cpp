#include "tests/support/Process.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <utility>
#include <fcntl.h>
#include <grp.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tolvane::tests {

namespace {

constexpr std::array programFolders{"/usr/local/sbin", "/usr/local/bin", "/usr/sbin",
                                    "/usr/bin",        "/sbin",          "/bin"};
constexpr unsigned longestRunInSeconds = 300;
constexpr int exitStatusOfFailedStart = 126;

using platform::FileDescriptor;

/// The path of a program, also of one in the usual folders; the name itself if there is none.
std::string pathOfProgram(const std::string& name) {
    if (!name.contains('/')) {
        for (const std::string folder : programFolders) {
            if (access((folder + "/" + name).c_str(), X_OK) == 0) {
                return folder + "/" + name;
            }
        }
    }
    return name;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers(texts.size() + 1, nullptr);
    std::ranges::transform(texts, pointers.begin(), [](std::string& text) { return text.data(); });
    return pointers;
}

// What the child does between fork and exec; only what is safe there.
struct ChildPlan {
    std::array<int, 3> streams{};
    const std::vector<int>& closed;
    const std::string& folder;
    std::optional<std::uint32_t> user;
    const std::function<bool()>& prepare;

    bool apply() const {
        // Moved out of the way first, for a stream's source may itself be one of the three.
        std::array<int, 3> sources{};
        for (std::size_t i = 0; i < streams.size(); ++i) {
            sources[i] = fcntl(streams[i], F_DUPFD_CLOEXEC, 3);
        }
        for (std::size_t i = 0; i < sources.size(); ++i) {
            if (dup2(sources[i], static_cast<int>(i)) < 0) {
                return false;
            }
        }
        for (const int number : closed) {
            close(number);
        }
        return (folder.empty() || chdir(folder.c_str()) == 0) && becomeUser() && (!prepare || prepare());
    }

private:
    bool becomeUser() const {
        return !user
               || (setgroups(0, nullptr) == 0 && setresgid(*user, *user, *user) == 0
                   && setresuid(*user, *user, *user) == 0);
    }
};

// Adds what there is to read; at the end the descriptor goes.
void readSome(std::optional<FileDescriptor>& descriptor, std::string& text) {
    std::array<char, 65'536> buffer{};
    const auto length = read(descriptor->number(), buffer.data(), buffer.size());
    if (length > 0) {
        text.append(buffer.data(), static_cast<std::size_t>(length));
    } else if (length == 0 || errno != EINTR) {
        descriptor.reset();
    }
}

} // namespace

std::vector<std::string> plainEnvironment() {
    std::string path = "PATH=";
    for (const char* folder : programFolders) {
        path.append(path.ends_with('=') ? "" : ":").append(folder);
    }
    std::vector<std::string> environment{path, "LC_ALL=C", "TZ=UTC"};
    for (const std::string name : {"ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"}) {
        if (const char* value = std::getenv(name.c_str())) {
            environment.push_back(name + "=" + value);
        }
    }
    return environment;
}

Process::Process(const ProcessSetup& setup) : unwritten_(setup.input) {
    // A program that does not read its input to the end must not end the test.
    std::signal(SIGPIPE, SIG_IGN);
    startChild(setup);
}

void Process::startChild(const ProcessSetup& setup) {
    Pipe input = newPipe();
    Pipe output = newPipe();
    Pipe errors = newPipe();
    const ChildPlan plan{
        {setup.inputDescriptor.value_or(input.readEnd.number()),
         setup.outputDescriptor.value_or(output.writeEnd.number()),
         setup.errorDescriptor.value_or(errors.writeEnd.number())},
        setup.closedDescriptors,
        setup.folder,
        setup.user,
        setup.prepare};
    std::vector<std::string> command = setup.command;
    std::vector<std::string> environment = setup.environment;
    const std::string program = pathOfProgram(command.front());
    const auto arguments = pointersTo(command);
    const auto variables = pointersTo(environment);

    id_ = fork();
    if (id_ == 0) {
        std::signal(SIGPIPE, SIG_DFL);
        alarm(longestRunInSeconds);
        if (plan.apply()) {
            execve(program.c_str(), arguments.data(), variables.data());
        }
        _exit(exitStatusOfFailedStart);
    }
    EXPECT_GT(id_, 0) << "fork: " << std::strerror(errno);
    fcntl(input.writeEnd.number(), F_SETFL, O_NONBLOCK);
    if (!setup.inputDescriptor) {
        input_ = std::move(input.writeEnd);
    }
    if (!setup.outputDescriptor) {
        output_ = std::move(output.readEnd);
    }
    if (!setup.errorDescriptor) {
        errors_ = std::move(errors.readEnd);
    }
}

Process::~Process() {
    if (id_ > 0) {
        kill(id_, SIGKILL);
        waitpid(id_, nullptr, 0);
    }
}

void Process::writeSome() {
    const auto length = ::write(input_->number(), unwritten_.data(), unwritten_.size());
    if (length > 0) {
        unwritten_.erase(0, static_cast<std::size_t>(length));
    } else if (length < 0 && errno != EAGAIN && errno != EINTR) {
        input_.reset();
    }
}

// Waits until one of the streams can be used, and uses those that can; false when nothing is left to do.
bool Process::exchange() {
    if (input_ && inputEnds_ && unwritten_.empty()) {
        input_.reset();
    }
    const bool writes = input_ && !unwritten_.empty();
    if (!output_ && !errors_ && !writes) {
        return false;
    }
    std::array<pollfd, 3> waiting{
        pollfd{writes ? input_->number() : -1, POLLOUT, 0},
        pollfd{output_ ? output_->number() : -1, POLLIN, 0},
        pollfd{errors_ ? errors_->number() : -1, POLLIN, 0}};
    if (poll(waiting.data(), waiting.size(), -1) < 0) {
        return errno == EINTR;
    }
    if (waiting[0].revents != 0) {
        writeSome();
    }
    if (waiting[1].revents != 0) {
        readSome(output_, outcome_.out);
    }
    if (waiting[2].revents != 0) {
        readSome(errors_, outcome_.err);
    }
    return true;
}

long Process::memory(const std::string& kind) const {
    std::ifstream status("/proc/" + std::to_string(id_) + "/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(kind + ":")) {
            return std::stol(line.substr(kind.size() + 1));
        }
    }
    ADD_FAILURE() << "The process has no " << kind;
    return 0;
}

bool Process::waitForOutput(const std::function<bool(const std::string& out)>& condition) {
    while (!condition(outcome_.out)) {
        if (!output_ || !exchange()) {
            return false;
        }
    }
    return true;
}

ProcessOutcome Process::finish() {
    inputEnds_ = true;
    while (exchange()) {}
    input_.reset();
    int status = 0;
    while (waitpid(id_, &status, 0) < 0) {
        if (errno != EINTR) {
            ADD_FAILURE() << "waitpid: " << std::strerror(errno);
            break;
        }
    }
    id_ = -1;
    if (WIFEXITED(status)) {
        outcome_.status = WEXITSTATUS(status);
    } else {
        outcome_.signal = WTERMSIG(status);
    }
    return std::move(outcome_);
}

ProcessOutcome run(const ProcessSetup& setup) {
    return Process(setup).finish();
}

bool isInstalled(std::string_view program) {
    return pathOfProgram(std::string(program)).starts_with('/');
}

Pipe newPipe() {
    std::array<int, 2> ends{-1, -1};
    EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC), 0) << std::strerror(errno);
    return {FileDescriptor::owned(ends[0]), FileDescriptor::owned(ends[1])};
}

FileDescriptor openedFile(const std::string& path, int flags) {
    const int number = open(path.c_str(), flags | O_CLOEXEC, 0644);
    EXPECT_GE(number, 0) << path << ": " << std::strerror(errno);
    return FileDescriptor::owned(number);
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

} // namespace tolvane::tests
