// The entry in the menus of file managers: what it starts shows the names of the files, one alert after the
// other.
#include "tests/desktop/AccessibleWindows.h"
#include "tests/desktop/DesktopTest.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace tolvane::tests {

namespace {

using testing::HasSubstr;

constexpr const char* kdeEntry = TOLVANE_SOURCE_DIR "/packaging/kservicemenu/example.tolvane.tolvane.desktop";
constexpr const char* nemoEntry = TOLVANE_SOURCE_DIR "/packaging/nemo/example.tolvane.tolvane.nemo_action";

/// The command of an entry for these files, as a file manager carries it out; the program is the one that was
/// built.
std::vector<std::string> commandOf(const std::string& entry, const std::vector<std::string>& files) {
    std::istringstream lines(contentsOfFile(entry));
    std::vector<std::string> command;
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("Exec=")) {
            continue;
        }
        std::istringstream words(line.substr(5));
        for (std::string word; words >> word;) {
            if (word == "%F") {
                command.insert(command.end(), files.begin(), files.end());
            } else {
                command.push_back(word == "tolvane" ? desktopProgram() : word);
            }
        }
    }
    EXPECT_FALSE(command.empty()) << entry;
    return command;
}

/// The text without the places where it may be broken into lines.
std::string withoutBreaks(std::string text) {
    const std::string zeroWidthSpace = "\u200b";
    for (auto at = text.find(zeroWidthSpace); at != std::string::npos; at = text.find(zeroWidthSpace)) {
        text.erase(at, zeroWidthSpace.size());
    }
    return text;
}

class Services : public DesktopTest {
protected:
    void SetUp() override {
        for (const std::string& missing :
             {missingAccessibilityProgram(), std::string(isInstalled("gdbus") ? "" : "gdbus")}) {
            if (!missing.empty()) {
                GTEST_SKIP() << missing << " is not installed";
            }
        }
        DesktopTest::SetUp();
    }

    DesktopSetup setup() const override { return accessibleDesktop(); }

    /// The informative texts of the alerts on the screen.
    std::vector<std::string> shownNames() {
        std::vector<std::string> names;
        bool hasMessage = false;
        for (const AccessibleObject& object : accessibleObjects(desktop())) {
            if (hasMessage && object.role == "text") {
                names.push_back(object.text);
                hasMessage = false;
            }
            hasMessage |= object.name == "An error occurred:";
        }
        return names;
    }

    /// Expects one alert after the other, answers each, and expects that there is no other.
    void expectAlerts(const std::vector<std::string>& names) {
        for (const std::string& name : names) {
            std::vector<std::string> shown;
            EXPECT_TRUE(waitUntil([&] {
                shown = shownNames();
                return shown == std::vector<std::string>{name};
            })) << "Instead of "
                << name << " there are " << testing::PrintToString(shown);
            if (HasFailure()) {
                return;
            }
            desktop().settle();
            desktop().press(desktop().activeWindow(), {"Return"});
        }
        EXPECT_TRUE(waitUntil([this] { return shownNames().empty(); }));
    }

    ProcessOutcome callBus(const std::string& parameters) {
        return desktop().run(
            {"gdbus", "call", "--session", "--timeout", "60", "--dest", "example.tolvane.tolvane",
             "--object-path", "/example/tolvane/tolvane", "--method",
             "org.freedesktop.Application.ActivateAction", "show-file-names", parameters, "{}"});
    }
};

class ServicesOfARunningInstance : public Services {
protected:
    void SetUp() override {
        Services::SetUp();
        if (!IsSkipped()) {
            first = &startTolvane({file("open")});
            window = desktop().waitForWindow(titleOf("open"));
        }
    }

    /// Carries an entry out, which has to end at once.
    void choose(const std::vector<std::string>& files, const char* entry = kdeEntry) {
        expectGoodEnd(desktop().start(commandOf(entry, files)));
    }

    /// Expects that nothing but the window of the beginning is shown, and ends the program.
    void expectNothingElse() {
        EXPECT_EQ(desktop().windows().size(), 1U);
        EXPECT_TRUE(Desktop::isRunning(*first));
        quit(window, *first);
    }

    Process* first = nullptr;
    std::string window;
};

TEST_F(ServicesOfARunningInstance, showThreeFilesInThreeAlerts) {
    for (const char* const entry : {kdeEntry, nemoEntry}) {
        const std::vector<std::string> files{file("b"), file("a b"), file("-c%20\"'$(x)")};
        choose(files, entry);
        expectAlerts(files);
    }
    expectNothingElse();
}

TEST_F(ServicesOfARunningInstance, answerTheBusBeforeTheAlerts) {
    const auto answer = callBus("[<['/one', '/two', '/three']>]");
    EXPECT_EQ(answer.out, "()\n") << answer.err;
    expectAlerts({"/one", "/two", "/three"});
    expectNothingElse();
}

