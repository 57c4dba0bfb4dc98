#include "tests/packaging/Help.h"

#include "tests/support/Process.h"
#include "tests/support/Programs.h"

#include <gtest/gtest.h>

#include <regex>
#include <sstream>

namespace tolvane::tests {

std::string printedBy(const std::vector<std::string>& command) {
    const ProcessOutcome outcome = run({.command = command});
    EXPECT_EQ(outcome.status, 0) << command.front() << ": " << outcome.err;
    return outcome.out;
}

Texts optionsIn(const std::string& text) {
    // Not within a word or a path.
    static const std::regex option("(^|[^-/[:alnum:]])(-+[[:alnum:]][-[:alnum:]]*)");
    Texts options;
    for (std::sregex_iterator found(text.begin(), text.end(), option), last; found != last; ++found) {
        options.insert((*found)[2]);
    }
    return options;
}

std::map<std::string, Texts> terminalOptions() {
    std::map<std::string, Texts> options;
    for (const std::string command :
         {"", "report", "attributes", "bookmark", "bookmark make", "bookmark read", "bookmark show",
          "bookmark resolve", "bookmark find"}) {
        std::vector<std::string> line{programPath("tolvane-cli")};
        std::istringstream words(command);
        for (std::string word; words >> word;) {
            line.push_back(word);
        }
        line.emplace_back("--help");
        options[command] = optionsIn(printedBy(line));
    }
    return options;
}

Texts desktopOptions() {
    return optionsIn(printedBy({programPath("tolvane"), "--help"}));
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
