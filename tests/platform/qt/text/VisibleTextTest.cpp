#include "platform/qt/text/VisibleText.h"

#include "tests/platform/qt/QtTest.h"

#include <QStandardItemModel>
#include <QStyleOptionViewItem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace std::string_view_literals;

using platform::boundedText;
using platform::breakableText;
using platform::harmlessName;
using platform::LineFeeds;
using platform::plainToolTip;
using platform::shortenedApart;
using platform::visibleText;
using testing::ElementsAre;

TEST(VisibleText, writesOutHiddenCharacters) {
    EXPECT_EQ(
        visibleText(u"a\nb\tc\rd\u202Ee\u2028f\u007Fg\u0085h\U000E0041"_s),
        u"a⟨LF⟩b⟨TAB⟩c⟨CR⟩d⟨U+202E⟩e⟨U+2028⟩f⟨DEL⟩g⟨U+0085⟩h⟨U+E0041⟩"_s);
    EXPECT_EQ(visibleText(u"na\u00EFve \u00A0 \\n \U0001F600"_s), u"na\u00EFve \u00A0 \\n \U0001F600"_s);
    EXPECT_EQ(visibleText(u"a\nb\rc"_s, LineFeeds::kept), u"a\nb⟨CR⟩c"_s);
    EXPECT_EQ(visibleText("a\n\xE2\x80\xAEgnp.\xFF"sv), u"a⟨LF⟩⟨U+202E⟩gnp.\uFFFD"_s);
    EXPECT_EQ(visibleText("Größe 😀"sv), u"Größe 😀"_s);
    EXPECT_EQ(visibleText("a\0b\n"sv, LineFeeds::kept), u"a⟨NUL⟩b\n"_s);
}

TEST(VisibleText, makesNamesThatReadAsTheyLook) {
    EXPECT_EQ(harmlessName(u"a\nb\u202Etxt\u2066.t\U000E0041ext"_s), u"a_b_txt_.t_ext"_s);
    EXPECT_EQ(harmlessName(u"\u00FC\uFFFD\U0001F600.text"_s), u"\u00FC\uFFFD\U0001F600.text"_s);
}

TEST(VisibleText, boundsItsLength) {
    EXPECT_EQ(boundedText("abc", 3, 1), "abc");
    EXPECT_EQ(boundedText("abcdefghij", 5, 1), "ab\u2026ij");
    EXPECT_EQ(boundedText("1\n2\n3\n4\n5", 100, 3), "1\n\u2026\n5");
    EXPECT_LT(boundedText(QString(100'000, u'x'), 600, 12).size(), 650);
}

TEST(VisibleText, splitsNoCharacter) {
    const QString faces = QStringLiteral("\U0001F600").repeated(10);
    EXPECT_TRUE(boundedText(faces, 8, 1).isValidUtf16());
    const QString accents = QStringLiteral("e\u0301").repeated(30);
    for (const QString& part : boundedText(accents, 1000, 1).split(u'\u200B')) {
        EXPECT_TRUE(part.startsWith(u'e')) << part.toStdString();
    }
}

TEST(VisibleText, letsPathsAndLongWordsWrap) {
    EXPECT_EQ(breakableText(u"/short/path"_s), u"/short/path"_s);
    EXPECT_EQ(breakableText(u"/a/long/path/to/a place"_s), u"/a/long/path/\u200Bto/a place"_s);
    EXPECT_EQ(breakableText(QString(60, u'x')).remove(u'\u200B'), QString(60, u'x'));
    EXPECT_EQ(boundedText(QString(60, u'x'), 1000, 1).count(u'\u200B'), 2);
    EXPECT_EQ(boundedText("short words stay as they are, all of them", 1000, 1).count(u'\u200B'), 0);
}

class ExposedDelegate final : public platform::VisibleTextDelegate {
public:
    using VisibleTextDelegate::initStyleOption;
};

TEST(VisibleText, isWhatItsDelegateDraws) {
    QStandardItemModel model(1, 1);
    model.setData(model.index(0, 0), QStringLiteral("a\u202Eb"));
    QStyleOptionViewItem option;
    ExposedDelegate().initStyleOption(&option, model.index(0, 0));
    EXPECT_EQ(option.text, u"a⟨U+202E⟩b"_s);
}

TEST(PlainToolTip, isNoMarkup) {
    EXPECT_EQ(
        plainToolTip("a<img src=/x>&<b>"),
        "<p style='white-space: pre-wrap'>a&lt;img src=/x&gt;&amp;&lt;b&gt;</p>");
}

std::vector<std::string> shortened(const std::vector<QString>& texts) {
    std::vector<std::string> shown;
    for (const QString& text : shortenedApart(texts, [](const QString& whole) {
             constexpr int longest = 20;
             return platform::cutInMiddle(whole, longest);
         })) {
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
    EXPECT_THAT(shortened({}), testing::IsEmpty());
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
