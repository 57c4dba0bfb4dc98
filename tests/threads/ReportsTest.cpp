// The terminal program with several threads. A data race that the thread sanitizer finds is a failure of the
// run.
#include "tests/oracle/ReportText.h"
#include "tests/oracle/Tolvane.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

TEST(Reports, byManyThreadsAreAllThereInOrder) {
    const TemporaryFolder folder;
    std::vector<std::string> paths;
    std::vector<Heading> headings;
    for (int i = 0; i < 500; ++i) {
        const std::string subfolder = "folder " + std::to_string(i / 40);
        if (i % 40 == 0) {
            folder.folder(subfolder);
        }
        paths.push_back(folder.file(subfolder + "/file " + std::to_string(i)));
        headings.push_back(headingOf(paths.back()));
    }
    std::vector<std::string> names = paths;
    names.insert(names.begin() + 250, folder.path("missing"));
    for (const std::string jobs : {"1", "2", "8"}) {
        SCOPED_TRACE(jobs);
        const auto byThreads = [&](bool json) {
            ProcessSetup setup = reportOn(names, json);
            setup.command.insert(setup.command.end(), {"--jobs", jobs});
            auto outcome = run(setup);
            EXPECT_EQ(outcome.status, 1);
            EXPECT_EQ(
                outcome.err, "tolvane-cli: " + folder.path("missing") + ": No such file or directory\n");
            return outcome.out;
        };
        EXPECT_EQ(reportsIn(byThreads(false), headings).size(), headings.size());
        std::vector<std::string> objects;
        for (const std::string& line : linesOf(byThreads(true))) {
            objects.push_back(nlohmann::json::parse(line).value("pathTextbox", ""));
        }
        EXPECT_EQ(objects, paths);
    }
}

TEST(Attributes, byManyThreadsAreAllThereInOrder) {
    const TemporaryFolder folder;
    std::vector<std::string> names;
    for (int i = 0; i < 300; ++i) {
        names.push_back(folder.file("file " + std::to_string(i)));
    }
    const auto byThreads = [&names](const char* jobs) {
        return run(
            tolvane({"attributes", "--files0-from=-", "--jobs", jobs}, {.input = nulSeparated(names)}));
    };
    const auto text = byThreads("8");
    EXPECT_EQ(text.status, 0) << text.err;
    EXPECT_EQ(text.out, byThreads("1").out);
    std::vector<std::string> headings;
    std::ranges::transform(names, std::back_inserter(headings), [](const std::string& name) {
        return "Attributes of " + name + ": none";
    });
    std::vector<std::string> printed = linesOf(text.out);
    std::erase_if(printed, [](const std::string& line) { return !line.starts_with("Attributes of "); });
    EXPECT_EQ(printed, headings);
}

TEST(FoundBookmarks, byManyThreadsAreAllThereInOrder) {
    const TemporaryFolder folder;
    const auto bookmark = run(tolvane({"bookmark", "make", folder.path()}));
    std::string list;
    for (int subfolder = 10; subfolder < 40; ++subfolder) {
        folder.folder(std::to_string(subfolder));
        for (int i = 0; i < 10; ++i) {
            const std::string name = std::to_string(subfolder) + "/" + std::to_string(i);
            folder.file(name, i % 2 == 0 ? "nothing" : "<string>" + bookmark.out + "</string>");
            list += i % 2 == 0 ? "" : folder.path(name) + "\n";
        }
    }
    const auto text = run(tolvane({"bookmark", "find", "--recursive", "--jobs", "8", folder.path()}));
    EXPECT_EQ(text.status, 0) << text.err;
    std::string names;
    for (const std::string& line : linesOf(text.out)) {
        names += line.substr(0, line.find('\t')) + "\n";
    }
    EXPECT_EQ(names, list);
}

} // namespace
} // namespace tolvane::tests
