
#include "platform/qt/text/VisibleText.h"
#include "tests/platform/qt/QtTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using platform::shortenedApart;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int longest = 20;

std::vector<std::string> shortened(const std::vector<QString>& texts) {
    std::vector<std::string> shown;
    for (const QString& text :
         shortenedApart(texts, [](const QString& whole) { return platform::cutInMiddle(whole, longest); })) {
        shown.push_back(text.toStdString());
    }
    return shown;
}

std::size_t differentOnes(const std::vector<std::string>& texts) {
    return std::set(texts.begin(), texts.end()).size();
}

TEST(ShortenedTexts, leaveOutTheMiddleUnlessTheyDifferThere) {
    EXPECT_THAT(
        shortened({"/short", "/a/long/path/to/some/note.txt"}),
        ElementsAre("/short", "/a/long/pa…/note.txt"));
    EXPECT_THAT(shortened({}), IsEmpty());
    EXPECT_THAT(
        shortened({"/home/user/first/year/of/report.txt", "/home/user/first/week/of/report.txt"}),
        ElementsAre("…rst/year/of/report.txt", "…rst/week/of/report.txt"));
}

TEST(ShortenedTexts, areAllDifferent) {
    std::vector<QString> texts;
    for (const char* const outer : {"one", "two"}) {
        for (const char* const inner : {"red", "ripe", "green"}) {
            texts.push_back(QString("/very/long/beginning/%1/then/more/of/it/%2/and/a/long/end/of/the/path")
                                .arg(outer, inner));
        }
    }
    const auto shown = shortened(texts);
    EXPECT_EQ(differentOnes(shown), texts.size());
    for (const std::string& text : shown) {
        EXPECT_LE(QString::fromStdString(text).size(), 55) << text;
        EXPECT_TRUE(text.ends_with("/the/path")) << text;
    }
}

TEST(ShortenedTexts, differExactlyWhereTheWholeTextsDo) {
    const QString path = "/a/long/path/with/notes/in/it";
    EXPECT_EQ(differentOnes(shortened({path + "/x/" + path, path + "/" + path})), 2U);
    EXPECT_EQ(differentOnes(shortened({path, path, path})), 1U);
}

TEST(ShortenedTexts, keepShortTextsDifferentWhateverShortensThem) {
    const auto shown = shortenedApart({"abc", "abd"}, [](const QString&) { return QString("…"); });
    EXPECT_THAT(shown, ElementsAre("abc", "abd"));
}

TEST(ShortenedTexts, keepThoseDifferentThatDifferInManyPlaces) {
    std::vector<QString> texts;
    for (unsigned number = 0; number < 16; ++number) {
        QString text;
        for (unsigned bit = 0; bit < 4; ++bit) {
            text += QString(100, u'x') + ((number >> bit & 1U) != 0 ? u'1' : u'0');
        }
        texts.push_back(text + QString(100, u'x'));
    }
    const auto shown = shortened(texts);
    EXPECT_EQ(differentOnes(shown), texts.size());
    for (const std::string& text : shown) {
        EXPECT_LT(QString::fromStdString(text).size(), 100) << text;
    }
}

TEST(ShortenedTexts, splitNoCharacter) {
    const QString face = QStringLiteral("\U0001F600");
    const QString head = face.repeated(20);
    for (const std::string& text : shortened({head + "a" + head, head + "b" + head})) {
        EXPECT_TRUE(QString::fromStdString(text).isValidUtf16()) << text;
        EXPECT_EQ(text.find("\xEF\xBF\xBD"), std::string::npos) << text;
    }
}

TEST(ShortenedTexts, fitAMenu) {
    application();
    const QFontMetrics font{QFont()};
    const auto shown = platform::shortenedForMenu(
        {QString(5'000, u'W') + 'a' + QString(5'000, u'W'), QString(5'000, u'W') + 'b' + QString(5'000, u'W'),
         "/short"},
        font);
    EXPECT_NE(shown[0], shown[1]);
    EXPECT_EQ(shown[2], "/short");
    for (const QString& text : shown) {
        EXPECT_LE(font.horizontalAdvance(text), 70 * font.averageCharWidth());
    }
}

} // namespace
} // namespace tolvane::tests
