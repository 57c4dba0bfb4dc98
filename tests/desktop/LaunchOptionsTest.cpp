// The desktop program's options in every order, beside those of Qt.
#include "tests/desktop/DesktopTest.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using testing::MatchesRegex;
using Words = std::vector<std::string>;

const Words style{"-style", "fusion"};
const Words offscreen{"-platform", "offscreen"};
const Words both{"-style", "fusion", "-platform", "offscreen"};

/// What is given in any order, and the output or the title that is expected.
struct Row {
    std::vector<Words> given;
    std::string expected;
};

/// Checks the given parts together with each of the further ones, in every order. An empty part counts as
/// none.
void inEveryOrder(
    const std::vector<Words>& given,
    const std::vector<Words>& furtherParts,
    const std::function<void(const Words& words)>& check) {
    for (const Words& further : furtherParts) {
        std::vector<Words> parts = given;
        if (!further.empty()) {
            parts.push_back(further);
        }
        std::ranges::sort(parts);
        do {
            Words words;
            for (const Words& part : parts) {
                words.insert(words.end(), part.begin(), part.end());
            }
            SCOPED_TRACE(testing::PrintToString(words));
            check(words);
        } while (std::ranges::next_permutation(parts).found);
    }
}

/// Without a display, so that only Qt's "-platform offscreen" lets the program go on.
ProcessOutcome outcomeOf(Words words, const std::vector<std::string>& variables = {}) {
    words.insert(words.begin(), programPath("tolvane"));
    const TemporaryFolder home;
    ProcessSetup setup{.command = words};
    setup.environment.insert(
        setup.environment.end(), {"HOME=" + home.path(), "DBUS_SESSION_BUS_ADDRESS=disabled:"});
    setup.environment.insert(setup.environment.end(), variables.begin(), variables.end());
    return run(setup);
}

void expectToLackADisplay(const ProcessOutcome& outcome) {
    EXPECT_EQ(outcome.status, 1) << "signal " << outcome.signal;
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err, MatchesRegex("[^\n]*tolvane-cli[^\n]*\n"));
}

TEST(LaunchOptions, printHelpOrTheVersionWhateverElseIsGiven) {
    const std::string help = "Usage: tolvane .*";
    const std::string version = "tolvane 0\\.[0-9]+.*\n";
    for (const auto& [given, expected] : std::vector<Row>{
             {{{"--help"}}, help},
             {{{"--version"}}, version},
             {{{"--help"}, {"file"}}, help},
             {{{"--version"}, {"--resolver"}}, version},
             {{{"--version"}, {"--services"}}, version},
             {{{"--help"}, {"--await-bus"}}, help},
             {{{"--help"}, {"--frobnicate"}}, help}}) {
        inEveryOrder(given, {{}, style, both}, [&expected](const Words& words) {
            const ProcessOutcome outcome = outcomeOf(words);
            EXPECT_EQ(outcome.status, 0) << "signal " << outcome.signal;
            EXPECT_THAT(outcome.out, MatchesRegex(expected));
            EXPECT_EQ(outcome.err, "");
        });
    }
}

TEST(LaunchOptions, printWhatIsAskedForFirst) {
    const std::string help = outcomeOf({"--help"}).out;
    EXPECT_EQ(outcomeOf({"-platform", "offscreen", "--help", "--version"}).out, help);
    EXPECT_THAT(outcomeOf({"-style", "fusion", "--version", "--help"}).out, testing::StartsWith("tolvane "));
}

