#include "platform/qt/text/VisibleText.h"

#include "platform/values/HiddenCharacters.h"
#include "platform/values/Utf8.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <set>

namespace tolvane::platform {

namespace {

/// Calls the function with each code point. A surrogate without its partner is one by itself.
template <typename Function>
void forEachCodePoint(const QString& text, const Function& function) {
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar unit = text.at(i);
        const bool isPair = unit.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        function(isPair ? QChar::surrogateToUcs4(unit, text.at(i + 1)) : char32_t{unit.unicode()});
        i += isPair ? 1 : 0;
    }
}

/// Whether the text can be cut here without splitting a character.
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

using Group = std::vector<std::size_t>;

/// Where texts that are not all the same differ first.
qsizetype firstDifference(const std::vector<QString>& texts, const Group& group) {
    const QString& first = texts[group.front()];
    qsizetype place = first.size();
    for (const std::size_t index : group) {
        const auto [here, there] = std::ranges::mismatch(first, texts[index]);
        place = std::min(place, static_cast<qsizetype>(here - first.begin()));
    }
    return place;
}

/// The text's end and what surrounds these places, with "…" for what is left out.
QString partsOf(const QString& text, const std::set<qsizetype>& places) {
    constexpr qsizetype before = 4;
    constexpr qsizetype after = 12;
    constexpr qsizetype endLength = 16;
    QString parts;
    qsizetype done = 0;
    const auto show = [&](qsizetype from, qsizetype to) {
        from = std::clamp(from, done, text.size());
        to = std::clamp(to, from, text.size());
        while (!isBoundary(text, from) && from > done) {
            --from;
        }
        while (!isBoundary(text, to)) {
            ++to;
        }
        parts += (from > done ? QStringLiteral("…") : QString()) + text.mid(from, to - from);
        done = to;
    };
    for (const qsizetype place : places) {
        show(place - before, place + after);
    }
    show(text.size() - endLength, text.size());
    return parts;
}

/// The texts that look the same although they differ, by how they look.
std::vector<Group> confusedTexts(const std::vector<QString>& texts, const std::vector<QString>& shown) {
    std::map<QString, Group> groups;
    for (std::size_t index = 0; index < texts.size(); ++index) {
        groups[shown[index]].push_back(index);
    }
    std::vector<Group> confused;
    for (const auto& [look, group] : groups) {
        const auto differs = [&](std::size_t index) { return texts[index] != texts[group.front()]; };
        if (std::ranges::any_of(group, differs)) {
            confused.push_back(group);
        }
    }
    return confused;
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

std::vector<QString> shortenedApart(
    const std::vector<QString>& texts, const std::function<QString(const QString&)>& shorten) {
    std::vector<QString> shown;
    std::ranges::transform(texts, std::back_inserter(shown), shorten);
    // Every round shows one more of the places where texts differ, so there are no more rounds than texts.
    std::vector<std::set<qsizetype>> places(texts.size());
    for (std::size_t round = 0; round < texts.size(); ++round) {
        for (const Group& group : confusedTexts(texts, shown)) {
            const qsizetype place = firstDifference(texts, group);
            for (const std::size_t index : group) {
                places[index].insert(place);
                shown[index] = partsOf(texts[index], places[index]);
            }
        }
    }
    // If that is not enough, the whole texts are better than indistinguishable ones.
    for (const Group& group : confusedTexts(texts, shown)) {
        for (const std::size_t index : group) {
            shown[index] = texts[index];
        }
    }
    return shown;
}

std::vector<QString> shortenedForMenu(const std::vector<QString>& texts, const QFontMetrics& font) {
    constexpr int characters = 64;
    const int width = characters * font.averageCharWidth();
    return shortenedApart(
        texts, [&](const QString& text) { return font.elidedText(text, Qt::ElideMiddle, width); });
}

} // namespace tolvane::platform
