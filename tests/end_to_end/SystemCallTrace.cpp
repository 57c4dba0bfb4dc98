#include "tests/end_to_end/SystemCallTrace.h"

#include <filesystem>
#include <optional>
#include <utility>

namespace tolvane::tests {

namespace {

// "openat(AT_FDCWD, …) = 3"; nothing for lines about signals and the end.
std::optional<SystemCall> callOf(const std::string& line) {
    const auto parenthesis = line.find('(');
    if (parenthesis == std::string::npos || line.starts_with('-') || line.starts_with('+')) {
        return std::nullopt;
    }
    return SystemCall{line.substr(0, parenthesis), line.substr(parenthesis)};
}

} // namespace

void TraceTest::SetUp() {
    const auto outcome = run({.command = {"strace", "-f", "-o", "/dev/null", "true"}});
    if (outcome.status != 0) {
        GTEST_SKIP() << "strace is not installed or does not work here: " << outcome.err;
    }
}

std::vector<SystemCall> tracedRun(ProcessSetup setup) {
    const TemporaryFolder folder;
    const auto trace = folder.path("trace");
    setup.command.insert(setup.command.begin(), {"strace", "-ff", "-qq", "-s", "10000", "-o", trace, "--"});
    const auto outcome = run(setup);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    std::vector<SystemCall> calls;
    for (const auto& thread : std::filesystem::directory_iterator(folder.path())) {
        for (const auto& line : linesOf(contentsOfFile(thread.path().string()))) {
            if (auto call = callOf(line)) {
                calls.push_back(*std::move(call));
            }
        }
    }
    EXPECT_FALSE(calls.empty());
    return calls;
}

} // namespace tolvane::tests
