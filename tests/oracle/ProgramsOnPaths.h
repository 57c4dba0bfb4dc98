// Asking other programs about many paths at once, and reading what they print.
#pragma once

#include "tests/support/Process.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::tests {

/// Runs the program named first, with the other arguments before the paths, on so many of them at once as one
/// command line takes. 'use' gets what each run printed, and its paths.
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

/// The pieces of an output in which a NUL ends each.
std::vector<std::string> splitAtNuls(std::string_view text);

/// The number that a text is; one that is none fails the test.
std::uint64_t numberIn(std::string_view digits, int base = 10);

} // namespace tolvane::tests
