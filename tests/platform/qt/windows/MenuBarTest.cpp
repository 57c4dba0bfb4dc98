#include "platform/qt/windows/MenuBar.h"

#include "tests/platform/qt/QtTest.h"

#include <QImage>
#include <QMenu>
#include <QStyle>
#include <QStyleFactory>
#include <gtest/gtest.h>

#include <memory>
#include <set>

namespace tolvane::tests {
namespace {

TEST(MenuBar, hasAWholeLineBelowItsTitlesAtTwiceTheScale) {
    application();
    const std::unique_ptr<QStyle> fusion(QStyleFactory::create("Fusion"));
    platform::MenuBar bar;
    bar.setStyle(fusion.get());
    for (const char* const title : {"&File", "&Edit", "&View", "&Bookmark"}) {
        bar.addMenu(title)->addAction("Item");
    }
    bar.resize(500, bar.sizeHint().height());
    constexpr int scale = 2;
    QImage image(bar.size() * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    bar.show();
    bar.render(&image);
    std::set<QRgb> colors;
    for (int y = image.height() - 4; y < image.height(); ++y) {
        std::set<QRgb> row;
        for (int x = 0; x < image.width(); ++x) {
            row.insert(image.pixel(x, y));
        }
        EXPECT_EQ(row.size(), 1U);
        colors.merge(row);
    }
    EXPECT_EQ(colors.size(), 2U) << "the line and what is beside it";
}

} // namespace
} // namespace tolvane::tests
