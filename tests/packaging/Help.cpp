#include "tests/packaging/Help.h"

#include "tests/support/Process.h"
#include "tests/support/Programs.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstddef>

namespace tolvane::tests {

std::string printedBy(const std::vector<std::string>& command) {
    const ProcessOutcome outcome = run({.command = command});
    EXPECT_EQ(outcome.status, 0) << command.front() << ": " << outcome.err;
    return outcome.out;
}

Texts optionsIn(std::string_view text) {
    Texts options;
    const auto isPart = [&text](std::size_t at) {
        const auto c = at < text.size() ? static_cast<unsigned char>(text[at]) : '\0';
        return std::isalnum(c) != 0 || c == '-';
    };
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '-' || (at > 0 && (isPart(at - 1) || text[at - 1] == '/'))) {
            continue;
        }
        std::size_t end = at;
        while (isPart(end)) {
            ++end;
        }
        const std::string_view word = text.substr(at, end - at);
        if (word.find_first_not_of('-') != std::string_view::npos) {
            options.emplace(word);
        }
        at = end;
    }
    return options;
}

std::vector<std::vector<std::string>> terminalCommands() {
    return {
        {},
        {"report"},
        {"attributes"},
        {"bookmark"},
        {"bookmark", "make"},
        {"bookmark", "read"},
        {"bookmark", "show"},
        {"bookmark", "resolve"},
        {"bookmark", "find"}};
}

std::string versionOf(const std::string& program) {
    const std::string printed = printedBy({programPath(program), "--version"});
    EXPECT_TRUE(printed.starts_with(program + " ") && printed.ends_with('\n')) << printed;
    return printed.substr(program.size() + 1, printed.size() - program.size() - 2);
}

std::string sourcePath(const std::string& file) {
    return std::string(TOLVANE_SOURCE_DIR) + "/" + file;
}

std::string madePath(const std::string& file) {
    return programPath("../packaging/") + file;
}

} // namespace tolvane::tests
