/// Where windows go on a screen, and how large they may be there. On Wayland the compositor alone decides
/// where; sizes count there too.
#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

#include <vector>

namespace tolvane::platform {

/// The distance between windows that stand one behind the other.
inline constexpr int cascadeStep = 28;

/// The size for a window of this size and its frame inside a free area.
QSize sizeWithin(QSize wanted, QSize freeArea);

/// The same for a window that was never shown before: it leaves room for others that cascade.
QSize firstSizeWithin(QSize wanted, QSize freeArea);

/// The place for the first window of this size: in the middle, with more room below it than above.
QPoint firstPlaceWithin(QSize size, const QRect& freeArea);

/// Where to put a window of this size: at the wanted place, moved into the free area and, step by step, away
/// from the places where others are. Where no place is left, windows cover each other.
QPoint placeWithin(const QRect& wanted, const QRect& freeArea, const std::vector<QPoint>& others);

} // namespace tolvane::platform
