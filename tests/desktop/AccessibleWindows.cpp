#include "tests/desktop/AccessibleWindows.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <unistd.h>

namespace tolvane::tests {

namespace {

// The system's, which has the library.
constexpr const char* python = "/usr/bin/python3";
constexpr const char* busLauncher = "/usr/libexec/at-spi-bus-launcher";
constexpr const char* registry = "/usr/libexec/at-spi2-registryd";

std::string withoutBreaks(std::string text) {
    const std::string zeroWidthSpace = "\u200b";
    for (auto at = text.find(zeroWidthSpace); at != std::string::npos; at = text.find(zeroWidthSpace)) {
        text.erase(at, zeroWidthSpace.size());
    }
    return text;
}

} // namespace

bool hasObject(
    const std::vector<AccessibleObject>& objects,
    const std::string& role,
    const std::string& name,
    const std::string& text) {
    return std::ranges::any_of(objects, [&](const AccessibleObject& object) {
        return object.role.contains(role) && object.name == name && object.text.contains(text);
    });
}

void AccessibleDesktopTest::SetUp() {
    for (const char* const program : {python, busLauncher, registry}) {
        if (access(program, X_OK) != 0) {
            GTEST_SKIP() << program << " is not installed";
        }
    }
    // Without a display the library cannot be loaded, but the message differs if it is not installed.
    if (run({.command = {python, "-c", "import pyatspi"}}).err.contains("No module named")) {
        GTEST_SKIP() << "python3-pyatspi is not installed";
    }
    DesktopTest::SetUp();
}

DesktopSetup AccessibleDesktopTest::setup() const {
    return {
        .services = {{"org.a11y.Bus", std::string(busLauncher) + " --launch-immediately"}},
        .variables = {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1", "QT_ACCESSIBILITY=1"}};
}

std::vector<AccessibleObject> AccessibleDesktopTest::accessibleObjects() {
    const auto outcome =
        desktop().run({python, TOLVANE_SOURCE_DIR "/tests/desktop/read_window.py", "tolvane"});
    std::vector<AccessibleObject> objects;
    for (const std::string& line : linesOf(outcome.out)) {
        const auto entry = nlohmann::json::parse(line, nullptr, false);
        if (entry.is_object()) {
            objects.push_back({entry["role"], withoutBreaks(entry["name"]), entry["text"]});
        }
    }
    return objects;
}

bool AccessibleDesktopTest::waitForName(const std::string& text) {
    return waitUntil([&] {
        return std::ranges::any_of(accessibleObjects(), [&text](const AccessibleObject& object) {
            return object.name.contains(text);
        });
    });
}

} // namespace tolvane::tests
