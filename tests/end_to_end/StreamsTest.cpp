#include "tests/oracle/ReportText.h"
#include "tests/oracle/Tolvane.h"
#include "tests/support/BookmarkCorpus.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>
#include <fcntl.h>
#include <unistd.h>

namespace tolvane::tests {
namespace {

using testing::StartsWith;
using Texts = std::vector<std::string>;

class Streams : public testing::Test {
protected:
    TemporaryFolder folder;
    std::string file = folder.file("file");
    std::string missing = folder.path("missing");
};

// In every way to ask for output, since each writes it in its own way.
TEST_F(Streams, outputThatFailsIsReported) {
    const auto full = openedFile("/dev/full", O_WRONLY);
    auto pipe = newPipe();
    EXPECT_TRUE(pipe.readEnd.close());
    const std::string alias = corpusPath("note.alias");
    for (const Texts& arguments :
         {Texts{"report", "/"}, Texts{"report", "--json", "/"}, Texts{"--help"}, Texts{"report", "--help"},
          Texts{"--version"}, Texts{"bookmark", "read", alias}, Texts{"bookmark", "show", "--file", alias},
          Texts{"bookmark", "show", "--file", alias, "--json"}, Texts{"bookmark", "--help"},
          Texts{"bookmark", "show", "--help"}}) {
        const auto expectFailure = [&](const ProcessSetup& setup, const std::string& reason) {
            SCOPED_TRACE(testing::PrintToString(arguments) + reason);
            expectComplaint(run(tolvane(arguments, setup)), "standard output: " + reason);
        };
        expectFailure({.outputDescriptor = full.number()}, "No space left on device");
        expectFailure({.outputDescriptor = pipe.writeEnd.number()}, "Broken pipe");
        expectFailure({.closedDescriptors = {1}}, "Bad file descriptor");
    }
}

TEST_F(Streams, aReaderThatGoesAwayEndsALongRun) {
    auto pipe = newPipe();
    const auto list = folder.file("list", nulSeparated(Texts(20'000, file)));
    Process process(tolvane({"report", "--files0-from", list}, {.outputDescriptor = pipe.writeEnd.number()}));
    EXPECT_TRUE(pipe.writeEnd.close());
    std::array<char, 100> beginning{};
    EXPECT_EQ(read(pipe.readEnd.number(), beginning.data(), beginning.size()), std::ssize(beginning));
    EXPECT_TRUE(pipe.readEnd.close());
    expectComplaint(process.finish(), "standard output: Broken pipe");
}

TEST_F(Streams, complaintsThatCannotBeWrittenStillShowInTheStatus) {
    const auto full = openedFile("/dev/full", O_WRONLY);
    // Without the stream the next file is reported on; where writing to it fails, the run ends.
    for (const auto& setup :
         {tolvane({"report", missing, file}, {.closedDescriptors = {2}}),
          tolvane({"report", file, missing, file}, {.errorDescriptor = full.number()})}) {
        const auto outcome = run(setup);
        EXPECT_EQ(outcome.status, 1) << "ended by signal " << outcome.signal;
        reportIn(outcome.out, file);
    }
}

TEST_F(Streams, inputThatCannotBeReadIsReported) {
    const std::string noInput = "standard input: Bad file descriptor";
    for (const Texts& verb : {Texts{"report", "--files0-from"}, Texts{"bookmark", "show", "--file"}}) {
        for (const auto& [path, reason] :
             {std::pair{missing, "No such file or directory"}, std::pair{folder.path(), "Is a directory"}}) {
            Texts arguments = verb;
            arguments.push_back(path);
            expectComplaint(run(tolvane(arguments)), path + ": " + reason);
        }
    }
    expectComplaint(
        run(tolvane({"bookmark", "show", "--file", "/dev/zero"})),
        "/dev/zero: more than 25165824 bytes are not read");
    for (const Texts& arguments : {Texts{"report", "--files0-from=-"}, Texts{"bookmark", "show"}}) {
        expectComplaint(run(tolvane(arguments, {.closedDescriptors = {0}})), noInput);
    }
}

// What one stream is says nothing about the other.
TEST_F(Streams, aTerminalAtOneLeavesTheOtherAsItIs) {
    const auto red = folder.file("red\x1b");
    missing += '\x1b';
    const std::string reason = ": No such file or directory\n";
    const auto output = runOnTerminal(tolvane({"report", red, missing}), true);
    EXPECT_THAT(output.out, StartsWith("Details for file red\\x1b\n"));
    EXPECT_EQ(output.err, "tolvane-cli: " + missing + reason);
    const auto errors = runOnTerminal(tolvane({"report", red, missing}), false);
    EXPECT_THAT(errors.out, StartsWith("Details for file red\x1b\n"));
    EXPECT_EQ(errors.err, "tolvane-cli: " + folder.path("missing\\x1b") + reason);
}

TEST_F(Streams, complaintsAboutUsageAreOneLineAndEscaped) {
    const ProcessSetup wrong = tolvane({"report", "--files0-from=-", "two\nlines\x1b"});
    for (const auto& outcome : {run(wrong), runOnTerminal(wrong, false)}) {
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.out, "");
        const auto lines = linesOf(outcome.err);
        ASSERT_EQ(lines.size(), 2U) << outcome.err;
        EXPECT_THAT(
            lines[0], testing::AllOf(StartsWith("tolvane-cli: "), testing::HasSubstr("two\\nlines\\x1b")));
        EXPECT_THAT(lines[1], testing::HasSubstr("--help"));
    }
    const auto option = runOnTerminal(tolvane({"report", "--red\x1b"}), false);
    EXPECT_EQ(option.status, 2);
    EXPECT_FALSE(option.err.contains('\x1b')) << option.err;
}

// What is written into a pipe that does not block has to arrive all the same.
TEST_F(Streams, outputThatDoesNotBlockIsWrittenToTheEnd) {
    constexpr std::size_t count = 1'000;
    auto pipe = newPipe();
    ASSERT_EQ(fcntl(pipe.writeEnd.number(), F_SETFL, O_NONBLOCK), 0);
    const auto list = folder.file("list", nulSeparated(Texts(count, file)));
    Process process(
        tolvane({"report", "--json", "--files0-from", list}, {.outputDescriptor = pipe.writeEnd.number()}));
    EXPECT_TRUE(pipe.writeEnd.close());
    std::string text;
    std::array<char, 4'096> buffer{};
    for (ssize_t length = 1; length > 0;) {
        length = read(pipe.readEnd.number(), buffer.data(), buffer.size());
        text.append(buffer.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
    }
    const auto outcome = process.finish();
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(linesOf(text).size(), count);
}

TEST_F(Streams, namesAreReportedOnAsTheyCome) {
    const auto other = folder.file("other");
    for (const bool json : {false, true}) {
        Process process(reportOn({file}, json));
        const auto shows = [](const std::string& path) {
            return [path](const std::string& out) { return out.contains(path) && out.ends_with('\n'); };
        };
        EXPECT_TRUE(process.waitForOutput(shows(file)));
        process.write(nulSeparated({other}));
        EXPECT_TRUE(process.waitForOutput(shows(other)));
        EXPECT_EQ(process.finish().status, 0);
    }
}

TEST_F(Streams, reportsAndComplaintsInOnePlaceKeepTheirOrder) {
    const auto both = folder.file("both");
    const auto descriptor = openedFile(both, O_WRONLY | O_APPEND);
    const auto outcome = run(tolvane(
        {"report", file, missing, file},
        {.outputDescriptor = descriptor.number(), .errorDescriptor = descriptor.number()}));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(
        contentsOfFile(both),
        testing::MatchesRegex("Details for file file\n.*\ntolvane-cli: .*Details for file file\n.*"));
}

TEST_F(Streams, theDateRowFollowsTheLocaleAndTheTimeZone) {
    struct Case {
        std::string locale;
        std::string zone;
        std::string zoneName;
    };
    const std::vector<Case> cases{
        {"LC_ALL=en_US.UTF-8", "TZ=America/New_York", "Eastern "},
        {"LC_ALL=de_DE.UTF-8", "TZ=Europe/Berlin", "Mitteleurop\u00e4ische "}};
    for (const auto& [locale, zone, zoneName] : cases) {
        const auto outcome = run(tolvane({"report", file}, {.environment = {locale, zone}}));
        EXPECT_THAT(reportIn(outcome.out, file)["date"], testing::HasSubstr(zoneName));
    }
}

} // namespace
} // namespace tolvane::tests
