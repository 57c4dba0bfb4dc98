#include "tests/desktop/AccessibleWindows.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <sstream>
#include <unistd.h>

namespace tolvane::tests {

namespace {

// The system's own, which is the one that has the library.
constexpr const char* python = "/usr/bin/python3";
constexpr const char* busLauncher = "/usr/libexec/at-spi-bus-launcher";
constexpr const char* registry = "/usr/libexec/at-spi2-registryd";

bool hasReaderLibrary() {
    ProcessSetup setup;
    setup.command = {python, "-c", "import pyatspi"};
    // Without a display it cannot be loaded whole, but it says another thing when it is not there.
    return !run(setup).err.contains("No module named");
}

} // namespace

std::string missingAccessibilityProgram() {
    for (const char* const program : {python, busLauncher, registry}) {
        if (access(program, X_OK) != 0) {
            return program;
        }
    }
    return hasReaderLibrary() ? "" : "python3-pyatspi";
}

DesktopSetup accessibleDesktop() {
    return {
        .services = {{"org.a11y.Bus", std::string(busLauncher) + " --launch-immediately"}},
        .variables = {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1", "QT_ACCESSIBILITY=1"}};
}

std::vector<AccessibleObject> accessibleObjects(const Desktop& desktop) {
    const auto outcome = desktop.run({python, TOLVANE_SOURCE_DIR "/tests/desktop/read_window.py", "tolvane"});
    std::vector<AccessibleObject> objects;
    std::istringstream lines(outcome.out);
    for (std::string line; std::getline(lines, line);) {
        const auto entry = nlohmann::json::parse(line, nullptr, false);
        if (entry.is_object()) {
            objects.push_back({entry["role"], entry["name"], entry["text"]});
        }
    }
    return objects;
}

} // namespace tolvane::tests
