#include "tests/end_to_end/Corpus.h"
#include "tests/oracle/ReportText.h"
#include "tests/oracle/Tolvane.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <string>
#include <utility>
#include <vector>
#include <sys/resource.h>

namespace tolvane::tests {
namespace {

using Texts = std::vector<std::string>;

class Names : public testing::Test {
protected:
    // Runs the program in the folder, so that names can be given as they are.
    ProcessOutcome runInFolder(Texts arguments, const std::string& input = {}) const {
        return run(tolvane(std::move(arguments), {.input = input, .folder = folder.path()}));
    }

    void expectReportOf(const std::string& name, const ProcessOutcome& outcome) const {
        EXPECT_EQ(outcome.status, 0) << name;
        EXPECT_EQ(outcome.err, "") << name;
        reportIn(outcome.out, folder.path(name));
    }

    TemporaryFolder folder;
};

TEST_F(Names, comeOutInTheOrderInWhichTheyWereGiven) {
    const auto names = oddNames();
    Texts arguments{"report", "--"};
    std::vector<Heading> headings;
    for (const auto& name : names) {
        headings.push_back(headingOf(folder.file(name)));
        arguments.push_back(name);
    }
    for (const auto& outcome :
         {runInFolder(arguments), runInFolder({"report", "--files0-from=-"}, nulSeparated(names))}) {
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        reportsIn(outcome.out, headings);
    }
}

// The list's own name may be any bytes too, behind '=' or as an argument of its own.
TEST_F(Names, ofAListAreBytesToo) {
    folder.file("listed");
    for (const auto& name : oddNames()) {
        folder.file(name, std::string("listed\0", 7));
        if (name != "-") {
            expectReportOf("listed", runInFolder({"report", "--files0-from=" + name}));
        }
        if (!name.starts_with('-')) {
            expectReportOf("listed", runInFolder({"report", "--files0-from", name}));
        }
    }
}

TEST_F(Names, mayHoldFoldersDotsAndSlashes) {
    folder.folder("folder");
    folder.file("folder/file");
    folder.symlink("link", "folder");
    struct Case {
        std::string given;
        std::string title;
        std::string path;
    };
    const std::vector<Case> cases{
        {"folder/file", "file", "/folder/file"},
        {"./folder//file", "file", "/folder/file"},
        {"folder/./file", "file", "/folder/file"},
        {"folder/../folder/file", "file", "/folder/../folder/file"},
        {"folder/", "folder", "/folder"},
        {"folder/.", "folder", "/folder"},
        {"link", "link", "/link"},
        {"link/file", "file", "/link/file"}};
    for (const auto& [given, title, path] : cases) {
        const auto report = runInFolder({"report", given}).out;
        EXPECT_TRUE(
            report.starts_with("Details for file " + title + "\nPath: " + folder.path() + path + "\n"))
            << given << "\n"
            << report;
    }
    for (const auto& [given, kind] : {std::pair{"link/", "Directory"}, std::pair{"link", "SymbolicLink"}}) {
        const auto report = runInFolder({"report", given}).out;
        EXPECT_TRUE(report.contains(std::string("\nType: NSFileType") + kind + ": ")) << report;
    }
}

TEST_F(Names, giveTheSameWhateverTheNumberOfThreads) {
    Texts names;
    for (int i = 0; i < 300; ++i) {
        const std::string name = "file " + std::to_string(i);
        names.push_back(name);
        if (i % 50 != 7) {
            folder.file(name, std::string(static_cast<std::size_t>(i), 'x'));
        }
    }
    const auto withoutDates = [](const std::string& text) {
        return std::regex_replace(
            text, std::regex("\non [^\n]*|\"gathered\":\\{[^}]*\\}|\"bookmark(Textbox)?\":\"[^\"]*\""), "");
    };
    for (const Texts& form : {Texts{"report"}, Texts{"report", "--json"}}) {
        std::set<std::string> outputs;
        std::set<std::string> complaints;
        for (const char* jobs : {"1", "2", "7"}) {
            Texts arguments = form;
            arguments.insert(arguments.end(), {"--files0-from=-", "--jobs", jobs});
            const auto outcome = runInFolder(arguments, nulSeparated(names));
            EXPECT_EQ(outcome.status, 1);
            EXPECT_EQ(linesOf(outcome.err).size(), 6U);
            complaints.insert(outcome.err);
            outputs.insert(withoutDates(outcome.out));
        }
        EXPECT_EQ(outputs.size(), 1U);
        EXPECT_EQ(complaints.size(), 1U);
    }
}

// Where there may be no more threads, the work is done by those that there are.
TEST_F(Names, areReportedOnWithoutFurtherThreadsToo) {
    const Texts names(100, folder.file("file"));
    ProcessSetup setup =
        tolvane({"report", "--files0-from=-", "--jobs", "4"}, {.input = nulSeparated(names)});
    // A thread's stack has this size.
    setup.prepare = [] {
        constexpr rlim_t tooMuch = rlim_t{1} << 46U;
        const rlimit stack{tooMuch, tooMuch};
        return setrlimit(RLIMIT_STACK, &stack) == 0;
    };
    const auto outcome = run(setup);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(reportsIn(outcome.out, std::vector<Heading>(100, headingOf(names.front()))).size(), 100U);
}

TEST_F(Names, thatMeanNothingAreComplainedOfAndTheOthersReported) {
    folder.file("first");
    folder.file("last");
    const std::string longName(256, 'x');
    const std::string longPath = std::string(5'000, '/') + std::string(300, 'x');
    const std::vector<std::pair<std::string, std::string>> cases{
        {"missing", "missing: No such file or directory"},
        {"", "'': No such file or directory"},
        {"first/below", "first/below: Not a directory"},
        {"first/", "first/: Not a directory"},
        {"two\nlines", "two\\nlines: No such file or directory"},
        {"\n", "\\n: No such file or directory"},
        {"red\x1b[31m", "red\x1b[31m: No such file or directory"},
        {"caf\xe9", "caf\xe9: No such file or directory"},
        {longName, longName + ": File name too long"},
        {longPath, longPath + ": File name too long"}};
    for (const auto& [name, complaint] : cases) {
        for (const auto& outcome :
             {runInFolder({"report", "first", name, "last"}),
              runInFolder({"report", "--files0-from=-"}, nulSeparated({"first", name, "last"}))}) {
            EXPECT_EQ(outcome.status, 1) << complaint;
            EXPECT_EQ(outcome.err, "tolvane-cli: " + complaint + "\n");
            reportsIn(outcome.out, {headingOf(folder.path("first")), headingOf(folder.path("last"))});
        }
    }
}

TEST_F(Names, ofListsThatCannotBeReadAreComplainedOf) {
    for (const auto& [list, reason] :
         {std::pair{folder.path("missing"), ": No such file or directory"},
          std::pair{folder.path(), ": Is a directory"}}) {
        expectComplaint(run(tolvane({"report", "--files0-from", list})), list + reason);
    }
}

TEST_F(Names, thatAreWrongUsageAreComplainedOfInOneLine) {
    const auto outcome = run(tolvane({"report", "--files0-from=-", "two\nlines"}));
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    const auto lines = linesOf(outcome.err);
    ASSERT_EQ(lines.size(), 2U) << outcome.err;
    EXPECT_TRUE(lines[0].starts_with("tolvane-cli: ") && lines[0].contains("two\\nlines")) << outcome.err;
    EXPECT_TRUE(lines[1].contains("--help")) << outcome.err;
}

} // namespace
} // namespace tolvane::tests
