#include "platform/qt/text/ShortenedTexts.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <set>

namespace tolvane::platform {

namespace {

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

bool isWithinCharacter(const QString& text, qsizetype place) {
    return place > 0 && place < text.size() && (text.at(place).isLowSurrogate() || text.at(place).isMark());
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
        while (isWithinCharacter(text, from) && from > done) {
            --from;
        }
        while (isWithinCharacter(text, to)) {
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
    // Where not even that many characters fit, the whole texts are better than ones that cannot be told
    // apart.
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
