#include "platform/qt/VisibleText.h"

#include <QStandardItemModel>
#include <QStyleOptionViewItem>
#include <gtest/gtest.h>

namespace tolvane::tests {
namespace {

using platform::boundedText;
using platform::harmlessName;
using platform::LineFeeds;
using platform::plainToolTip;
using platform::visibleText;

TEST(VisibleText, writesOutWhatSteersText) {
    EXPECT_EQ(
        visibleText("a\nb\tc\rd\u202Ee\u2028f\u007Fg\u0085"),
        "a\\nb\\tc\\rd\\u{202E}e\\u{2028}f\\u{7F}g\\u{85}");
    EXPECT_EQ(visibleText("na\u00EFve \u00A0 \\n \U0001F600"), "na\u00EFve \u00A0 \\n \U0001F600");
    EXPECT_EQ(visibleText("a\nb\rc", LineFeeds::kept), "a\nb\\rc");
}

TEST(VisibleText, makesNamesThatReadAsTheyLook) {
    EXPECT_EQ(harmlessName("a\nb\u202Etxt\u2066.text"), "a_b_txt_.text");
    EXPECT_EQ(harmlessName("\u00FC\uFFFD.text"), "\u00FC\uFFFD.text");
}

TEST(VisibleText, boundsItsLength) {
    EXPECT_EQ(boundedText("abc", 3, 1), "abc");
    EXPECT_EQ(boundedText("abcdefghij", 5, 1), "ab\u2026ij");
    EXPECT_EQ(boundedText("1\n2\n3\n4\n5", 100, 3), "1\n\u2026\n5");
    const QString huge = boundedText(QString(100'000, u'x'), 600, 12);
    EXPECT_LT(huge.size(), 650);
}

TEST(VisibleText, takesNoCharacterApart) {
    const QString faces = QStringLiteral("\U0001F600").repeated(10);
    EXPECT_TRUE(boundedText(faces, 8, 1).isValidUtf16());
    const QString accents = QStringLiteral("e\u0301").repeated(30);
    for (const QString& part : boundedText(accents, 1000, 1).split(u'\u200B')) {
        EXPECT_TRUE(part.startsWith(u'e')) << part.toStdString();
    }
}

TEST(VisibleText, letsLongWordsWrap) {
    const QString out = boundedText(QString(60, u'x'), 1000, 1);
    EXPECT_EQ(out.count(u'\u200B'), 2);
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
    EXPECT_EQ(option.text, QStringLiteral("a\\u{202E}b"));
}

TEST(PlainToolTip, isNoMarkup) {
    EXPECT_EQ(
        plainToolTip("a<img src=/x>&<b>"),
        "<p style='white-space: pre-wrap'>a&lt;img src=/x&gt;&amp;&lt;b&gt;</p>");
}

} // namespace
} // namespace tolvane::tests
