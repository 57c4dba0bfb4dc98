#include "tests/desktop/DesktopTest.h"

#include "tests/support/Programs.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace tolvane::tests {

std::string titleOf(const std::string& name) {
    return name + " — Tolvane";
}

std::string desktopProgram() {
    return programPath("tolvane");
}

std::string terminalProgram() {
    return programPath("tolvane-cli");
}

void DesktopTest::SetUp() {
    if (const std::string missing = Desktop::missingProgram(); !missing.empty()) {
        GTEST_SKIP() << missing << " is not installed";
    }
    desktop_.emplace(setup());
}

std::string DesktopTest::file(const std::string& name, const std::string& contents) {
    return desktop().files().file(name, contents);
}

Process& DesktopTest::startTolvane(std::vector<std::string> arguments, const std::string& folder) {
    arguments.insert(arguments.begin(), desktopProgram());
    return desktop().start(std::move(arguments), folder);
}

void DesktopTest::handOver(std::vector<std::string> arguments, const std::string& folder) {
    expectGoodEnd(startTolvane(std::move(arguments), folder));
}

void DesktopTest::expectGoodEnd(Process& program) {
    if (const auto outcome = desktop().endOf(program)) {
        EXPECT_EQ(outcome->status, 0) << "signal " << outcome->signal;
        EXPECT_EQ(outcome->out, "");
        EXPECT_EQ(outcome->err, "");
    }
}

void DesktopTest::quit(const std::string& window, Process& program) {
    desktop().press(window, {"ctrl+q"});
    expectGoodEnd(program);
}

std::string DesktopTest::printed(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), terminalProgram());
    const ProcessOutcome outcome = desktop().run(std::move(arguments));
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    return outcome.out;
}

std::map<std::string, std::string> DesktopTest::report(const std::string& path) {
    const auto object = nlohmann::json::parse(printed({"report", "--json", "--", path}), nullptr, false);
    EXPECT_TRUE(object.is_object());
    std::map<std::string, std::string> fields;
    for (const auto& [name, value] : object.items()) {
        if (value.is_string()) {
            fields[name] = value.get<std::string>();
        }
    }
    return fields;
}

} // namespace tolvane::tests
