#include "tests/end_to_end/Corpus.h"
#include "tests/oracle/ReportText.h"
#include "tests/oracle/Tolvane.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace tolvane::tests {
namespace {

using Texts = std::vector<std::string>;

class Names : public testing::Test {
protected:
    // Runs the program in the folder, so that names can be given as they are.
    ProcessOutcome runInFolder(Texts arguments, std::string input = {}) const {
        auto setup = tolvane(std::move(arguments));
        setup.folder = folder.path();
        setup.input = std::move(input);
        return run(setup);
    }

    void expectReportOf(const std::string& name, const ProcessOutcome& outcome) const {
        const Heading heading{readableText(name), readableText(folder.path(name))};
        EXPECT_EQ(outcome.status, 0) << name;
        EXPECT_EQ(outcome.err, "") << name;
        const auto reports = splitReports(outcome.out, {heading});
        ASSERT_TRUE(reports) << name << "\n" << outcome.out;
        EXPECT_TRUE(fieldsOf(reports->front(), heading)) << outcome.out;
    }

    TemporaryFolder folder;
};

TEST_F(Names, canBeALoneDash) {
    static_cast<void>(folder.file("-"));
    expectReportOf("-", runInFolder({"report", "-"}));
}

TEST_F(Names, comeOutInTheOrderInWhichTheyWereGiven) {
    const auto names = oddNames();
    Texts arguments{"report", "--"};
    std::vector<Heading> headings;
    for (const auto& name : names) {
        headings.push_back(headingOf(folder.file(name)));
        arguments.push_back(name);
    }
    const auto given = runInFolder(arguments);
    EXPECT_EQ(given.status, 0) << given.err;
    EXPECT_TRUE(splitReports(given.out, headings));
    const auto listed = runInFolder({"report", "--files0-from=-"}, nulSeparated(names));
    EXPECT_EQ(listed.status, 0) << listed.err;
    EXPECT_TRUE(splitReports(listed.out, headings));
}

// The list's own name is a name like any other, whether it stands behind '=' or apart.
TEST_F(Names, ofAListAreBytesToo) {
    static_cast<void>(folder.file("listed"));
    for (const auto& name : oddNames()) {
        const auto list = folder.file(name, std::string("listed\0", 7));
        if (name != "-") {
            expectReportOf("listed", runInFolder({"report", "--files0-from=" + name}));
        }
        if (!name.starts_with('-')) {
            expectReportOf("listed", runInFolder({"report", "--files0-from", name}));
        }
    }
}

TEST_F(Names, mayHoldFoldersDotsAndSlashes) {
    static_cast<void>(folder.folder("folder"));
    static_cast<void>(folder.file("folder/file"));
    static_cast<void>(folder.symlink("link", "folder"));
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
        const auto outcome = runInFolder({"report", given});
        EXPECT_TRUE(
            outcome.out.starts_with("Details for file " + title + "\nPath: " + folder.path() + path + "\n"))
            << given << "\n"
            << outcome.out << outcome.err;
    }
    const auto throughSlash = runInFolder({"report", "link/"});
    EXPECT_TRUE(throughSlash.out.contains("\nType: NSFileTypeDirectory: ")) << throughSlash.out;
    const auto itself = runInFolder({"report", "link"});
    EXPECT_TRUE(itself.out.contains("\nType: NSFileTypeSymbolicLink: ")) << itself.out;
}

TEST_F(Names, thatMeanNothingAreComplainedOfAndTheOthersReported) {
    static_cast<void>(folder.file("first"));
    static_cast<void>(folder.file("last"));
    struct Case {
        std::string name;
        std::string complaint;
    };
    const std::vector<Case> cases{
        {"missing", "missing: No such file or directory"},
        {"", "'': No such file or directory"},
        {"first/below", "first/below: Not a directory"},
        {"first/", "first/: Not a directory"},
        {"two\nlines", "two\\nlines: No such file or directory"},
        {"\n", "\\n: No such file or directory"},
        {"red\x1b[31m", "red\x1b[31m: No such file or directory"},
        {"caf\xe9", "caf\xe9: No such file or directory"},
        {std::string(256, 'x'), std::string(256, 'x') + ": File name too long"},
        {std::string(5'000, '/') + std::string(300, 'x'),
         std::string(5'000, '/') + std::string(300, 'x') + ": File name too long"}};
    const std::vector<Heading> headings{headingOf(folder.path("first")), headingOf(folder.path("last"))};
    for (const auto& [name, complaint] : cases) {
        for (const auto& outcome :
             {runInFolder({"report", "first", name, "last"}),
              runInFolder({"report", "--files0-from=-"}, nulSeparated({"first", name, "last"}))}) {
            EXPECT_EQ(outcome.status, 1) << complaint;
            EXPECT_EQ(outcome.err, "tolvane-cli: " + complaint + "\n");
            EXPECT_TRUE(splitReports(outcome.out, headings)) << outcome.out;
        }
    }
}

TEST_F(Names, longerThanAnyPathAreCutAndComplainedOf) {
    const auto outcome = runInFolder({"report", "--files0-from=-"}, std::string(1'000'000, 'n'));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_TRUE(outcome.err.starts_with("tolvane-cli: nnnn")) << outcome.err.substr(0, 100);
    EXPECT_TRUE(outcome.err.ends_with("n: File name too long\n"));
    EXPECT_LT(outcome.err.size(), 10'000U);
}

} // namespace
} // namespace tolvane::tests
