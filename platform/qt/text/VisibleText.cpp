#include "platform/qt/text/VisibleText.h"

#include "platform/values/HiddenCharacters.h"
#include "platform/values/Utf8.h"

namespace tolvane::platform {

namespace {

/// Hands over the code points in order. A surrogate without its partner is one by itself.
template <typename Function>
void forEachCodePoint(const QString& text, const Function& function) {
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar unit = text.at(i);
        const bool isPair = unit.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        function(isPair ? QChar::surrogateToUcs4(unit, text.at(i + 1)) : char32_t{unit.unicode()});
        i += isPair ? 1 : 0;
    }
}

/// Where the text can be cut before this place without taking a character apart.
bool isBoundary(const QString& text, qsizetype place) {
    return place <= 0 || place >= text.size()
           || !(text.at(place).isLowSurrogate() || text.at(place).isMark());
}

QString withFewLines(const QString& text, qsizetype mostLines) {
    const QStringList lines = text.split(u'\n');
    if (lines.size() <= mostLines) {
        return text;
    }
    const qsizetype front = mostLines / 2;
    const qsizetype back = mostLines - front - 1;
    return (lines.first(front) + QStringList(QStringLiteral("…")) + lines.last(back)).join(u'\n');
}

} // namespace

QString writtenOut(char32_t hiddenCharacter) {
    return u'⟨' + QString::fromStdString(hiddenCharacterName(hiddenCharacter)) + u'⟩';
}

QString visibleText(const QString& text, LineFeeds lineFeeds) {
    QString out;
    out.reserve(text.size());
    forEachCodePoint(text, [&](char32_t codePoint) {
        const bool isKept = codePoint == U'\n' && lineFeeds == LineFeeds::kept;
        if (isHiddenCharacter(codePoint) && !isKept) {
            out += writtenOut(codePoint);
        } else {
            out += QChar::fromUcs4(codePoint);
        }
    });
    return out;
}

QString visibleText(std::string_view bytes, LineFeeds lineFeeds) {
    return visibleText(QString::fromStdString(shownText(bytes)), lineFeeds);
}

QString plainToolTip(const QString& text) {
    return QStringLiteral("<p style='white-space: pre-wrap'>%1</p>").arg(text.toHtmlEscaped());
}

QString harmlessName(const QString& text) {
    QString out;
    forEachCodePoint(text, [&](char32_t codePoint) {
        out += QChar::fromUcs4(isHiddenCharacter(codePoint) ? U'_' : codePoint);
    });
    return out;
}

QString breakableText(const QString& text) {
    constexpr qsizetype longestWord = 24;
    constexpr qsizetype halfAWord = longestWord / 2;
    constexpr QChar zeroWidthSpace = u'\u200B';
    QString out;
    qsizetype run = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool isBehindSlash = run >= halfAWord && text.at(i - 1) == u'/';
        if ((run >= longestWord || isBehindSlash) && isBoundary(text, i)) {
            out += zeroWidthSpace;
            run = 0;
        }
        out += text.at(i);
        run = text.at(i).isSpace() ? 0 : run + 1;
    }
    return out;
}

QString cutInMiddle(const QString& text, qsizetype longest) {
    if (text.size() <= longest) {
        return text;
    }
    qsizetype front = longest / 2;
    qsizetype back = text.size() - (longest - front - 1);
    while (!isBoundary(text, front)) {
        --front;
    }
    while (!isBoundary(text, back)) {
        ++back;
    }
    return text.left(front) + QChar(u'…') + text.mid(back);
}

QString boundedText(const QString& text, qsizetype longest, qsizetype mostLines) {
    return breakableText(cutInMiddle(withFewLines(text, mostLines), longest));
}

void VisibleTextDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    option->text = visibleText(option->text);
}

} // namespace tolvane::platform
