#include "tests/desktop/DesktopTest.h"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <utility>

namespace tolvane::tests {

std::string titleOf(const std::string& name) {
    return name + " — Tolvane";
}

void DesktopTest::SetUp() {
    for (const std::string program : {"Xvfb", "openbox", "xdotool", "xclip", "xprop", "dbus-daemon"}) {
        if (!isInstalled(program)) {
            GTEST_SKIP() << program << " is not installed";
        }
    }
    desktop_.emplace(setup());
}

std::string DesktopTest::file(const std::string& name, const std::string& contents) {
    return desktop().files().file(name, contents);
}

Process& DesktopTest::startTolvane(
    std::vector<std::string> arguments,
    const std::string& folder,
    const std::vector<std::string>& variables) {
    arguments.insert(arguments.begin(), programPath("tolvane"));
    return desktop().start(std::move(arguments), folder, variables);
}

std::pair<Process&, std::string> DesktopTest::startWith(const std::string& name) {
    Process& program = startTolvane({file(name)});
    return {program, desktop().waitForWindow(titleOf(name))};
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

void DesktopTest::answerAlerts(const std::vector<std::string>& keys) {
    std::string previous;
    for (const std::string& key : keys) {
        EXPECT_TRUE(waitUntil([&] {
            const auto alerts = desktop().windowsTitled(alertTitle);
            return alerts.size() == 1 && alerts.front() != previous;
        })) << "There is no alert to answer by "
            << key;
        previous = desktop().waitForWindow(alertTitle);
        desktop().press(previous, {key});
    }
    desktop().waitUntilGone(alertTitle);
}

void DesktopTest::answerPanel(const std::string& title, const std::string& path) {
    const std::string panel = desktop().waitForWindow(title);
    desktop().press(panel, {"ctrl+a"});
    desktop().type(path);
    desktop().press(panel, {"Return"});
    desktop().waitUntilGone(title);
}

ProcessOutcome DesktopTest::callApplication(std::vector<std::string> methodAndArguments) {
    std::vector<std::string> command{
        "gdbus",
        "call",
        "--session",
        "--timeout",
        "60",
        "--dest",
        "example.tolvane.tolvane",
        "--object-path",
        "/example/tolvane/tolvane",
        "--method"};
    methodAndArguments.front().insert(0, "org.freedesktop.Application.");
    command.insert(command.end(), methodAndArguments.begin(), methodAndArguments.end());
    return desktop().run(std::move(command));
}

std::string DesktopTest::printedLine(std::vector<std::string> arguments) {
    std::string text = printed(std::move(arguments));
    EXPECT_TRUE(text.ends_with('\n'));
    return text.substr(0, text.find_last_not_of('\n') + 1);
}

std::string DesktopTest::printed(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), programPath("tolvane-cli"));
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

Opener::Opener() {
    std::filesystem::permissions(
        folder_.file("xdg-open", "#!/bin/sh\nprintf '%s\\n' \"$#\" \"$@\" >>\"${0%/*}/calls\"\n"),
        std::filesystem::perms::owner_all);
}

std::string Opener::calls() const {
    return std::filesystem::exists(folder_.path("calls")) ? contentsOfFile(folder_.path("calls")) : "";
}

} // namespace tolvane::tests
