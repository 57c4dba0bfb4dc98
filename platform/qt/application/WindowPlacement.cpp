#include "platform/qt/application/WindowPlacement.h"

#include <algorithm>

namespace tolvane::platform {

namespace {

/// What a window manager adds, which is known only once it has done so: the borders and the title bar.
constexpr QSize usualFrame(8, 38);

} // namespace

QSize sizeWithin(QSize wanted, QSize freeArea) {
    return wanted.boundedTo(freeArea - usualFrame);
}

QSize firstSizeWithin(QSize wanted, QSize freeArea) {
    constexpr int mostSteps = 3;
    constexpr QSize parts(16, 8);
    const QSize room = QSize(freeArea.width() / parts.width(), freeArea.height() / parts.height())
                           .boundedTo({mostSteps * cascadeStep, mostSteps * cascadeStep});
    return sizeWithin(wanted, freeArea - room);
}

QPoint firstPlaceWithin(QSize size, const QRect& freeArea) {
    const QSize left = freeArea.size() - usualFrame - size;
    return freeArea.topLeft() + QPoint(left.width() / 2, left.height() / 4);
}

QPoint placeWithin(const QRect& wanted, const QRect& freeArea, const std::vector<QPoint>& others) {
    const QSize frame = wanted.size() + usualFrame;
    const QPoint first = freeArea.topLeft();
    // Never above or left of the area, however large the window is.
    const QPoint last(
        std::max(first.x(), freeArea.right() + 1 - frame.width()),
        std::max(first.y(), freeArea.bottom() + 1 - frame.height()));
    const auto isTaken = [&others](QPoint place) {
        return std::ranges::any_of(
            others, [place](QPoint other) { return (other - place).manhattanLength() < cascadeStep; });
    };
    const QPoint start(
        std::clamp(wanted.x(), first.x(), last.x()), std::clamp(wanted.y(), first.y(), last.y()));
    QPoint place = start;
    constexpr int mostTries = 1000;
    for (int tries = 0; tries < mostTries; ++tries) {
        if (!isTaken(place)) {
            return place;
        }
        place += QPoint(cascadeStep, cascadeStep);
        if (place.x() > last.x()) {
            place.setX(first.x());
        }
        if (place.y() > last.y()) {
            place.setY(first.y());
        }
    }
    return start;
}

} // namespace tolvane::platform
