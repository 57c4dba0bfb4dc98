#include "platform/linux/session/LinuxStreams.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <string>
#include <thread>
#include <fcntl.h>
#include <unistd.h>

namespace tolvane::platform {

namespace {

using tests::TemporaryFolder;

struct Pipe {
    explicit Pipe(int flags = 0) {
        EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC | flags), 0);
        input = FileDescriptor::owned(ends[0]);
        output = FileDescriptor::owned(ends[1]);
    }

    std::array<int, 2> ends{};
    FileDescriptor input = FileDescriptor::borrowed(-1);
    FileDescriptor output = FileDescriptor::borrowed(-1);
};

std::string readAll(InputStream& stream) {
    std::string all;
    std::string piece(5'000, '\0');
    while (true) {
        const auto length = stream.read(piece);
        EXPECT_TRUE(length);
        if (!length || *length == 0) {
            return all;
        }
        all.append(piece, 0, *length);
    }
}

// Keeps what a test does to the handling of a signal from reaching other tests.
class KeptSignalAction {
public:
    explicit KeptSignalAction(int number) : number_(number) { sigaction(number, nullptr, &action_); }
    KeptSignalAction(const KeptSignalAction&) = delete;
    KeptSignalAction& operator=(const KeptSignalAction&) = delete;
    ~KeptSignalAction() { sigaction(number_, &action_, nullptr); }

private:
    int number_;
    struct sigaction action_{};
};

} // namespace

TEST(LinuxStreams, readsWhatIsThereAndThenTheEnd) {
    Pipe pipe;
    FileDescriptorOutput output(std::move(pipe.output));
    FileDescriptorInput input(std::move(pipe.input));
    ASSERT_TRUE(output.write("hello"));
    std::string buffer(100, '\0');
    EXPECT_EQ(input.read(buffer).value(), 5U);
    EXPECT_TRUE(buffer.starts_with("hello"));
    output = FileDescriptorOutput(FileDescriptor::borrowed(-1));
    EXPECT_EQ(input.read(buffer).value(), 0U);
    EXPECT_EQ(input.read(buffer).value(), 0U);
}

TEST(LinuxStreams, writesAllThroughAPipeThatHoldsLess) {
    for (const int flags : {0, O_NONBLOCK}) {
        Pipe pipe(flags);
        FileDescriptorOutput output(std::move(pipe.output));
        std::string received;
        std::thread reader([&received, input = FileDescriptorInput(std::move(pipe.input))]() mutable {
            received = readAll(input);
        });
        std::string bytes(1'000'000, 'x');
        bytes.back() = 'y';
        EXPECT_TRUE(output.write(bytes));
        output = FileDescriptorOutput(FileDescriptor::borrowed(-1));
        reader.join();
        EXPECT_EQ(received, bytes) << flags;
    }
}

TEST(LinuxStreams, goesOnAfterASignal) {
    const KeptSignalAction kept(SIGUSR1);
    struct sigaction action{};
    action.sa_handler = [](int) {};
    ASSERT_EQ(sigaction(SIGUSR1, &action, nullptr), 0); // without SA_RESTART: calls are interrupted
    Pipe pipe;
    FileDescriptorInput input(std::move(pipe.input));
    FileDescriptorOutput output(std::move(pipe.output));
    std::string received(10, '\0');
    Result<std::size_t> length = 0;
    std::thread reader([&] { length = input.read(received); });
    // At whatever moment it arrives, the reader must not notice it.
    for (int i = 0; i < 100; ++i) {
        pthread_kill(reader.native_handle(), SIGUSR1);
        std::this_thread::yield();
    }
    EXPECT_TRUE(output.write("late"));
    reader.join();
    ASSERT_TRUE(length);
    EXPECT_EQ(received.substr(0, *length), "late");
}

TEST(LinuxStreams, makesABrokenPipeAnErrorValue) {
    const KeptSignalAction kept(SIGPIPE);
    makeWriteFailuresErrors();
    Pipe pipe;
    pipe.input = FileDescriptor::borrowed(-1);
    FileDescriptorOutput output(std::move(pipe.output));
    const auto written = output.write("hello");
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().domain, NSPOSIXErrorDomain);
    EXPECT_EQ(written.error().code, EPIPE);
}

TEST(LinuxStreams, tellsTerminalsFromOtherOutput) {
    Pipe pipe;
    EXPECT_FALSE(FileDescriptorOutput(std::move(pipe.output)).isTerminal());
    EXPECT_FALSE(FileDescriptorOutput(FileDescriptor::borrowed(-1)).isTerminal());
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (terminal < 0) {
        GTEST_SKIP() << "no pseudo terminals here";
    }
    EXPECT_TRUE(FileDescriptorOutput(FileDescriptor::owned(terminal)).isTerminal());
}

TEST(LinuxStreams, opensFilesForReading) {
    const TemporaryFolder folder;
    const std::string contents("a\0b\xFF", 4);
    const auto input = openForReading(folder.file("\xFE", contents));
    ASSERT_TRUE(input);
    EXPECT_EQ(readAll(**input), contents);
}

TEST(LinuxStreams, failsToOpenWhatIsNotThere) {
    const TemporaryFolder folder;
    EXPECT_EQ(openForReading(folder.path("none")).error().code, ENOENT);
    EXPECT_EQ(openForReading("").error().code, ENOENT);
    EXPECT_EQ(openForReading(folder.file("a") + std::string(1, '\0')).error().code, EINVAL);
}

TEST(LinuxStreams, failsToReadAFolder) {
    const TemporaryFolder folder;
    const auto input = openForReading(folder.path());
    ASSERT_TRUE(input);
    std::string buffer(10, '\0');
    EXPECT_EQ((*input)->read(buffer).error().code, EISDIR);
}

} // namespace tolvane::platform
