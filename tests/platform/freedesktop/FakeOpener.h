// A program xdg-open that opens nothing, but writes down what it was given.
#pragma once

#include "tests/platform/freedesktop/BusTest.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace tolvane::tests {

/// The first xdg-open that is found, for as long as the object lives.
class FakeOpener {
public:
    FakeOpener() {
        const std::string program = folder_.file(
            "xdg-open", "#!/bin/sh\n{ printf '%s\\n' \"$#\" \"$@\"; } >>\"${0%/*}/arguments\"\n");
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    }

    /// Of every start the number of arguments, and these.
    std::vector<std::string> starts() const {
        std::ifstream stream(folder_.path("arguments"));
        std::vector<std::string> lines;
        for (std::string line; std::getline(stream, line) && !stream.eof();) {
            lines.push_back(line);
        }
        return lines;
    }

private:
    TemporaryFolder folder_;
    EnvironmentVariable path_{"PATH", folder_.path() + ":/usr/bin:/bin"};
};

} // namespace tolvane::tests
