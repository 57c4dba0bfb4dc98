#include "platform/qt/application/WindowPlacement.h"

#include <gtest/gtest.h>

#include <vector>

namespace tolvane::tests {
namespace {

using platform::firstPlaceWithin;
using platform::firstSizeWithin;
using platform::placeWithin;
using platform::sizeWithin;

constexpr QSize details(760, 800);
constexpr QRect notebook(0, 0, 1366, 768);
constexpr QRect doubledScale(0, 0, 640, 450);
constexpr QRect large(0, 24, 2560, 1416);

/// Places windows one after the other, as they are shown.
std::vector<QRect> cascade(int count, const QRect& area) {
    const QSize size = firstSizeWithin(details, area.size());
    std::vector<QPoint> places;
    std::vector<QRect> windows;
    for (int i = 0; i < count; ++i) {
        places.push_back(placeWithin({firstPlaceWithin(size, area), size}, area, places));
        windows.emplace_back(places.back(), size);
    }
    return windows;
}

TEST(WindowPlacement, leavesAWindowAsItIsWhereThereIsRoom) {
    EXPECT_EQ(firstSizeWithin(details, large.size()), details);
    EXPECT_EQ(sizeWithin(details, large.size()), details);
}

TEST(WindowPlacement, keepsNewWindowsAndTheirFramesInsideTheFreeArea) {
    for (const QRect& area : {notebook, doubledScale, large, QRect(1366, 30, 1024, 570)}) {
        for (const QRect& window : cascade(20, area)) {
            EXPECT_TRUE(area.contains(window.adjusted(0, 0, 8, 38)))
                << window.x() << ',' << window.y() << ' ' << window.width() << 'x' << window.height();
        }
    }
}

TEST(WindowPlacement, cascadesSeveralWindowsOnASmallScreen) {
    for (const QRect& area : {notebook, doubledScale}) {
        const std::vector<QRect> windows = cascade(3, area);
        for (std::size_t i = 0; i < windows.size(); ++i) {
            for (std::size_t j = 0; j < i; ++j) {
                EXPECT_GE((windows[i].topLeft() - windows[j].topLeft()).manhattanLength(), 28);
            }
        }
    }
    const std::vector<QRect> windows = cascade(3, notebook);
    EXPECT_EQ(windows[1].topLeft() - windows[0].topLeft(), QPoint(28, 28));
    EXPECT_EQ(windows[2].topLeft() - windows[1].topLeft(), QPoint(28, 28));
}

TEST(WindowPlacement, keepsARememberedPlaceThatIsFreeAndCanBeSeen) {
    EXPECT_EQ(placeWithin(QRect(QPoint(400, 300), details), large, {{100, 100}}), QPoint(400, 300));
    EXPECT_EQ(placeWithin(QRect(-300, -20, 400, 300), notebook, {}), QPoint(0, 0));
    EXPECT_EQ(placeWithin(QRect(1300, 700, 400, 300), notebook, {}), QPoint(1366 - 400 - 8, 768 - 300 - 38));
    EXPECT_EQ(placeWithin(QRect(10, 10, 3000, 2000), large, {}), large.topLeft()) << "too large";
}

TEST(WindowPlacement, endsWhereNoPlaceIsLeft) {
    const QRect area(0, 0, 408, 338);
    EXPECT_EQ(placeWithin(QRect(0, 0, 400, 300), area, {{0, 0}}), QPoint(0, 0));
}

} // namespace
} // namespace tolvane::tests
