#include "tests/oracle/Tolvane.h"

#include "tests/support/Programs.h"
#include "tests/support/PseudoTerminal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace tolvane::tests {

ProcessSetup tolvane(std::vector<std::string> arguments, ProcessSetup setup) {
    setup.command = std::move(arguments);
    setup.command.insert(setup.command.begin(), programPath("tolvane-cli"));
    return setup;
}

ProcessSetup reportOn(const std::vector<std::string>& names, bool json) {
    auto setup = tolvane({"report", "--files0-from=-"}, {.input = nulSeparated(names)});
    if (json) {
        setup.command.emplace_back("--json");
    }
    return setup;
}

std::string printed(const std::vector<std::string>& arguments, const std::string& input) {
    const auto outcome = run(tolvane(arguments, {.input = input}));
    EXPECT_EQ(outcome.status, 0) << testing::PrintToString(arguments);
    EXPECT_EQ(outcome.err, "");
    return outcome.out;
}

bool isComplaint(const ProcessOutcome& outcome) {
    return outcome.status == 1 && outcome.out.empty() && outcome.err.starts_with("tolvane-cli: ")
           && outcome.err.ends_with('\n') && std::ranges::count(outcome.err, '\n') == 1;
}

void expectComplaint(const ProcessOutcome& outcome, const std::string& complaint) {
    EXPECT_EQ(outcome.status, 1) << "signal " << outcome.signal;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "tolvane-cli: " + complaint + "\n");
}

std::string nulSeparated(const std::vector<std::string>& names) {
    std::string list;
    for (const auto& name : names) {
        list.append(name).push_back('\0');
    }
    return list;
}

ProcessOutcome runOnTerminal(ProcessSetup setup, bool isOutput) {
    PseudoTerminal terminal;
    (isOutput ? setup.outputDescriptor : setup.errorDescriptor) = terminal.descriptor();
    Process process(setup);
    std::string shown = terminal.textUntilHangUp();
    ProcessOutcome outcome = process.finish();
    (isOutput ? outcome.out : outcome.err) = std::move(shown);
    return outcome;
}

} // namespace tolvane::tests
