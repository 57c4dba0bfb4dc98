#include "tests/end_to_end/Corpus.h"
#include "tests/oracle/ReportText.h"
#include "tests/oracle/Tolvane.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

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
    const auto names = namesOfEveryKind();
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
    for (const auto& name : namesOfEveryKind()) {
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

// Where there may be no more threads, the work is done by those that there are.
TEST_F(Names, areReportedOnWithoutFurtherThreadsToo) {
    const Texts names(100, folder.file("file"));
    ProcessSetup setup = reportOn(names);
    setup.command.insert(setup.command.end(), {"--jobs", "4"});
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

} // namespace
} // namespace tolvane::tests
