#include "tests/oracle/Tolvane.h"

#include "tests/support/Programs.h"
#include "tests/support/PseudoTerminal.h"

#include <algorithm>
#include <utility>

namespace tolvane::tests {

ProcessSetup tolvane(std::vector<std::string> arguments) {
    ProcessSetup setup;
    setup.command = std::move(arguments);
    setup.command.insert(setup.command.begin(), programPath("tolvane-cli"));
    return setup;
}

ProcessSetup reportOn(const std::vector<std::string>& names, bool json) {
    auto setup = tolvane({"report", "--files0-from=-"});
    if (json) {
        setup.command.emplace_back("--json");
    }
    setup.input = nulSeparated(names);
    return setup;
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

bool isHarmless(std::string_view text) {
    return std::ranges::none_of(text, [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return (byte < 0x20 && c != '\n') || byte == 0x7f;
    });
}

} // namespace tolvane::tests
