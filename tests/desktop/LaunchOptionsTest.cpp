// The desktop program's options in every order, beside those of Qt.
#include "tests/desktop/DesktopTest.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::tests {
namespace {

using Words = std::vector<std::string>;

const Words style{"-style", "fusion"};
const Words offscreen{"-platform", "offscreen"};
const Words both{"-style", "fusion", "-platform", "offscreen"};

/// The parts one after the other, in every order of them. An empty part counts as none.
std::vector<Words> inEveryOrder(std::vector<Words> parts, const Words& further) {
    if (!further.empty()) {
        parts.push_back(further);
    }
    std::ranges::sort(parts);
    std::vector<Words> orders;
    do {
        Words& words = orders.emplace_back();
        for (const Words& part : parts) {
            words.insert(words.end(), part.begin(), part.end());
        }
    } while (std::ranges::next_permutation(parts).found);
    return orders;
}

std::string inOneLine(const Words& words) {
    std::string line = "tolvane";
    for (const std::string& word : words) {
        line += " '" + word + "'";
    }
    return line;
}

/// Without a display, so that only Qt's "-platform offscreen" lets the program go on.
ProcessOutcome outcomeOf(Words words) {
    words.insert(words.begin(), desktopProgram());
    const TemporaryFolder home;
    ProcessSetup setup{.command = words};
    setup.environment.insert(
        setup.environment.end(), {"HOME=" + home.path(), "DBUS_SESSION_BUS_ADDRESS=disabled:"});
    return run(setup);
}

TEST(LaunchOptions, printHelpOrTheVersionWhateverElseIsGiven) {
    struct Row {
        std::vector<Words> given;
        std::string_view start;
    };
    const std::vector<Row> rows{
        {{{"--help"}}, "Usage: tolvane "},
        {{{"--version"}}, "tolvane 0."},
        {{{"--help"}, {"file"}}, "Usage: tolvane "},
        {{{"--version"}, {"--resolver"}}, "tolvane 0."},
        {{{"--version"}, {"--services"}}, "tolvane 0."},
        {{{"--help"}, {"--await-bus"}}, "Usage: tolvane "},
        {{{"--help"}, {"--frobnicate"}}, "Usage: tolvane "},
    };
    for (const Row& row : rows) {
        for (const Words& further : {Words(), style, both}) {
            for (const Words& words : inEveryOrder(row.given, further)) {
                SCOPED_TRACE(inOneLine(words));
                const ProcessOutcome outcome = outcomeOf(words);
                EXPECT_EQ(outcome.status, 0) << "signal " << outcome.signal;
                EXPECT_THAT(outcome.out, testing::StartsWith(std::string(row.start)));
                EXPECT_EQ(outcome.err, "");
            }
        }
    }
}

TEST(LaunchOptions, printWhatIsAskedForFirst) {
    EXPECT_THAT(outcomeOf({"-style", "fusion", "--help", "--version"}).out, testing::StartsWith("Usage: "));
    EXPECT_THAT(outcomeOf({"-style", "fusion", "--version", "--help"}).out, testing::StartsWith("tolvane "));
}

TEST(LaunchOptions, areRefusedWhereTheyContradict) {
    struct Row {
        std::vector<Words> given;
        std::string sentence;
    };
    const std::vector<Row> rows{
        {{{"--frobnicate"}}, "there is no option --frobnicate"},
        {{{""}}, "a file name is empty"},
        {{{"--services"}, {""}}, "a file name is empty"},
        {{{"file"}, {"--resolver"}}, "a file cannot be combined with --resolver"},
        {{{"file"}, {"--await-bus"}}, "a file cannot be combined with --await-bus"},
        {{{"--resolver"}, {"--await-bus"}}, "--await-bus cannot be combined with --resolver"},
        {{{"--services"}, {"--resolver"}}, "--services cannot be combined with --resolver"},
        {{{"--services"}, {"--await-bus"}}, "--services cannot be combined with --await-bus"},
    };
    for (const Row& row : rows) {
        for (const Words& further : {offscreen, both}) {
            for (const Words& words : inEveryOrder(row.given, further)) {
                SCOPED_TRACE(inOneLine(words));
                const ProcessOutcome outcome = outcomeOf(words);
                EXPECT_EQ(outcome.status, 2) << "signal " << outcome.signal;
                EXPECT_EQ(outcome.out, "");
                EXPECT_EQ(outcome.err, "tolvane: " + row.sentence + "\nTry 'tolvane --help'.\n");
            }
        }
    }
}

TEST(LaunchOptions, needADisplayUnlessTheyPrint) {
    const std::vector<std::vector<Words>> rows{
        {}, {{"file"}}, {{"--resolver"}}, {{"--await-bus"}}, {{"--services"}, {"file"}},
    };
    for (const std::vector<Words>& given : rows) {
        for (const Words& further : {Words(), style}) {
            for (const Words& words : inEveryOrder(given, further)) {
                SCOPED_TRACE(inOneLine(words));
                const ProcessOutcome outcome = outcomeOf(words);
                EXPECT_EQ(outcome.status, 1) << "signal " << outcome.signal;
                EXPECT_EQ(outcome.out, "");
                EXPECT_THAT(outcome.err, testing::HasSubstr("tolvane-cli"));
            }
        }
    }
    for (const std::string name : {"--help", "--version"}) {
        EXPECT_EQ(outcomeOf({"--", name}).status, 1) << "a name";
    }
}

TEST(LaunchOptions, showNothingWhereNoNamesAreGiven) {
    for (const Words& further : {offscreen, both}) {
        for (const Words& words : inEveryOrder({{"--services"}}, further)) {
            SCOPED_TRACE(inOneLine(words));
            const ProcessOutcome outcome = outcomeOf(words);
            EXPECT_EQ(outcome.status, 0) << "signal " << outcome.signal;
            EXPECT_EQ(outcome.out + outcome.err, "");
        }
    }
}

using LaunchOptionsOnADesktop = DesktopTest;

TEST_F(LaunchOptionsOnADesktop, showTheirWindow) {
    struct Row {
        std::vector<Words> given;
        std::string title;
    };
    const std::vector<Row> rows{
        {{}, startWindowTitle},
        {{{file("letter")}}, titleOf("letter")},
        {{{"--resolver"}}, resolverTitle},
    };
    for (const Row& row : rows) {
        for (const Words& further : {Words(), style}) {
            for (const Words& words : inEveryOrder(row.given, further)) {
                SCOPED_TRACE(inOneLine(words));
                Process& program = startTolvane(words);
                const std::string window = desktop().waitForWindow(row.title);
                EXPECT_EQ(desktop().windows().size(), 1U);
                quit(window, program);
            }
        }
    }
}

TEST_F(LaunchOptionsOnADesktop, showAnAlertForANameAlone) {
    for (const Words& words : inEveryOrder({{"--services"}, {file("letter")}}, style)) {
        SCOPED_TRACE(inOneLine(words));
        Process& program = startTolvane(words);
        // An alert is titled like the start window, but Return ends it and the program.
        desktop().press(desktop().waitForWindow(startWindowTitle), {"Return"});
        expectGoodEnd(program);
    }
}

TEST_F(LaunchOptionsOnADesktop, awaitTheBus) {
    for (const Words& words : inEveryOrder({{"--await-bus"}}, style)) {
        SCOPED_TRACE(inOneLine(words));
        Process& program = startTolvane(words);
        EXPECT_TRUE(waitUntil([this] { return callApplication({"Activate", "{}"}).status == 0; }));
        quit(desktop().waitForWindow(startWindowTitle), program);
    }
}

} // namespace
} // namespace tolvane::tests