TEST(LaunchOptions, areRefusedWhereTheyContradict) {
    for (const auto& [given, sentence] : std::vector<Row>{
             {{{"--frobnicate"}}, "there is no option --frobnicate"},
             {{{"-\x1B[31m\xFF"}}, "there is no option -⟨ESC⟩[31m\uFFFD"},
             {{{""}}, "a file name is empty"},
             {{{"--services"}, {""}}, "a file name is empty"},
             {{{"file"}, {"--resolver"}}, "a file cannot be combined with --resolver"},
             {{{"file"}, {"--await-bus"}}, "a file cannot be combined with --await-bus"},
             {{{"--resolver"}, {"--await-bus"}}, "--await-bus cannot be combined with --resolver"},
             {{{"--services"}, {"--resolver"}}, "--services cannot be combined with --resolver"},
             {{{"--services"}, {"--await-bus"}}, "--services cannot be combined with --await-bus"}}) {
        inEveryOrder(given, {offscreen, both}, [&sentence](const Words& words) {
            const ProcessOutcome outcome = outcomeOf(words);
            EXPECT_EQ(outcome.status, 2) << "signal " << outcome.signal;
            EXPECT_EQ(outcome.out, "");
            EXPECT_EQ(outcome.err, "tolvane: " + sentence + "\nTry 'tolvane --help'.\n");
        });
    }
}

TEST(LaunchOptions, needADisplayUnlessTheyPrint) {
    for (const auto& given : std::vector<std::vector<Words>>{
             {}, {{"file"}}, {{"--resolver"}}, {{"--await-bus"}}, {{"--services"}, {"file"}}}) {
        inEveryOrder(given, {{}, style}, [](const Words& words) { expectToLackADisplay(outcomeOf(words)); });
    }
    for (const std::string name : {"--help", "--version"}) {
        expectToLackADisplay(outcomeOf({"--", name}));
    }
    const TemporaryFolder runtime;
    expectToLackADisplay(outcomeOf({"file"}, {"DISPLAY=:nowhere"}));
    expectToLackADisplay(
        outcomeOf({"file"}, {"WAYLAND_DISPLAY=nowhere", "XDG_RUNTIME_DIR=" + runtime.path()}));
}

TEST(LaunchOptions, showNothingWhereNoNamesAreGiven) {
    inEveryOrder({{"--services"}}, {offscreen, both}, [](const Words& words) {
        const ProcessOutcome outcome = outcomeOf(words);
        EXPECT_EQ(outcome.status, 0) << "signal " << outcome.signal;
        EXPECT_EQ(outcome.out + outcome.err, "");
    });
}

using LaunchOptionsOnADesktop = DesktopTest;

TEST_F(LaunchOptionsOnADesktop, showTheirWindow) {
    for (const auto& [given, title] : std::vector<Row>{
             {{}, startWindowTitle},
             {{{file("letter")}}, titleOf("letter")},
             {{{"--resolver"}}, resolverTitle}}) {
        inEveryOrder(given, {{}, style}, [this, &title](const Words& words) {
            Process& program = startTolvane(words);
            const std::string window = desktop().waitForWindow(title);
            EXPECT_EQ(desktop().windows().size(), 1U);
            quit(window, program);
        });
    }
}

// The second name is one of Qt's options.
TEST_F(LaunchOptionsOnADesktop, leaveNamesThatBeginWithADash) {
    for (const std::string name : {"--frobnicate", "-reverse"}) {
        file(name);
        Process& program = startTolvane({"--", name}, desktop().files().path());
        quit(desktop().waitForWindow(titleOf(name)), program);
    }
}

TEST_F(LaunchOptionsOnADesktop, showAnAlertForANameAlone) {
    inEveryOrder({{"--services"}, {file("letter")}}, {style}, [this](const Words& words) {
        Process& program = startTolvane(words);
        answerAlerts({"Return"});
        expectGoodEnd(program);
    });
}

TEST_F(LaunchOptionsOnADesktop, awaitTheBus) {
    inEveryOrder({{"--await-bus"}}, {style}, [this](const Words& words) {
        Process& program = startTolvane(words);
        EXPECT_TRUE(waitUntil([this] { return callApplication({"Activate", "{}"}).status == 0; }));
        quit(desktop().waitForWindow(startWindowTitle), program);
    });
}

} // namespace
} // namespace tolvane::tests
