#include "platform/qt/windows/MenuBar.h"

#include "tests/platform/qt/QtTest.h"

#include <QImage>
#include <QMenu>
#include <QStyle>
#include <QStyleFactory>
#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <set>
#include <vector>

namespace tolvane::tests {
namespace {

/// The colours in each of the lowest rows of pixels, with two pixels to a point.
std::vector<std::set<QRgb>> colorsOfLowestRows(QMenuBar& bar, QStyle& fusion) {
    bar.setStyle(&fusion);
    for (const char* const title : {"&File", "&Edit", "&View", "&Bookmark"}) {
        bar.addMenu(title)->addAction("Item");
    }
    bar.resize(500, bar.sizeHint().height());
    constexpr int scale = 2;
    QImage image(bar.size() * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    bar.show();
    bar.render(&image);
    constexpr int count = 4;
    std::vector<std::set<QRgb>> rows(count);
    for (int row = 0; row < count; ++row) {
        for (int x = 0; x < image.width(); ++x) {
            rows[static_cast<std::size_t>(row)].insert(image.pixel(x, image.height() - count + row));
        }
    }
    return rows;
}

TEST(MenuBar, hasAWholeLineBelowItsTitlesAtTwiceTheScale) {
    application();
    const std::unique_ptr<QStyle> fusion(QStyleFactory::create("Fusion"));
    platform::MenuBar bar;
    std::set<QRgb> colors;
    for (const std::set<QRgb>& row : colorsOfLowestRows(bar, *fusion)) {
        EXPECT_EQ(row.size(), 1U);
        colors.insert(row.begin(), row.end());
    }
    EXPECT_EQ(colors.size(), 2U) << "the line and what is beside it";
}

} // namespace
} // namespace tolvane::tests
