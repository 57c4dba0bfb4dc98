#include "cli/NameWorkers.h"

#include "platform/values/FatalError.h"
#include "tests/support/Streams.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <latch>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace tolvane::tests {
namespace {

using cli::ExitStatus;
using cli::NameResults;
using namespace std::string_literals;

class NameWorkersTest : public testing::Test {
protected:
    static std::vector<std::string> numbered(std::size_t count) {
        std::vector<std::string> names;
        for (std::size_t i = 0; i < count; ++i) {
            names.push_back(std::to_string(i));
        }
        return names;
    }

    static std::string lines(std::size_t count) {
        std::string text;
        for (const std::string& name : numbered(count)) {
            text += name + "\n";
        }
        return text;
    }

    static void print(const std::string& name, NameResults& results) { results.output().write(name + "\n"); }

    ExitStatus run(const std::vector<std::string>& given, const cli::NameWork& work) {
        cli::ListedNames names(given);
        return run(names, work);
    }

    ExitStatus run(cli::Names& names, const cli::NameWork& work) {
        cli::Output output(outputText);
        return cli::workOnNames(names, work, output, errorText);
    }

    TextOutput outputText;
    TextOutput errorText;
};

class NameWorkersByThreads : public NameWorkersTest, public testing::WithParamInterface<std::size_t> {};

INSTANTIATE_TEST_SUITE_P(, NameWorkersByThreads, testing::Values(1U, 4U), testing::PrintToStringParamName());

TEST_F(NameWorkersTest, printsInTheOrderOfTheNamesWhateverTheNumberOfThreads) {
    for (const std::size_t jobs : {0U, 1U, 2U, 3U, 8U}) {
        for (const std::size_t atOnce : {1U, 3U, 1000U}) {
            outputText.text.clear();
            EXPECT_EQ(
                run(numbered(500), {.work = print, .jobs = jobs, .namesAtOnce = atOnce}),
                ExitStatus::success);
            EXPECT_EQ(outputText.text, lines(500)) << jobs << " threads, " << atOnce << " names at once";
        }
    }
}

// The first name is done last, whichever thread works on it.
TEST_F(NameWorkersTest, keepsWhatIsDoneAheadOfItsTurn) {
    std::latch othersDone(3);
    const auto work = [&](const std::string& name, NameResults& results) {
        if (name == "0") {
            othersDone.wait();
        }
        print(name, results);
        if (name != "0") {
            EXPECT_EQ(outputText.writes, 0U);
            othersDone.count_down();
        }
    };
    run(numbered(4), {.work = work, .jobs = 4});
    EXPECT_EQ(outputText.text, lines(4));
}

TEST_F(NameWorkersTest, printsWhatIsDoneInItsTurnAtOnce) {
    const auto work = [&](const std::string& name, NameResults& results) {
        EXPECT_EQ(outputText.text, lines(std::stoul(name)));
        print(name, results);
    };
    run(numbered(40), {.work = work, .namesAtOnce = 16});
    EXPECT_EQ(outputText.writes, 40U);
}

TEST_F(NameWorkersTest, holdsOnlySoMuchOfWhatIsAheadOfItsTurn) {
    const std::string large(50'000, 'x');
    std::atomic<std::size_t> parts = 0;
    std::latch isOneHeld(1);
    const auto work = [&](const std::string& name, NameResults& results) {
        if (name == "0") {
            isOneHeld.wait();
            std::this_thread::yield();
            EXPECT_EQ(parts, 1U) << "the other thread waits with its second part";
            return;
        }
        for (int part = 0; part < 3; ++part) {
            results.output().write(large);
            results.output().flush();
            ++parts;
            isOneHeld.try_wait() ? void() : isOneHeld.count_down();
        }
    };
    run(numbered(2), {.work = work, .jobs = 2});
    EXPECT_EQ(outputText.text.size(), 3 * large.size());
}

TEST_F(NameWorkersTest, worksOnSeveralNamesAtATime) {
    std::latch allBegun(3);
    const auto work = [&](const std::string& name, NameResults& results) {
        allBegun.arrive_and_wait();
        print(name, results);
    };
    EXPECT_EQ(run(numbered(3), {.work = work, .jobs = 3}), ExitStatus::success);
}

TEST_F(NameWorkersTest, startsNoThreadForAsManyNamesAsOneTakes) {
    const auto self = std::this_thread::get_id();
    const auto work = [&](const std::string&, NameResults&) { EXPECT_EQ(std::this_thread::get_id(), self); };
    run(numbered(1), {.work = work, .jobs = 8});
    run(numbered(16), {.work = work, .jobs = 8, .namesAtOnce = 16});
    run(numbered(100), {.work = work, .jobs = 1});
}

TEST_F(NameWorkersTest, startsNoMoreThreadsThanJobs) {
    std::mutex mutex;
    std::set<std::thread::id> threads;
    const auto work = [&](const std::string&, NameResults&) {
        const std::lock_guard lock(mutex);
        threads.insert(std::this_thread::get_id());
    };
    run(numbered(1'000), {.work = work, .jobs = 3});
    EXPECT_LE(threads.size(), 3U);
}

TEST_P(NameWorkersByThreads, separatesTheTextsOfNamesThatHaveOne) {
    const auto work = [](const std::string& name, NameResults& results) {
        if (name != "0" && name != "5") {
            print(name, results);
        }
    };
    for (const std::size_t atOnce : {1U, 2U, 7U}) {
        outputText.text.clear();
        run(numbered(8), {.work = work, .jobs = GetParam(), .namesAtOnce = atOnce, .separator = "-\n"});
        EXPECT_EQ(outputText.text, "1\n-\n2\n-\n3\n-\n4\n-\n6\n-\n7\n");
    }
}

TEST_P(NameWorkersByThreads, complainsInOrderAndFails) {
    const auto work = [](const std::string& name, NameResults& results) {
        print(name, results);
        if (name.ends_with('3')) {
            results.complain(name, "odd");
            results.output().write("after " + name + "\n");
        }
    };
    std::string expected;
    for (const std::string& name : numbered(200)) {
        expected += name + "\n";
        if (name.ends_with('3')) {
            expected.append("tolvane-cli: ").append(name).append(": odd\nafter ").append(name).append("\n");
        }
    }
    TextOutput both;
    cli::Output output(both);
    const auto given = numbered(200);
    cli::ListedNames names(given);
    EXPECT_EQ(
        cli::workOnNames(names, {.work = work, .jobs = GetParam(), .namesAtOnce = 5}, output, both),
        ExitStatus::failure);
    EXPECT_EQ(both.text, expected);
}

TEST_P(NameWorkersByThreads, complainsOfAListThatCannotBeReadOnAfterWhatWasRead) {
    TextInput input("a\0b\0c\0"s, 4);
    input.failureAtEnd = platform::posixError(EIO);
    cli::NulSeparatedNames names(input);
    EXPECT_EQ(run(names, {.work = print, .jobs = GetParam(), .source = "list"}), ExitStatus::failure);
    EXPECT_EQ(outputText.text, "a\nb\nc\n");
    EXPECT_EQ(errorText.text, "tolvane-cli: list: Input/output error\n");
}

TEST_P(NameWorkersByThreads, endsWhenAnOutputFails) {
    std::atomic<std::size_t> calls = 0;
    const auto printing = [&](const std::string& name, NameResults& results) {
        ++calls;
        print(name, results);
    };
    outputText.capacity = 10;
    run(numbered(10'000), {.work = printing, .jobs = GetParam()});
    EXPECT_LT(calls, 10'000U);

    calls = 0;
    errorText.capacity = 0;
    const auto complaining = [&](const std::string& name, NameResults& results) {
        ++calls;
        results.complain(name, "odd");
    };
    EXPECT_EQ(run(numbered(10'000), {.work = complaining, .jobs = GetParam()}), ExitStatus::failure);
    EXPECT_LT(calls, 10'000U);
}

// A reader that has gone ends the run also while there is no more input yet.
TEST_P(NameWorkersByThreads, waitsForNamesOnlyOnceEverythingBeforeIsWritten) {
    struct Slow final : platform::InputStream {
        const TextOutput& written;
        std::size_t reads = 0;
        explicit Slow(const TextOutput& output) : written(output) {}
        platform::Result<std::size_t> read(std::span<char> buffer) override {
            EXPECT_EQ(written.text.size(), reads * 8);
            const std::string names = reads++ < 50 ? "a\0b\0c\0d\0"s : "";
            std::ranges::copy(names, buffer.begin());
            return names.size();
        }
    };
    Slow input(outputText);
    cli::NulSeparatedNames names(input);
    EXPECT_EQ(run(names, {.work = print, .jobs = GetParam()}), ExitStatus::success);
    EXPECT_EQ(input.reads, 51U);
}

TEST(NameWorkersDeathTest, writesWhatComesBeforeAFatalError) {
    struct Stream final : platform::OutputStream {
        platform::Result<void> write(std::string_view bytes) override {
            std::fwrite(bytes.data(), 1, bytes.size(), stderr);
            return {};
        }
        bool isTerminal() const override { return false; }
    };
    const std::vector<std::string> given{"one", "two", "three", "four", "five", "six"};
    for (const std::size_t jobs : {1U, 3U}) {
        EXPECT_EXIT(
            {
                const auto work = [](const std::string& name, NameResults& results) {
                    results.output().write(name);
                    if (name == "four") {
                        platform::fatalError("the floor is gone");
                    }
                };
                Stream stream;
                cli::Output output(stream);
                cli::ListedNames names(given);
                cli::workOnNames(
                    names, {.work = work, .jobs = jobs, .namesAtOnce = 2, .separator = " "}, output, stream);
            },
            testing::KilledBySignal(SIGABRT), "^one two threetolvane: fatal: the floor is gone\n$");
    }
}

} // namespace
} // namespace tolvane::tests
