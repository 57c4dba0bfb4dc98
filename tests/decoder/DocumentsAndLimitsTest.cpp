#include "tests/decoder/DecoderProgram.h"
#include "tests/decoder/SamplePictures.h"

#include <csignal>
#include <fstream>
#include <iterator>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace tolvane::tests {
namespace {

using platform::DecodedDescription;
using testing::ContainsRegex;
using testing::StartsWith;

TEST_F(DecoderTest, drawsThePageAskedFor) {
    const auto answer = decodeBytes(pdfBytes(17), {1000, 1000}, 2);
    ASSERT_TRUE(answer.description) << answer.failure();
    const DecodedDescription expected{
        DecodedDescription::Contents::pdfPage, 200, 100, 17, 2, 1, QStringLiteral("PDF")};
    EXPECT_EQ(*answer.description, expected);
    EXPECT_EQ(answer.onlyFrame().size(), QSize(1000, 500));
    EXPECT_EQ(answer.onlyFrame().pixelColor(500, 250), QColor(0, 0, 255));
}

TEST_F(DecoderTest, drawsTheLastPageWhereTheDocumentHasBecomeShorter) {
    const auto answer = decodeBytes(pdfBytes(3), {100, 100}, 9);
    ASSERT_TRUE(answer.description);
    EXPECT_EQ(answer.description->page, 3U);
    EXPECT_THAT(answer.frames, testing::SizeIs(1));
}

TEST_F(DecoderTest, saysThatADocumentIsDamaged) {
    EXPECT_THAT(decodeBytes("%PDF-1.4\nnothing more").failure(), StartsWith("The PDF document is damaged"));
    const std::string whole = pdfBytes(2);
    for (std::size_t part = 1; part < 8; ++part) {
        const auto answer = decodeBytes(whole.substr(0, whole.size() * part / 8));
        EXPECT_TRUE(answer.end);
        EXPECT_EQ(answer.outcome.status, 0);
    }
}

TEST_F(DecoderTest, opensRegularFilesOnly) {
    for (const std::string& path :
         {folder.fifo("fifo"), folder.socket("socket"), folder.folder("folder"), std::string("/dev/null"),
          folder.symlink("link", folder.path("fifo"))}) {
        EXPECT_EQ(decode(path).failure(), "Only a regular file can hold a picture.") << path;
    }
    EXPECT_THAT(decode(folder.path("missing")).failure(), StartsWith("The file cannot be opened: "));
}

TEST_F(DecoderTest, followsALinkToAFile) {
    folder.file("item", pictureBytes("PNG", {5, 5}));
    EXPECT_TRUE(decode(folder.symlink("link", "item")).isComplete());
}

TEST_F(DecoderTest, refusesInvalidArguments) {
    const std::string program = programPath("tolvane-decoder");
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{},
          {"file:///a", "0", "1", "1"},
          {"file:///a", "1", "5000", "1"},
          {"file:///a", "1", "1", "x"},
          {"file:///a", "1", "1", "1", "1"}}) {
        ProcessSetup setup;
        setup.command = arguments;
        setup.command.insert(setup.command.begin(), program);
        const auto outcome = run(setup);
        EXPECT_NE(outcome.status, 0);
        EXPECT_EQ(outcome.out, "");
    }
    for (const char* const url :
         {"/etc/passwd", "http://127.0.0.1/", "file://relative", "file:///a%00b", ""}) {
        ProcessSetup setup;
        setup.command = {program, url, "1", "9", "9"};
        EXPECT_EQ(answerOf(setup, {9, 9}).failure(), "The URL does not name a file.") << url;
    }
}

TEST_F(DecoderTest, limitsItself) {
    ProcessSetup setup;
    setup.command = decoderCommand(folder.file("item", pictureBytes("PNG", {1000, 1000})), {1000, 1000});
    Process process(setup);
    // It has written its greeting, so the limits are set, and waits for its output to be read.
    ASSERT_TRUE(process.waitForOutput([](const std::string& out) { return !out.empty(); }));
    std::ifstream stream("/proc/" + std::to_string(process.id()) + "/limits");
    const std::string limits(std::istreambuf_iterator<char>(stream), {});
    kill(process.id(), SIGKILL);
    EXPECT_EQ(process.finish().signal, SIGKILL);
    EXPECT_THAT(limits, ContainsRegex("Max address space +1073741824 +1073741824"));
    EXPECT_THAT(limits, ContainsRegex("Max cpu time +20 +20"));
    EXPECT_THAT(limits, ContainsRegex("Max open files +64 +64"));
    EXPECT_THAT(limits, ContainsRegex("Max file size +0 +0"));
    EXPECT_THAT(limits, ContainsRegex("Max core file size +0 +0"));
}

TEST_F(DecoderTest, connectsToNoSession) {
    const std::string path = folder.path("bus");
    const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    ASSERT_GE(listener, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(path.size(), sizeof(address.sun_path));
    path.copy(address.sun_path, path.size());
    ASSERT_EQ(bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
    ASSERT_EQ(listen(listener, 1), 0);
    ProcessSetup setup;
    setup.command =
        decoderCommand(folder.file("item.svg", svgBytes("<text x=\"0\" y=\"40\">Text</text>")), {100, 100});
    for (const std::string variable : {"DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS"}) {
        setup.environment.push_back(variable + "=unix:path=" + path);
    }
    setup.environment.insert(
        setup.environment.end(),
        {"DISPLAY=:99999", "WAYLAND_DISPLAY=" + path, "XDG_RUNTIME_DIR=" + folder.path(),
         "QT_QPA_PLATFORM=xcb", "QT_QPA_PLATFORMTHEME=gtk3"});
    EXPECT_TRUE(answerOf(setup, {100, 100}).isComplete());
    EXPECT_LT(accept(listener, nullptr, nullptr), 0) << "the decoder has connected";
    close(listener);
}

} // namespace
} // namespace tolvane::tests
