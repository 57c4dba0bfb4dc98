// Calls other programs with many paths at once, and parses what they print.
#pragma once

#include "tests/support/Process.h"

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::tests {

/// Runs the command with the paths behind it, as many at once as one command line takes. `use` gets the
/// outcome of each run, and its paths.
template <typename Use>
void runInBatches(
    const std::vector<std::string>& command,
    std::span<const std::string> paths,
    std::optional<std::uint32_t> user,
    const Use& use) {
    constexpr std::size_t mostBytes = 500'000;
    while (!paths.empty()) {
        ProcessSetup setup;
        setup.command = command;
        setup.user = user;
        std::size_t count = 0;
        for (std::size_t bytes = 0; count < paths.size() && bytes < mostBytes; ++count) {
            bytes += paths[count].size() + sizeof(char*) + 1;
            setup.command.push_back(paths[count]);
        }
        use(run(setup), paths.first(count));
        paths = paths.subspan(count);
    }
}

/// What stat(1) prints for each path that it can look at: one text for each fact, which is "%i" and so on.
/// `command` is "stat" and its options.
std::map<std::string, std::vector<std::string>> statOf(
    std::vector<std::string> command,
    const std::vector<std::string>& facts,
    const std::vector<std::string>& paths,
    std::optional<std::uint32_t> user);

/// The number that a text is; any other text fails the test.
std::uint64_t numberIn(std::string_view digits, int base = 10);

} // namespace tolvane::tests
