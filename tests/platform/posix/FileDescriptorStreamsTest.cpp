#include "platform/posix/FileDescriptorStreams.h"

#include "tests/platform/linux/FolderTest.h"

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

struct Pipe {
    explicit Pipe(int flags = 0) {
        std::array<int, 2> ends{};
        EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC | flags), 0);
        input = FileDescriptorInput(FileDescriptor::owned(ends[0]));
        output = FileDescriptorOutput(FileDescriptor::owned(ends[1]));
    }
    void closeInput() { input = FileDescriptorInput(FileDescriptor::borrowed(-1)); }
    void closeOutput() { output = FileDescriptorOutput(FileDescriptor::borrowed(-1)); }

    FileDescriptorInput input{FileDescriptor::borrowed(-1)};
    FileDescriptorOutput output{FileDescriptor::borrowed(-1)};
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

// Restores how a signal is handled.
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

using FileDescriptorStreamsTest = tests::FolderTest;

TEST_F(FileDescriptorStreamsTest, readsWhatIsThereAndThenTheEnd) {
    Pipe pipe;
    ASSERT_TRUE(pipe.output.write("hello"));
    std::string buffer(100, '\0');
    EXPECT_EQ(pipe.input.read(buffer).value(), 5U);
    EXPECT_TRUE(buffer.starts_with("hello"));
    pipe.closeOutput();
    EXPECT_EQ(pipe.input.read(buffer).value(), 0U);
    EXPECT_EQ(pipe.input.read(buffer).value(), 0U);
}

TEST_F(FileDescriptorStreamsTest, writesAllThroughAPipeThatHoldsLess) {
    for (const int flags : {0, O_NONBLOCK}) {
        Pipe pipe(flags);
        std::string received;
        std::thread reader([&] { received = readAll(pipe.input); });
        const std::string bytes = std::string(1'000'000, 'x') + 'y';
        EXPECT_TRUE(pipe.output.write(bytes));
        pipe.closeOutput();
        reader.join();
        EXPECT_EQ(received, bytes) << flags;
    }
}

TEST_F(FileDescriptorStreamsTest, goesOnAfterASignal) {
    const KeptSignalAction kept(SIGUSR1);
    struct sigaction action{};
    action.sa_handler = [](int) {};
    ASSERT_EQ(sigaction(SIGUSR1, &action, nullptr), 0); // without SA_RESTART: calls are interrupted
    Pipe pipe;
    std::string received(10, '\0');
    Result<std::size_t> length = 0;
    std::thread reader([&] { length = pipe.input.read(received); });
    for (int i = 0; i < 100; ++i) {
        pthread_kill(reader.native_handle(), SIGUSR1);
        std::this_thread::yield();
    }
    EXPECT_TRUE(pipe.output.write("late"));
    reader.join();
    ASSERT_TRUE(length);
    EXPECT_EQ(received.substr(0, *length), "late");
}

TEST_F(FileDescriptorStreamsTest, makesABrokenPipeAnErrorValue) {
    const KeptSignalAction kept(SIGPIPE);
    makeWriteFailuresErrors();
    Pipe pipe;
    pipe.closeInput();
    const auto written = pipe.output.write("hello");
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().domain, NSPOSIXErrorDomain);
    EXPECT_EQ(written.error().code, EPIPE);
}

TEST_F(FileDescriptorStreamsTest, distinguishesTerminalsFromOtherOutput) {
    Pipe pipe;
    EXPECT_FALSE(pipe.output.isTerminal());
    EXPECT_FALSE(FileDescriptorOutput(FileDescriptor::borrowed(-1)).isTerminal());
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (terminal < 0) {
        GTEST_SKIP() << "no pseudo terminals here";
    }
    EXPECT_TRUE(FileDescriptorOutput(FileDescriptor::owned(terminal)).isTerminal());
}

TEST_F(FileDescriptorStreamsTest, opensFilesForReadingButNotWhatIsNotThereOrAFolder) {
    const std::string contents("a\0b\xFF", 4);
    EXPECT_EQ(readAll(*openForReading(folder.file("\xFE", contents)).value()), contents);
    EXPECT_EQ(openForReading(folder.path("none")).error().code, ENOENT);
    EXPECT_EQ(openForReading("").error().code, ENOENT);
    EXPECT_EQ(openForReading(folder.file("a") + '\0').error().code, EINVAL);
    std::string buffer(10, '\0');
    EXPECT_EQ(openForReading(folder.path()).value()->read(buffer).error().code, EISDIR);
}

} // namespace
} // namespace tolvane::platform
