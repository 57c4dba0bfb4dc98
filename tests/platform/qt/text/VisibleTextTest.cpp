#include "platform/qt/text/VisibleText.h"

#include <QStandardItemModel>
#include <QStyleOptionViewItem>
#include <gtest/gtest.h>

#include <string_view>

namespace tolvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace std::string_view_literals;

using platform::boundedText;
using platform::breakableText;
using platform::harmlessName;
using platform::LineFeeds;
using platform::plainToolTip;
using platform::visibleText;

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

} // namespace
} // namespace tolvane::tests
