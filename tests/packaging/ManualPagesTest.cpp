#include "tests/packaging/Help.h"
#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <regex>
#include <string>

namespace tolvane::tests {
namespace {

using testing::HasSubstr;

/// The page's source with dashes as they are displayed.
std::string pageOf(const std::string& program) {
    std::string page = contentsOfFile(madePath(program + ".1"));
    for (std::size_t at = 0; (at = page.find("\\-", at)) != std::string::npos; ++at) {
        page.erase(at, 1);
    }
    return page;
}

/// The options that head the paragraphs of the section OPTIONS.
Texts optionsOf(const std::string& page) {
    const std::size_t begin = page.find(".SH OPTIONS\n");
    const std::size_t end = page.find(".SH ", begin + 1);
    const std::string section = page.substr(begin, end - begin);
    static const std::regex head("\n\\.TP\n(.*)");
    std::string heads;
    for (std::sregex_iterator found(section.begin(), section.end(), head), last; found != last; ++found) {
        heads += (*found)[1].str() + "\n";
    }
    // These join an option to the name of its value.
    for (char& c : heads) {
        c = c == '\\' || c == '~' ? ' ' : c;
    }
    return optionsIn(heads);
}

TEST(ManualPages, listTheOptionsOfTheDesktopProgram) {
    EXPECT_EQ(optionsOf(pageOf("tolvane")), desktopOptions());
}

TEST(ManualPages, listTheCommandsAndOptionsOfTheTerminalProgram) {
    const std::string page = pageOf("tolvane-cli");
    Texts all;
    for (auto [command, options] : terminalOptions()) {
        all.merge(options);
        if (!command.empty() && command != "bookmark") {
            EXPECT_THAT(page, HasSubstr(".SS " + command + "\n"));
        }
    }
    EXPECT_EQ(optionsOf(page), all);
}

TEST(ManualPages, areOfTheProgramsVersion) {
    for (const std::string program : {"tolvane", "tolvane-cli"}) {
        EXPECT_THAT(pageOf(program), HasSubstr("\"Tolvane " + versionOf(program) + "\"")) << program;
    }
}

TEST(ManualPages, haveEverySection) {
    for (const std::string program : {"tolvane", "tolvane-cli"}) {
        for (const std::string section :
             {"NAME", "SYNOPSIS", "DESCRIPTION", "OPTIONS", "FILES", "ENVIRONMENT", "EXIT STATUS", "EXAMPLES",
              "SEE ALSO"}) {
            EXPECT_THAT(pageOf(program), HasSubstr(".SH " + section + "\n")) << program;
        }
    }
}

TEST(ManualPages, areFormattedWithoutAWarning) {
    if (!isInstalled("man")) {
        GTEST_SKIP() << "man is not installed";
    }
    for (const std::string program : {"tolvane", "tolvane-cli"}) {
        ProcessSetup setup{.command = {"man", "--warnings", "-E", "UTF-8", "-l", madePath(program + ".1")}};
        setup.environment.emplace_back("MANWIDTH=80");
        const ProcessOutcome outcome = run(setup);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.err, "");
        EXPECT_THAT(outcome.out, HasSubstr("EXIT STATUS"));
    }
}

} // namespace
} // namespace tolvane::tests
