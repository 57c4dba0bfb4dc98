#include "containers/Gunzip.h"

#include "tests/containers/Samples.h"
#include "tests/support/AppleDoubleFiles.h"

#include <zlib.h>

namespace tolvane::containers {
namespace {

using namespace tests;
using platform::Data;

Data gzipped(std::string_view text) {
    constexpr int largestWindow = 15;
    constexpr int gzip = 16;
    constexpr int usualMemory = 8;
    z_stream state{};
    EXPECT_EQ(
        deflateInit2(
            &state, Z_DEFAULT_COMPRESSION, Z_DEFLATED, largestWindow + gzip, usualMemory, Z_DEFAULT_STRATEGY),
        Z_OK);
    std::string input(text);
    Data bytes(deflateBound(&state, input.size()));
    state.next_in = reinterpret_cast<Bytef*>(input.data());
    state.avail_in = static_cast<uInt>(input.size());
    state.next_out = reinterpret_cast<Bytef*>(bytes.data());
    state.avail_out = static_cast<uInt>(bytes.size());
    EXPECT_EQ(deflate(&state, Z_FINISH), Z_STREAM_END);
    bytes.resize(state.total_out);
    deflateEnd(&state);
    return bytes;
}

TEST(Gunzip, inflatesAStream) {
    const std::string text(300'000, 'a');
    const Gunzipped result = gunzipped(gzipped(text));
    EXPECT_TRUE(result.isWhole);
    EXPECT_EQ(result.bytes, bytesOf(text));
    EXPECT_TRUE(gunzipped(gzipped("")).isWhole);
}

TEST(Gunzip, keepsWhatStandsInFrontOfADefect) {
    const std::string text(300'000, 'a');
    const Data whole = gzipped(text);
    const Gunzipped cut = gunzipped(front(whole, whole.size() - 5));
    EXPECT_FALSE(cut.isWhole);
    EXPECT_EQ(cut.bytes, bytesOf(text)) << "the sum is missing";
    Data wrongSum = whole;
    wrongSum[wrongSum.size() - 8] ^= std::byte{1};
    EXPECT_FALSE(gunzipped(wrongSum).isWhole);
    EXPECT_TRUE(gunzipped(Data(20)).bytes.empty());
    EXPECT_FALSE(gunzipped({}).isWhole);
}

TEST(Gunzip, endsAtItsLimit) {
    const Gunzipped result = gunzipped(gzipped(std::string(300'000, 'a')), 100'000);
    EXPECT_EQ(result.bytes.size(), 100'000U);
    EXPECT_FALSE(result.isWhole);
}

TEST(Gunzip, isRecognisedByItsFirstBytes) {
    const Data stream = gzipped("a");
    EXPECT_TRUE(isLikeGzip(stream));
    EXPECT_FALSE(isLikeGzip(std::span(stream).first(2)));
    EXPECT_FALSE(isLikeGzip(noteData()));
}

TEST(FindBookmarks, looksIntoCompressedFiles) {
    const Data compressed = gzipped("x " + noteBase64());
    EXPECT_THAT(outlineOf(compressed), testing::ElementsAre("text", "@2"));
    EXPECT_EQ(onlyFindingIn(compressed).bytes, noteData());
    EXPECT_TRUE(foundIn(compressed)->complaints.empty());
    EXPECT_TRUE(mayBeContainer(compressed));
    EXPECT_EQ(foundIn(gzipped(corpusText("note.alias")))->container, "aliasFile");
}

TEST(FindBookmarks, saysThatACompressedFileBreaksOff) {
    std::string text = noteBase64();
    unsigned number = 1;
    for (int i = 0; i < 200'000; ++i) { // Hardly to be compressed.
        number = number * 1'664'525U + 1'013'904'223U;
        text += i % 100 == 0 ? '\n' : static_cast<char>('!' + (number >> 24U) % 90);
    }
    const Data whole = gzipped(text);
    const auto found = foundIn(front(whole, whole.size() / 2));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->findings.size(), 1U);
    EXPECT_THAT(
        found->complaints, testing::ElementsAre(testing::StartsWith("The compressed data break off after ")));
}

TEST(FindBookmarks, passesOverCompressedFilesThatHoldNone) {
    EXPECT_FALSE(foundIn(gzipped("a text")));
    EXPECT_FALSE(foundIn(gzipped(std::string("\0\0\0\0", 4))));
    EXPECT_FALSE(foundIn(gzipped(textOfBytes(gzipped("a")))));
    EXPECT_FALSE(foundIn(Data{std::byte{0x1F}, std::byte{0x8B}, std::byte{8}}));
}

TEST(Gunzip, isAnnouncedBeforeManyBytesAreInflated) {
    int announced = 0;
    const auto countIn = [&announced](std::size_t blanks) {
        const auto found = findBookmarks(
            gzipped(std::string(blanks, ' ') + noteBase64()), {}, [&announced] { ++announced; });
        return found ? found->findings.size() : 0;
    };
    EXPECT_EQ(countIn(fewBytes / 2), 1U);
    EXPECT_EQ(announced, 0);
    EXPECT_EQ(countIn(fewBytes), 1U) << "what lies beyond is searched as well";
    EXPECT_EQ(announced, 1);
}

} // namespace
} // namespace tolvane::containers
