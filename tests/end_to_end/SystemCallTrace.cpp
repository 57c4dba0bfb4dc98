#include "tests/end_to_end/SystemCallTrace.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <map>
#include <string_view>
#include <utility>

namespace tolvane::tests {

namespace {

// "123 openat(AT_FDCWD, …) = 3"; nothing for lines about signals and the end.
std::optional<SystemCall> callOf(const std::string& line) {
    const auto parenthesis = line.find('(');
    const auto start = line.find_first_not_of("0123456789 ");
    if (parenthesis == std::string::npos || start >= parenthesis || line[start] == '-'
        || line[start] == '+') {
        return std::nullopt;
    }
    return SystemCall{line.substr(start, parenthesis - start), line.substr(parenthesis)};
}

/// Joins the two halves of calls during which another thread made one: "123 openat(…, <unfinished ...>" and
/// "123 <... openat resumed>…) = 3". Such a call stands where it ended.
class WholeLines {
public:
    std::optional<std::string> take(const std::string& line) {
        const std::string_view unfinished = "<unfinished ...>";
        const std::string_view resumed = " resumed>";
        const std::string thread = line.substr(0, line.find(' '));
        if (line.ends_with(unfinished)) {
            begun_[thread] = line.substr(0, line.size() - unfinished.size());
            return std::nullopt;
        }
        const auto end = line.find(resumed);
        if (end == std::string::npos || !line.substr(thread.size()).contains("<... ")) {
            return line;
        }
        return std::exchange(begun_[thread], {}) + line.substr(end + resumed.size());
    }

private:
    std::map<std::string, std::string> begun_;
};

} // namespace

std::optional<std::string> obstacleToTracing() {
    ProcessSetup setup;
    setup.command = {"strace", "-f", "-o", "/dev/null", "true"};
    const auto outcome = run(setup);
    if (outcome.status == 0) {
        return std::nullopt;
    }
    return "strace does not work here: " + (outcome.err.empty() ? "it is not installed" : outcome.err);
}

std::vector<SystemCall> tracedRun(ProcessSetup setup) {
    const TemporaryFolder folder;
    const auto trace = folder.path("trace");
    setup.command.insert(setup.command.begin(), {"strace", "-f", "-qq", "-s", "10000", "-o", trace, "--"});
    const auto outcome = run(setup);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    std::vector<SystemCall> calls;
    WholeLines whole;
    for (const auto& part : linesOf(contentsOfFile(trace))) {
        const auto line = whole.take(part);
        if (auto call = line ? callOf(*line) : std::nullopt) {
            calls.push_back(*std::move(call));
        }
    }
    EXPECT_FALSE(calls.empty());
    return calls;
}

} // namespace tolvane::tests