TEST_F(ServicesOfARunningInstance, showASecondCallsAlertsAfterTheFirsts) {
    EXPECT_EQ(callBus("[<['/one', '/two']>]").out, "()\n");
    EXPECT_TRUE(waitUntil([this] { return shownNames() == std::vector<std::string>{"/one"}; }));
    choose({"/three"});
    EXPECT_EQ(callBus("[<['/four']>]").out, "()\n");
    // A file opens meanwhile; what waits is nobody's business but the alerts'.
    handOver({file("second")});
    desktop().waitForWindow(titleOf("second"));
    handOver({desktop().files().path("not there")});
    expectAlerts({"/one", "/two", "/three", "/four"});
    // The complaint about the missing file comes last.
    EXPECT_TRUE(waitUntil([this] {
        return std::ranges::any_of(accessibleObjects(desktop()), [](const AccessibleObject& object) {
            return withoutBreaks(object.name).contains("“not there” could not be opened.");
        });
    }));
    desktop().settle();
    desktop().press(desktop().activeWindow(), {"Return"});
    desktop().waitUntilGone("Tolvane");
    quit(window, *first);
}

TEST_F(ServicesOfARunningInstance, showNamesThatAreNoTextOrSteerIt) {
    const std::string folder = desktop().files().path();
    // The last one goes through the bus as it is, and names no file here.
    choose({folder + "/caf\xE9", folder + "/\u202Eb", "c"});
    expectAlerts(
        {folder + "/caf\uFFFD", folder + "/⟨U+202E⟩b", std::filesystem::current_path().string() + "/c"});
    EXPECT_EQ(callBus("[<['file:///caf%E9', 'file://elsewhere/a']>]").out, "()\n");
    expectAlerts({"/caf\uFFFD", "file://elsewhere/a"});
    expectNothingElse();
}

TEST_F(ServicesOfARunningInstance, showNothingForWhatIsNoListOfNames) {
    for (const char* const parameters :
         {"@av []", "[<'/a'>]", "[<7>]", "[<['/a']>, <['/b']>]", "[<@ai []>]"}) {
        const auto answer = callBus(parameters);
        EXPECT_NE(answer.status, 0) << parameters;
        EXPECT_THAT(answer.err, HasSubstr("InvalidArgs")) << parameters;
    }
    EXPECT_EQ(callBus("[<@as []>]").out, "()\n");
    handOver({"--services"});
    // An alert that comes later is shown later, so none is on its way any more.
    choose({"/last"});
    expectAlerts({"/last"});
    expectNothingElse();
}

TEST_F(ServicesOfARunningInstance, areServedAloneWithoutABus) {
    ProcessSetup alone;
    alone.command = commandOf(kdeEntry, {"/one", "/two"});
    alone.environment = desktop().environment();
    std::erase_if(alone.environment, [](const std::string& variable) {
        return variable.starts_with("DBUS_SESSION_BUS_ADDRESS=");
    });
    alone.environment.emplace_back("DBUS_SESSION_BUS_ADDRESS=disabled:");
    // Nobody reads its windows without a bus, so it is seen by their number.
    Process& program = desktop().start(std::move(alone));
    std::string previous;
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(waitUntil([&] {
            const auto alerts = desktop().windowsTitled("Tolvane");
            return alerts.size() == 1 && alerts.front() != previous;
        }));
        previous = desktop().waitForWindow("Tolvane");
        desktop().settle();
        desktop().press(previous, {"Return"});
    }
    expectGoodEnd(program);
    expectNothingElse();
}

TEST_F(Services, startTheProgramAndEndWithIt) {
    const std::vector<std::string> files{file("b"), file("a b"), file("c")};
    Process& program = desktop().start(commandOf(kdeEntry, files));
    expectAlerts(files);
    expectGoodEnd(program);
}

TEST_F(Services, waitForThoseThatTheProgramWasStartedFor) {
    Process& program = desktop().start(commandOf(kdeEntry, {"/one", "/two"}));
    EXPECT_TRUE(waitUntil([this] { return !shownNames().empty(); }));
    expectGoodEnd(desktop().start(commandOf(nemoEntry, {"/three"})));
    expectAlerts({"/one", "/two", "/three"});
    expectGoodEnd(program);
}

TEST_F(Services, ofNoFileStartNothing) {
    expectGoodEnd(desktop().start(commandOf(kdeEntry, {})));
    EXPECT_TRUE(desktop().windows().empty());
}

class ServicesOverTheBus : public Services {
protected:
    DesktopSetup setup() const override {
        DesktopSetup desktop = accessibleDesktop();
        desktop.services["example.tolvane.tolvane"] = desktopProgram();
        return desktop;
    }
};

TEST_F(ServicesOverTheBus, startTheProgramWhenItDoesNotRun) {
    EXPECT_EQ(callBus("[<['/one', '/two', '/three']>]").out, "()\n");
    expectAlerts({"/one", "/two", "/three"});
    desktop().press(desktop().waitForWindow(startWindowTitle), {"ctrl+q"});
    desktop().waitUntilGone(startWindowTitle);
}

} // namespace

} // namespace tolvane::tests
