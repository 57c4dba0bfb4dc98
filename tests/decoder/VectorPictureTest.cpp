#include "tests/decoder/DecoderProgram.h"
#include "tests/decoder/SamplePictures.h"

#include <string>

namespace tolvane::tests {
namespace {

using testing::StartsWith;

class VectorPictureTest : public DecoderTest {
protected:
    /// The colour in the middle of a drawing, which must be complete.
    QColor middleOf(const std::string& svg) const {
        const QImage image = decodeBytes(svg).onlyFrame();
        return image.isNull() ? QColor() : image.pixelColor(500, 250);
    }

    static std::string inBase64(const std::string& bytes) {
        return QByteArray::fromStdString(bytes).toBase64().toStdString();
    }

    static std::string imageOf(const std::string& reference) {
        return "<image width=\"100\" height=\"50\" preserveAspectRatio=\"none\" xlink:href=\"" + reference
               + "\"/>";
    }

    static constexpr QColor nothing{0, 0, 0, 0};
    static constexpr QColor red{255, 0, 0};
};

TEST_F(VectorPictureTest, isDrawnAsLargeAsAskedFor) {
    const auto answer = decodeBytes(svgBytes(R"(<rect width="100" height="50" fill="red"/>)"));
    EXPECT_EQ(answer.onlyFrame().pixelColor(500, 250), red);
    ASSERT_TRUE(answer.description);
    EXPECT_EQ(answer.description->format, QStringLiteral("SVG"));
    EXPECT_EQ(answer.description->width, 100U);
    EXPECT_EQ(answer.frames[0].image.size(), QSize(1000, 500));
}

TEST_F(VectorPictureTest, isRecognisedBehindADeclarationAndComments) {
    EXPECT_EQ(
        middleOf(
            "\xEF\xBB\xBF<?xml version=\"1.0\"?>\n<!-- a -->\n<!DOCTYPE svg>\n"
            + svgBytes(R"(<g style="fill: red"><rect width="100" height="50"/></g>)")),
        red);
    EXPECT_TRUE(decodeBytes("<?xml version=\"1.0\"?><html><svg/></html>").isUnrecognised());
}

TEST_F(VectorPictureTest, showsText) {
    const QImage shown =
        decodeBytes(svgBytes(R"(<text x="0" y="50" font-size="60">MMMM</text>)")).onlyFrame();
    QImage blank = shown;
    blank.fill(Qt::transparent);
    EXPECT_NE(shown, blank);
}

TEST_F(VectorPictureTest, showsPicturesKeptInIt) {
    const std::string picture = "data:image/png;base64," + inBase64(pictureBytes("PNG", {9, 9}));
    EXPECT_EQ(middleOf(svgBytes(imageOf(picture))), red);
}

TEST_F(VectorPictureTest, readsNoOtherFile) {
    const std::string picture = folder.file("red.png", pictureBytes("PNG", {9, 9}));
    for (const std::string& reference :
         {"file://" + picture, picture, std::string("red.png"), "FILE://" + picture, " " + picture,
          std::string("http://127.0.0.1:9/red.png"), std::string(":/qt-project.org/red.png"),
          "&#x2F;" + picture.substr(1)}) {
        EXPECT_EQ(middleOf(svgBytes(imageOf(reference))), nothing) << reference;
    }
}

TEST_F(VectorPictureTest, readsNoOtherFileThroughAPictureWithinThePicture) {
    const std::string picture = folder.file("red.png", pictureBytes("PNG", {9, 9}));
    const std::string inner = inBase64(svgBytes(imageOf(picture)));
    for (const char* const type : {"image/svg+xml", "image/png"}) {
        const std::string reference = "data:" + std::string(type) + ";base64," + inner;
        EXPECT_EQ(middleOf(svgBytes(imageOf(reference))), nothing) << type;
    }
}

TEST_F(VectorPictureTest, readsNoStyleSheetAndNoEntityFromElsewhere) {
    const std::string sheet = folder.file("red.css", "rect { fill: #ff0000 }");
    const std::string drawing = svgBytes(R"(<rect width="100" height="50" fill="#00ff00"/>)");
    EXPECT_EQ(
        middleOf(
            "<?xml version=\"1.0\"?><?xml-stylesheet type=\"text/css\" href=\"" + sheet + "\"?>" + drawing),
        QColor(0, 255, 0));
    const auto answer = decodeBytes(
        "<!DOCTYPE svg [<!ENTITY e SYSTEM \"file://" + sheet + "\">]>" + svgBytes("<text>&e;</text>"));
    EXPECT_TRUE(answer.end);
}

TEST_F(VectorPictureTest, waitsForNoFifo) {
    const std::string fifo = folder.fifo("fifo");
    EXPECT_EQ(
        middleOf(
            "<?xml-stylesheet type=\"text/css\" href=\"" + fifo + "\"?>"
            + svgBytes(
                imageOf(fifo) + "<style>@import url(" + fifo
                + ");</style><rect width=\"100\" height=\"50\" fill=\"url(" + fifo + ")\"/>")),
        QColor(Qt::black))
        << "a fill that is left out is black";
}

TEST_F(VectorPictureTest, thatIsNotWellFormedIsSaidToBeDamaged) {
    EXPECT_THAT(decodeBytes("<svg><g></svg>").failure(), StartsWith("The SVG picture is damaged"));
}

TEST_F(VectorPictureTest, thatGrowsWithoutEndEndsInAnAnswer) {
    std::string entities = R"(<!ENTITY e0 "lol">)";
    for (int level = 1; level < 12; ++level) {
        std::string inside;
        for (int copy = 0; copy < 10; ++copy) {
            inside += "&e" + std::to_string(level - 1) + ";";
        }
        entities += "<!ENTITY e" + std::to_string(level) + " \"" + inside + "\">";
    }
    const auto answer = decodeBytes("<!DOCTYPE svg [" + entities + "]>" + svgBytes("<text>&e11;</text>"));
    EXPECT_THAT(answer.failure(), StartsWith("The SVG picture is damaged"));
    EXPECT_EQ(answer.outcome.status, 0);
}

TEST_F(VectorPictureTest, endsOverReferencesThatMultiplyOrLoop) {
    std::string drawing = R"(<rect id="a0" width="9" height="9"/>)";
    for (int level = 1; level < 12; ++level) {
        drawing += "<g id=\"a" + std::to_string(level) + "\">";
        for (int copy = 0; copy < 10; ++copy) {
            drawing += "<use xlink:href=\"#a" + std::to_string(level - 1) + "\" x=\"1\"/>";
        }
        drawing += "</g>";
    }
    const std::string loop =
        R"(<g id="a"><use xlink:href="#b"/></g><g id="b"><use xlink:href="#a"/></g><use xlink:href="#a"/>)";
    for (const std::string& inside : {drawing, loop}) {
        const auto answer = decodeBytes(svgBytes(inside));
        EXPECT_TRUE(answer.end || answer.outcome.signal != 0)
            << "neither answered nor ended: " << inside.substr(0, 20);
    }
}

} // namespace
} // namespace tolvane::tests
