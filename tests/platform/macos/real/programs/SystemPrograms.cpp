#include "tests/platform/macos/real/programs/SystemPrograms.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <ctime>
#include <iterator>
#include <sstream>
#include <utility>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace tolvane::tests::macos {

namespace {

/// The process that runs the program with its output in the pipe, if it was started.
std::optional<pid_t> started(std::vector<std::string> command, int output) {
    std::vector<char*> arguments;
    std::ranges::transform(
        command, std::back_inserter(arguments), [](std::string& text) { return text.data(); });
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    pid_t process = 0;
    const int failure = posix_spawnp(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return failure == 0 ? std::optional(process) : std::nullopt;
}

} // namespace

ProgramAnswer answerOf(const std::vector<std::string>& command) {
    std::array<int, 2> ends{};
    ProgramAnswer answer;
    if (pipe(ends.data()) != 0) {
        return answer;
    }
    // The child has its copy as standard output; the others must not keep the pipe open.
    fcntl(ends[0], F_SETFD, FD_CLOEXEC);
    fcntl(ends[1], F_SETFD, FD_CLOEXEC);
    const auto process = started(command, ends[1]);
    close(ends[1]);
    std::array<char, 4096> buffer{};
    for (ssize_t size = 0; process && (size = read(ends[0], buffer.data(), buffer.size())) > 0;) {
        answer.out.append(buffer.data(), static_cast<std::size_t>(size));
    }
    close(ends[0]);
    int status = 0;
    if (process && waitpid(*process, &status, 0) == *process && WIFEXITED(status)) {
        answer.status = WEXITSTATUS(status);
    }
    return answer;
}

std::vector<std::string> wordsOf(const std::string& text) {
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

std::optional<std::int64_t> secondsOfLocalTime(const std::string& text) {
    std::istringstream stream(text);
    std::tm parts{};
    std::array<char, 4> between{};
    stream >> parts.tm_mon >> between[0] >> parts.tm_mday >> between[1] >> parts.tm_year >> parts.tm_hour
        >> between[2] >> parts.tm_min >> between[3] >> parts.tm_sec;
    if (!stream || between != std::array{'/', '/', ':', ':'}) {
        return std::nullopt;
    }
    parts.tm_mon -= 1;
    parts.tm_year -= 1900;
    parts.tm_isdst = -1;
    return std::mktime(&parts);
}

std::optional<platform::Data> bytesOfHex(const std::string& text) {
    platform::Data bytes;
    for (const std::string& word : wordsOf(text)) {
        unsigned int byte = 0;
        const char* const end = word.data() + word.size();
        if (word.size() != 2 || std::from_chars(word.data(), end, byte, 16).ptr != end) {
            return std::nullopt;
        }
        bytes.push_back(static_cast<std::byte>(byte));
    }
    return bytes;
}

} // namespace tolvane::tests::macos
