#include "platform/qt/VisibleText.h"

#include <algorithm>

namespace tolvane::platform {

namespace {

QString writtenOut(QChar character) {
    switch (character.unicode()) {
    case u'\n':
        return QStringLiteral("\\n");
    case u'\r':
        return QStringLiteral("\\r");
    case u'\t':
        return QStringLiteral("\\t");
    default:
        return QStringLiteral("\\u{") + QString::number(character.unicode(), 16).toUpper() + u'}';
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

bool steersText(QChar character) {
    const char16_t c = character.unicode();
    const bool control = c < 0x20 || (c >= 0x7F && c <= 0x9F);
    const bool direction = c == 0x061C || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E)
                           || (c >= 0x2066 && c <= 0x2069);
    const bool separator = c == 0x2028 || c == 0x2029;
    return control || direction || separator;
}

QString visibleText(const QString& text, LineFeeds lineFeeds) {
    QString out;
    out.reserve(text.size());
    for (const QChar character : text) {
        const bool isKept = character == u'\n' && lineFeeds == LineFeeds::kept;
        if (steersText(character) && !isKept) {
            out += writtenOut(character);
        } else {
            out += character;
        }
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

QString withBreaksInLongWords(const QString& text) {
    constexpr qsizetype longestWord = 24;
    constexpr QChar zeroWidthSpace = u'\u200B';
    QString out;
    qsizetype run = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (run >= longestWord && isBoundary(text, i)) {
            out += zeroWidthSpace;
            run = 0;
        }
        out += text.at(i);
        run = text.at(i).isSpace() ? 0 : run + 1;
    }
    return out;
}

QString plainToolTip(const QString& text) {
    return QStringLiteral("<p style='white-space: pre-wrap'>%1</p>").arg(text.toHtmlEscaped());
}

QString harmlessName(QString text) {
    std::ranges::replace_if(text, steersText, QChar(u'_'));
    return text;
}

QString boundedText(const QString& text, qsizetype longest, qsizetype mostLines) {
    return withBreaksInLongWords(cutInMiddle(withFewLines(text, mostLines), longest));
}

void VisibleTextDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    option->text = visibleText(option->text);
}

} // namespace tolvane::platform
