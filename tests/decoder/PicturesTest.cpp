#include "tests/decoder/DecoderProgram.h"
#include "tests/decoder/SamplePictures.h"

#include <string>

namespace tolvane::tests {
namespace {

using testing::HasSubstr;
using testing::SizeIs;
using testing::StartsWith;

using PicturesTest = DecoderTest;

TEST_F(PicturesTest, areRecognisedByTheirContents) {
    for (const char* const format : {"PNG", "JPEG", "BMP", "PPM", "ICO"}) {
        const auto answer = decode(folder.file("misleading.txt", pictureBytes(format, {40, 30})));
        SCOPED_TRACE(format);
        ASSERT_TRUE(answer.description) << answer.failure();
        EXPECT_EQ(answer.description->format.toStdString(), format);
        EXPECT_EQ(answer.description->width, 40U);
        EXPECT_EQ(answer.description->height, 30U);
        EXPECT_EQ(answer.description->contents, platform::DecodedDescription::Contents::picture);
        const QImage image = answer.onlyFrame();
        EXPECT_EQ(image.size(), QSize(40, 30));
        EXPECT_GT(image.pixelColor(20, 15).red(), 250);
        EXPECT_LT(image.pixelColor(20, 15).blue(), 5);
    }
}

TEST_F(PicturesTest, keepTheirTransparency) {
    QImage image({2, 1}, QImage::Format_ARGB32);
    image.setPixelColor(0, 0, QColor(0, 0, 0, 0));
    image.setPixelColor(1, 0, QColor(0, 255, 0, 255));
    image.save(QString::fromStdString(folder.path("item")), "PNG");
    const QImage decoded = decode(folder.path("item")).onlyFrame();
    EXPECT_EQ(decoded.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(decoded.pixelColor(1, 0), QColor(0, 255, 0, 255));
}

TEST_F(PicturesTest, areMadeSmallerWhereAskedFor) {
    for (const char* const format : {"PNG", "JPEG"}) {
        const auto answer = decodeBytes(pictureBytes(format, {800, 200}), {100, 100});
        EXPECT_EQ(answer.onlyFrame().size(), QSize(100, 25)) << format;
        EXPECT_EQ(answer.description->width, 800U) << "the picture's own size";
        EXPECT_GT(answer.onlyFrame().pixelColor(50, 12).red(), 250);
    }
}

TEST_F(PicturesTest, thatAreTruncatedAreSaidToBeDamaged) {
    const std::string png = pictureBytes("PNG", {300, 300}, QColor(1, 2, 3));
    const auto answer = decodeBytes(png.substr(0, png.size() / 2));
    EXPECT_THAT(answer.failure(), StartsWith("The picture is damaged"));
    EXPECT_THAT(answer.frames, testing::IsEmpty());
    const std::string jpeg = pictureBytes("JPEG", {300, 300});
    const auto partial = decodeBytes(jpeg.substr(0, jpeg.size() - 100));
    EXPECT_TRUE(partial.isComplete());
    ASSERT_THAT(partial.remarks, SizeIs(1)) << "the part that exists is shown, with a remark";
    EXPECT_THAT(partial.remarks[0], HasSubstr("premature end"));
}

TEST_F(PicturesTest, thatAreDamagedAnywhereNeverBreakTheAnswer) {
    for (const std::string& whole :
         {pictureBytes("PNG", {60, 60}), pictureBytes("JPEG", {60, 60}), pictureBytes("BMP", {20, 20}),
          pictureBytes("ICO", {20, 20}), gifBytes({20, 20}, {20, 20}, 3, 5)}) {
        for (std::size_t part = 1; part < 8; ++part) {
            std::string damaged = whole;
            damaged[damaged.size() * part / 8] ^= '\x55';
            const auto answer = decodeBytes(damaged);
            EXPECT_TRUE(answer.end);
            EXPECT_EQ(answer.outcome.status, 0);
        }
    }
}

TEST_F(PicturesTest, ofFarTooManyPixelsAreRefused) {
    const auto answer = decodeBytes(hugePng(60'000, 10));
    EXPECT_THAT(answer.failure(), StartsWith("The picture is too large to be decoded: 60000"));
    EXPECT_EQ(answer.description->width, 60'000U);
}

TEST_F(PicturesTest, thatNeedTooMuchMemoryAreRefused) {
    // A header that promises 40000 by 20000 pixels, and nothing else.
    std::string bmp("BM\x36\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\x40\x9C\0\0\x20\x4E\0\0\x01\0\x18\0", 30);
    bmp.resize(54, '\0');
    const auto answer = decodeBytes(bmp);
    EXPECT_THAT(answer.failure(), StartsWith("The picture is damaged or too large"));
    EXPECT_EQ(answer.outcome.status, 0);
}

TEST_F(PicturesTest, ofManyPixelsAreDecodedSmall) {
    EXPECT_EQ(decodeBytes(hugePng(8000, 8000), {100, 100}).onlyFrame().size(), QSize(100, 100));
}

TEST_F(PicturesTest, thatMoveComeFrameByFrame) {
    const auto answer = decodeBytes(gifBytes({8, 4}, {8, 4}, 3, 7));
    EXPECT_TRUE(answer.isComplete()) << answer.failure();
    EXPECT_EQ(answer.description->frames, 3U);
    ASSERT_THAT(answer.frames, SizeIs(3));
    EXPECT_EQ(answer.frames[0].delay, 70U);
    EXPECT_EQ(answer.frames[0].image.pixelColor(7, 3), QColor(Qt::black));
    EXPECT_EQ(answer.frames[1].image.pixelColor(7, 3), QColor(255, 0, 0));
    EXPECT_EQ(answer.frames[2].image.pixelColor(7, 3), QColor(0, 255, 0));
}

TEST_F(PicturesTest, thatMoveForTooLongAreCutShort) {
    const auto answer = decodeBytes(gifBytes({2, 2}, {2, 2}, 1000, 2));
    EXPECT_TRUE(answer.isComplete()) << answer.failure();
    EXPECT_THAT(answer.frames, SizeIs(platform::DecoderLimits::mostFrames));
    ASSERT_THAT(answer.remarks, SizeIs(1));
    EXPECT_THAT(answer.remarks[0], HasSubstr("first 400 frames"));
}

TEST_F(PicturesTest, thatMoveOnAHugeScreenEndInAnAnswer) {
    const auto answer = decodeBytes(gifBytes({65'535, 65'535}, {2, 2}, 2, 2));
    EXPECT_TRUE(answer.end);
    EXPECT_EQ(answer.outcome.status, 0);
    EXPECT_THAT(answer.failure(), StartsWith("The picture is damaged or too large"));
}

TEST_F(PicturesTest, ofNoFormatAreNotRecognised) {
    for (const std::string& bytes :
         {std::string(), std::string("Just text.\n"), std::string(5000, '\x80'),
          std::string("\x1F\x8B\x08\0\0\0\0\0", 8)}) {
        const auto answer = decodeBytes(bytes);
        EXPECT_TRUE(answer.isUnrecognised()) << bytes.substr(0, 10);
        EXPECT_FALSE(answer.description);
    }
}

} // namespace
} // namespace tolvane::tests
