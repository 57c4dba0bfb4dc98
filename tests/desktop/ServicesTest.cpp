// The entries in the menus of file managers, which show the names of the files, one alert after the other.
#include "tests/desktop/AccessibleWindows.h"
#include "tests/desktop/DesktopTest.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

constexpr const char* kdeEntry = TOLVANE_SOURCE_DIR "/packaging/menus/kde/example.tolvane.tolvane.desktop";
constexpr const char* nemoEntry =
    TOLVANE_SOURCE_DIR "/packaging/menus/nemo/example.tolvane.tolvane.names.nemo_action";

/// The command of an entry for these files, as a file manager expands it, with the program that was built.
std::vector<std::string> commandOf(const std::string& entry, const std::vector<std::string>& files) {
    std::istringstream lines(contentsOfFile(entry));
    std::vector<std::string> command;
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("Exec=") || !line.contains("--services")) {
            continue;
        }
        std::istringstream words(line.substr(5));
        for (std::string word; words >> word;) {
            if (word == "%F") {
                command.insert(command.end(), files.begin(), files.end());
            } else {
                command.push_back(word == "tolvane" ? programPath("tolvane") : word);
            }
        }
    }
    EXPECT_FALSE(command.empty()) << entry;
    return command;
}

class Services : public AccessibleDesktopTest {
protected:
    /// The informative texts of the alerts on the screen.
    std::vector<std::string> shownNames() {
        std::vector<std::string> names;
        bool hasMessage = false;
        for (const AccessibleObject& object : accessibleObjects()) {
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
        return callApplication({"ActivateAction", "show-file-names", parameters, "{}"});
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

    /// Runs an entry, which has to end at once.
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

TEST_F(ServicesOfARunningInstance, answerTheBusAtOnceAndShowItsAlertsLater) {
    EXPECT_EQ(callBus("[<['/one', '/two']>]").out, "()\n");
    EXPECT_TRUE(waitUntil([this] { return shownNames() == std::vector<std::string>{"/one"}; }));
    choose({"/three"});
    EXPECT_EQ(callBus("[<['/four']>]").out, "()\n");
    // Files open while alerts wait.
    handOver({file("second")});
    desktop().waitForWindow(titleOf("second"));
    handOver({desktop().files().path("not there")});
    expectAlerts({"/one", "/two", "/three", "/four"});
    // The complaint about the missing file comes last.
    EXPECT_TRUE(waitForName("“not there” could not be opened."));
    answerAlerts({"Return"});
    quit(window, *first);
}

TEST_F(ServicesOfARunningInstance, showNamesThatAreNotUtf8OrSteerIt) {
    const std::string folder = desktop().files().path();
    // The last one goes through the bus as it is, and names no file here.
    choose({folder + "/caf\xE9", folder + "/\u202Eb", "c"});
    expectAlerts(
        {folder + "/caf\uFFFD", folder + "/⟨U+202E⟩b", std::filesystem::current_path().string() + "/c"});
    EXPECT_EQ(callBus("[<['file:///caf%E9', 'file://elsewhere/a']>]").out, "()\n");
    expectAlerts({"/caf\uFFFD", "file://elsewhere/a"});
    expectNothingElse();
}

TEST_F(ServicesOfARunningInstance, areServedAloneWithoutABus) {
    // Its alerts cannot be read without a bus, only counted.
    Process& program =
        desktop().start(commandOf(kdeEntry, {"/one", "/two"}), {}, {"DBUS_SESSION_BUS_ADDRESS=disabled:"});
    answerAlerts({"Return", "Return"});
    expectGoodEnd(program);
    expectNothingElse();
}

TEST_F(Services, waitForThoseThatTheProgramWasStartedFor) {
    Process& program = desktop().start(commandOf(kdeEntry, {"/one", "/two"}));
    EXPECT_TRUE(waitUntil([this] { return !shownNames().empty(); }));
    expectGoodEnd(desktop().start(commandOf(nemoEntry, {"/three"})));
    expectAlerts({"/one", "/two", "/three"});
    expectGoodEnd(program);
}

class ServicesOverTheBus : public Services {
protected:
    DesktopSetup setup() const override {
        DesktopSetup desktop = Services::setup();
        desktop.services["example.tolvane.tolvane"] = programPath("tolvane");
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
