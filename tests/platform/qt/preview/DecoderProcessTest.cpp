#include "platform/qt/preview/DecoderProcess.h"

#include "tests/decoder/SamplePictures.h"
#include "tests/platform/qt/preview/PreviewTest.h"
#include "tests/support/TemporaryFolder.h"

#include <QFileInfo>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace tolvane::platform {
namespace {

using testing::SizeIs;
using testing::StartsWith;
using tests::eventually;
using tests::PreviewTest;

class DecoderProcessTest : public PreviewTest {
protected:
    void start(const DecoderSettings& settings, const std::string& path, QSize size = {200, 200}) {
        process = std::make_unique<DecoderProcess>(
            settings, DecoderRequest{URL::fileURLWithPath(path), 1, size},
            DecoderProcess::Listener{
                [this](const DecodedDescription& description) { descriptions.push_back(description); },
                [this](const DecodedFrame& frame) {
                    frames.push_back(frame);
                    if (destroysItself) {
                        process = nullptr;
                    }
                },
                [this](const QString& sentence) { remarks.push_back(sentence); },
                [this](const DecodedEnd& how) {
                    EXPECT_FALSE(end) << "reported once";
                    end = how;
                    process = nullptr;
                }});
    }

    std::string endOf(const DecoderSettings& settings, const std::string& path) {
        start(settings, path);
        EXPECT_TRUE(eventually([&] { return end.has_value(); }));
        return end ? end->sentence.toStdString() : "";
    }

    std::unique_ptr<DecoderProcess> process;
    std::vector<DecodedDescription> descriptions;
    std::vector<DecodedFrame> frames;
    std::vector<QString> remarks;
    std::optional<DecodedEnd> end;
    bool destroysItself = false;
};

TEST_F(DecoderProcessTest, showsAPictureWhateverItsName) {
    EXPECT_EQ(
        endOf(realDecoder(), folder.file("\xFF%41\n\xE2\x80\xAE", tests::pictureBytes("PNG", {30, 20}))), "");
    EXPECT_EQ(end->how, DecodedEnd::How::complete);
    ASSERT_THAT(frames, SizeIs(1));
    EXPECT_EQ(frames[0].image.pixelColor(3, 3), QColor(255, 0, 0));
    EXPECT_THAT(descriptions, SizeIs(1));
}

TEST_F(DecoderProcessTest, endsOneThatIsBusyWithoutEnd) {
    auto settings = scriptedDecoder("trap '' TERM; while :; do :; done");
    settings.timeLimit = std::chrono::milliseconds(200);
    EXPECT_THAT(endOf(settings, "/item"), StartsWith("Decoding was stopped"));
}

TEST_F(DecoderProcessTest, outlivesADecompressionBomb) {
    auto settings = realDecoder();
    settings.timeLimit = std::chrono::milliseconds(100);
    EXPECT_THAT(
        endOf(settings, folder.file("bomb", tests::hugePng(30'000, 30'000))),
        testing::AnyOf(
            StartsWith("Decoding was stopped"), StartsWith("The picture is damaged or too large")));
    EXPECT_THAT(frames, SizeIs(0));
}

TEST_F(DecoderProcessTest, outlivesOneThatCrashesBreaksOffOrWritesNonsense) {
    const std::string incomplete = "The decoder returned an incomplete answer.";
    const std::string invalid = "The decoder returned an invalid answer.";
    const std::vector<std::pair<std::string, std::string>> scripts{
        {"kill -SEGV $$", "The decoder crashed or exceeded its time or memory limit."},
        {"printf TLVPIX01; exit 3", incomplete},
        {"echo nonsense", invalid},
        {"printf TLVPIX01; cat /dev/zero", invalid},
        {"cat /dev/urandom", invalid},
        {"yes", invalid},
        {"printf 'TLVPIX01\\002\\000\\000\\000\\377\\377\\377\\377'; cat /dev/zero", invalid}};
    for (const auto& [script, sentence] : scripts) {
        end.reset();
        EXPECT_EQ(endOf(scriptedDecoder(script), "/item"), sentence) << script;
    }
}

TEST_F(DecoderProcessTest, isFoundAsBuiltAndAsInstalled) {
    const tests::TemporaryFolder prefix;
    const QString programs = QString::fromStdString(prefix.folder("bin"));
    prefix.folder("libexec");
    prefix.folder("libexec/tolvane");
    const std::string installed = prefix.file("libexec/tolvane/tolvane-decoder");
    EXPECT_EQ(QFileInfo(decoderProgramOf(programs)).canonicalFilePath().toStdString(), installed);
    const std::string built = prefix.file("bin/tolvane-decoder");
    EXPECT_EQ(QFileInfo(decoderProgramOf(programs)).canonicalFilePath().toStdString(), built);
}

TEST_F(DecoderProcessTest, reportsThatThereIsNoDecoder) {
    EXPECT_THAT(
        endOf({QString::fromStdString(folder.path("missing")), std::chrono::seconds(60)}, "/item"),
        StartsWith("The decoder cannot be started: "));
}

TEST_F(DecoderProcessTest, mayBeDestroyedByItsListener) {
    destroysItself = true;
    start(realDecoder(), folder.file("a.gif", tests::gifBytes({9, 9}, {9, 9}, 50, 2)));
    EXPECT_TRUE(eventually([&] { return process == nullptr; }));
    EXPECT_THAT(frames, SizeIs(1));
    EXPECT_FALSE(end);
}

TEST_F(DecoderProcessTest, asksForWhatCanBeAskedFor) {
    const std::string note = folder.path("arguments");
    start(
        scriptedDecoder(
            R"(printf '%s\n' "$@" >)" + note + R"(; echo "$DISPLAY$DBUS_SESSION_BUS_ADDRESS" >>)" + note),
        "/a b", {100'000, 0});
    ASSERT_TRUE(eventually([&] { return end.has_value(); }));
    EXPECT_EQ(tests::contentsOfFile(note), "file:///a%20b\n1\n4096\n1\n\n");
}

} // namespace
} // namespace tolvane::platform
