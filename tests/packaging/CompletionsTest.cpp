// What the shells offer. bash and zsh are used by typing on a terminal.
#include "tests/packaging/Help.h"
#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using testing::Contains;
using testing::IsSupersetOf;
using testing::Not;

class Completions : public testing::TestWithParam<std::string> {
protected:
    void SetUp() override {
        for (const std::string& program : {GetParam(), std::string("script")}) {
            if (!isInstalled(program)) {
                GTEST_SKIP() << program << " is not installed";
            }
        }
        files_.file("a b");
        files_.file("letter");
    }

    /// What is offered for the last word of the line.
    Texts offered(const std::string& line) {
        return GetParam() == "fish" ? offeredByFish(line) : offeredOnTerminal(line);
    }

    /// Of those the long options, as if their values were not begun.
    Texts optionsOffered(const std::string& line) {
        Texts options;
        for (const std::string& text : offered(line)) {
            if (text.starts_with("--") && text.size() > 2) {
                options.insert(text.substr(0, text.find('=')));
            }
        }
        return options;
    }

private:
    Texts offeredByFish(const std::string& line) {
        const ProcessOutcome outcome = run(setupOf(
            {"fish", "--no-config", "-c",
             "source $argv[1]/tolvane.fish; source $argv[1]/tolvane-cli.fish; complete -C $argv[2]",
             sourcePath("packaging/completions"), line}));
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        EXPECT_EQ(outcome.err, "");
        Texts texts;
        for (const std::string& row : linesOf(outcome.out)) {
            texts.insert(row.substr(0, row.find('\t')));
        }
        return texts;
    }

    /// Types the line and the key that inserts everything offered. The program that is then called is a
    /// function that prints its arguments.
    Texts offeredOnTerminal(const std::string& line) {
        const bool isBash = GetParam() == "bash";
        const std::string completions = sourcePath("packaging/completions");
        const std::string printing = "() { printf 'offered:'; printf '[%s]' \"$@\"; printf ':end'; }\n";
        std::string preparation = "PS1='ready> '\ntolvane" + printing + "tolvane-cli" + printing;
        if (isBash) {
            preparation += "bind 'set enable-bracketed-paste off'\nsource '" + completions
                           + "/tolvane.bash'\nsource '" + completions + "/tolvane-cli.bash'\n";
        } else {
            preparation += "fpath=('" + completions
                           + "' $fpath)\n"
                             "autoload -Uz compinit && compinit -u -D\n"
                             "zle -C all-matches complete-word _generic\n"
                             "bindkey '^Xa' all-matches\n"
                             "zstyle ':completion:all-matches::::' completer _all_matches _complete\n"
                             "zstyle ':completion:all-matches:*' insert true\n";
        }
        const std::string prepared = home_.file(isBash ? "bashrc" : ".zshrc", preparation);
        const std::string shell =
            isBash ? "exec bash --noprofile --rcfile '" + prepared + "' -i" : "exec zsh -d -i";
        Process process(setupOf({"script", "--quiet", "--command", shell, "/dev/null"}));
        EXPECT_TRUE(process.waitForOutput([](const std::string& out) { return out.contains("ready> "); }));
        process.write(
            line
            + (isBash ? "\x1b*\n"
                      : "\x18"
                        "a\n"));
        EXPECT_TRUE(process.waitForOutput([](const std::string& out) { return out.contains(":end"); }));
        process.write("exit\n");
        return wordsAfter(line, process.finish().out);
    }

    static Texts wordsAfter(const std::string& line, const std::string& shown) {
        const std::size_t begin = shown.find("offered:");
        const std::size_t end = shown.find(":end");
        if (begin == std::string::npos || end == std::string::npos) {
            ADD_FAILURE() << shown;
            return {};
        }
        const std::string printed = shown.substr(begin, end - begin);
        static const std::regex inBrackets("\\[([^\\]]*)\\]");
        std::vector<std::string> words;
        for (std::sregex_iterator word(printed.begin(), printed.end(), inBrackets), last; word != last;
             ++word) {
            words.push_back((*word)[1]);
        }
        // All but the first and the last of the line's words, which are the program and what is completed.
        const auto given = std::count(line.begin(), line.end(), ' ') - 1;
        return {words.begin() + std::min<std::ptrdiff_t>(given, std::ssize(words)), words.end()};
    }

    ProcessSetup setupOf(std::vector<std::string> command) {
        ProcessSetup setup{.command = std::move(command), .folder = files_.path()};
        setup.environment.insert(
            setup.environment.end(),
            {"HOME=" + home_.path(), "ZDOTDIR=" + home_.path(), "TERM=dumb", "SHELL=/bin/sh"});
        return setup;
    }

    TemporaryFolder files_;
    TemporaryFolder home_;
};

TEST_P(Completions, offerTheCommands) {
    EXPECT_THAT(offered("tolvane-cli "), IsSupersetOf({"report", "attributes", "bookmark"}));
    EXPECT_THAT(offered("tolvane-cli bookmark "), IsSupersetOf({"make", "read", "show", "resolve", "find"}));
    EXPECT_EQ(offered("tolvane-cli bookmark res"), Texts{"resolve"});
}

TEST_P(Completions, offerFilesWhereFilesAreTaken) {
    const Texts files{"a b", "letter"};
    EXPECT_EQ(offered("tolvane "), files);
    EXPECT_EQ(offered("tolvane -- l"), Texts{"letter"});
    EXPECT_EQ(offered("tolvane-cli report "), files);
    EXPECT_EQ(offered("tolvane-cli report letter a"), Texts{"a b"});
    EXPECT_EQ(offered("tolvane-cli report --files0-from l"), Texts{"letter"});
    EXPECT_EQ(offered("tolvane-cli report --files0-from=l"), Texts{"--files0-from=letter"});
    EXPECT_EQ(offered("tolvane-cli attributes "), files);
    EXPECT_EQ(offered("tolvane-cli attributes --explain x --value-file l"), Texts{"letter"});
    EXPECT_EQ(offered("tolvane-cli bookmark make -- l"), Texts{"letter"});
    EXPECT_EQ(offered("tolvane-cli bookmark read "), files);
    EXPECT_EQ(offered("tolvane-cli bookmark find letter a"), Texts{"a b"});
    EXPECT_EQ(offered("tolvane-cli bookmark show --file l"), Texts{"letter"});
    EXPECT_EQ(offered("tolvane-cli bookmark resolve --file=l"), Texts{"--file=letter"});
}

TEST_P(Completions, offerNoFilesWhereATextIsTaken) {
    EXPECT_THAT(offered("tolvane-cli attributes --hex l"), Not(Contains("letter")));
    EXPECT_THAT(offered("tolvane-cli bookmark show l"), Not(Contains("letter")));
    EXPECT_THAT(offered("tolvane-cli bookmark resolve l"), Not(Contains("letter")));
}

TEST_P(Completions, offerTheOptionsThatTheHelpNames) {
    for (auto [command, named] : terminalOptions()) {
        std::erase_if(named, [](const std::string& option) { return !option.starts_with("--"); });
        const std::string line = "tolvane-cli " + command + (command.empty() ? "--" : " --");
        EXPECT_EQ(optionsOffered(line), named) << line;
    }
    EXPECT_EQ(optionsOffered("tolvane --"), desktopOptions());
}

INSTANTIATE_TEST_SUITE_P(, Completions, testing::Values("bash", "zsh", "fish"), [](const auto& shell) {
    return shell.param;
});

} // namespace
} // namespace tolvane::tests
