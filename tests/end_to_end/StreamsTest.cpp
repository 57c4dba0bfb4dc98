#include "tests/oracle/ReportText.h"
#include "tests/oracle/Tolvane.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <string>
#include <vector>
#include <fcntl.h>
#include <unistd.h>

namespace tolvane::tests {
namespace {

using platform::FileDescriptor;
using Texts = std::vector<std::string>;

FileDescriptor opened(const std::string& path, int flags) {
    const int number = open(path.c_str(), flags | O_CLOEXEC);
    EXPECT_GE(number, 0) << path << ": " << std::strerror(errno);
    return FileDescriptor::owned(number);
}

class Streams : public testing::Test {
protected:
    TemporaryFolder folder;
    std::string file = folder.file("file");
};

// Every way to ask for output, since each has its own way to the stream.
const std::vector<Texts>& requests() {
    static const std::string alias = TOLVANE_SOURCE_DIR "/tests/data/bookmarks/note.alias";
    static const std::vector<Texts> all{
        {"report", "/"},
        {"report", "--json", "/"},
        {"--help"},
        {"report", "--help"},
        {"--version"},
        {"bookmark", "read", alias},
        {"bookmark", "show", "--file", alias},
        {"bookmark", "show", "--file", alias, "--json"},
        {"bookmark", "--help"},
        {"bookmark", "show", "--help"}};
    return all;
}

TEST_F(Streams, aFullDiskIsToldOf) {
    for (const auto& request : requests()) {
        const auto full = opened("/dev/full", O_WRONLY);
        auto setup = tolvane(request);
        setup.outputDescriptor = full.number();
        const auto outcome = run(setup);
        EXPECT_EQ(outcome.status, 1) << request.back();
        EXPECT_EQ(outcome.err, "tolvane-cli: standard output: No space left on device\n");
    }
}

TEST_F(Streams, aClosedPipeIsToldOf) {
    for (const auto& request : requests()) {
        std::array<int, 2> ends{};
        ASSERT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
        ASSERT_EQ(close(ends[0]), 0);
        const auto writeEnd = FileDescriptor::owned(ends[1]);
        auto setup = tolvane(request);
        setup.outputDescriptor = writeEnd.number();
        const auto outcome = run(setup);
        EXPECT_EQ(outcome.status, 1) << request.back() << " ended by signal " << outcome.signal;
        EXPECT_EQ(outcome.err, "tolvane-cli: standard output: Broken pipe\n");
    }
}

TEST_F(Streams, anOutputThatIsNotOpenIsToldOf) {
    for (const auto& request : requests()) {
        auto setup = tolvane(request);
        setup.closedDescriptors = {1};
        const auto outcome = run(setup);
        EXPECT_EQ(outcome.status, 1) << request.back();
        EXPECT_EQ(outcome.err, "tolvane-cli: standard output: Bad file descriptor\n");
    }
}

TEST_F(Streams, aReaderThatGoesAwayEndsALongRun) {
    const std::vector<std::string> names(20'000, file);
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
    auto readEnd = FileDescriptor::owned(ends[0]);
    const auto list = folder.file("list", nulSeparated(names));
    auto setup = tolvane({"report", "--files0-from", list});
    setup.outputDescriptor = ends[1];
    Process process(setup);
    ASSERT_EQ(close(ends[1]), 0);
    std::array<char, 100> beginning{};
    EXPECT_EQ(read(readEnd.number(), beginning.data(), beginning.size()), std::ssize(beginning));
    EXPECT_TRUE(readEnd.close());
    const auto outcome = process.finish();
    EXPECT_EQ(outcome.status, 1) << "ended by signal " << outcome.signal;
    EXPECT_EQ(outcome.err, "tolvane-cli: standard output: Broken pipe\n");
}

TEST_F(Streams, complaintsNobodyAskedForStillShowInTheStatus) {
    auto setup = tolvane({"report", folder.path("missing"), file});
    setup.closedDescriptors = {2};
    const auto outcome = run(setup);
    EXPECT_EQ(outcome.status, 1) << "ended by signal " << outcome.signal;
    EXPECT_TRUE(splitReports(outcome.out, {headingOf(file)})) << outcome.out;
}

TEST_F(Streams, endsWhenComplaintsGetLost) {
    const auto full = opened("/dev/full", O_WRONLY);
    auto setup = tolvane({"report", file, folder.path("missing"), file});
    setup.errorDescriptor = full.number();
    const auto outcome = run(setup);
    EXPECT_EQ(outcome.status, 1) << "ended by signal " << outcome.signal;
    EXPECT_TRUE(splitReports(outcome.out, {headingOf(file)})) << outcome.out;
}

TEST_F(Streams, aListOnAnInputThatIsNotOpenIsToldOf) {
    auto setup = tolvane({"report", "--files0-from=-"});
    setup.closedDescriptors = {0};
    const auto outcome = run(setup);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "tolvane-cli: standard input: Bad file descriptor\n");
}

// What is written into a pipe that does not block has to arrive all the same.
TEST_F(Streams, outputThatDoesNotBlockIsWrittenToTheEnd) {
    constexpr std::size_t count = 1'000;
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
    const auto readEnd = FileDescriptor::owned(ends[0]);
    ASSERT_EQ(fcntl(ends[1], F_SETFL, O_NONBLOCK), 0);
    const auto list = folder.file("list", nulSeparated(std::vector(count, file)));
    auto setup = tolvane({"report", "--json", "--files0-from", list});
    setup.outputDescriptor = ends[1];
    Process process(setup);
    ASSERT_EQ(close(ends[1]), 0);
    std::string text;
    std::array<char, 4'096> buffer{};
    for (ssize_t length = 1; length > 0;) {
        length = read(readEnd.number(), buffer.data(), buffer.size());
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

TEST_F(Streams, theLastNameOfAListMayLackItsNul) {
    const auto other = folder.file("other");
    auto setup = tolvane({"report", "--files0-from=-"});
    setup.input = file + '\0' + other;
    const auto outcome = run(setup);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_TRUE(splitReports(outcome.out, {headingOf(file), headingOf(other)})) << outcome.out;
}

TEST_F(Streams, reportsAndComplaintsInOnePlaceKeepTheirOrder) {
    const auto both = folder.file("both");
    {
        const auto descriptor = opened(both, O_WRONLY | O_APPEND);
        auto setup = tolvane({"report", file, folder.path("missing"), file});
        setup.outputDescriptor = descriptor.number();
        setup.errorDescriptor = descriptor.number();
        EXPECT_EQ(run(setup).status, 1);
    }
    const auto text = contentsOfFile(both);
    const auto first = text.find("Details for file file\n");
    const auto complaint = text.find("\ntolvane-cli: ");
    const auto second = text.rfind("Details for file file\n");
    ASSERT_NE(complaint, std::string::npos) << text;
    EXPECT_LT(first, complaint);
    EXPECT_LT(complaint, second);
}

TEST_F(Streams, reportsAreParted) {
    const auto one = run(tolvane({"report", file}));
    const auto three = run(tolvane({"report", file, file, file}));
    const auto heading = headingOf(file);
    EXPECT_TRUE(splitReports(one.out, {heading})) << one.out;
    EXPECT_FALSE(one.out.ends_with("\n\n"));
    EXPECT_FALSE(one.out.starts_with('\n'));
    const auto reports = splitReports(three.out, {heading, heading, heading});
    ASSERT_TRUE(reports) << three.out;
    for (const auto& report : *reports) {
        EXPECT_TRUE(fieldsOf(report, heading)) << report;
    }
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
        auto setup = tolvane({"report", file});
        setup.environment = {locale, zone};
        const auto reports = splitReports(run(setup).out, {headingOf(file)});
        ASSERT_TRUE(reports);
        const auto fields = fieldsOf(reports->front(), headingOf(file));
        ASSERT_TRUE(fields);
        EXPECT_TRUE(fields->at("date").contains(zoneName)) << fields->at("date");
    }
}

} // namespace
} // namespace tolvane::tests
