#include "platform/qt/LazyIconStyle.h"

#include "tests/platform/qt/QtTest.h"

#include <QApplication>
#include <QMenuBar>
#include <QPixmap>
#include <QStyleFactory>
#include <gtest/gtest.h>

#include <memory>

namespace tolvane::tests {
namespace {

using platform::LazyIconStyle;

/// A style that counts the icons it is asked for.
class CountingStyle final : public QProxyStyle {
public:
    using QProxyStyle::QProxyStyle;

    QIcon standardIcon(
        StandardPixmap which, const QStyleOption* option, const QWidget* widget) const override {
        ++asked;
        return QProxyStyle::standardIcon(which, option, widget);
    }
    mutable int asked = 0;
};

class LazyIconStyleTest : public testing::Test {
public:
    LazyIconStyleTest() {
        application();
        auto style = std::make_unique<LazyIconStyle>();
        auto counting = std::make_unique<CountingStyle>(QStyleFactory::create("Fusion"));
        base = counting.get();
        style->setBaseStyle(counting.release());
        lazy = style.get();
        QApplication::setStyle(style.release());
    }
    ~LazyIconStyleTest() override { QApplication::setStyle(QStyleFactory::create("Fusion")); }

protected:
    LazyIconStyle* lazy = nullptr;
    CountingStyle* base = nullptr;
};

TEST_F(LazyIconStyleTest, loadsNoIconForAMenuBar) {
    const QMenuBar bar;
    EXPECT_EQ(base->asked, 0);
}

TEST_F(LazyIconStyleTest, hasTheIconWhenItIsDrawn) {
    constexpr int side = 16;
    const QIcon icon = lazy->standardIcon(QStyle::SP_ToolBarHorizontalExtensionButton);
    EXPECT_EQ(base->asked, 0);
    const QImage drawn = icon.pixmap(side, side).toImage();
    EXPECT_EQ(base->asked, 1);
    const QIcon expected = base->standardIcon(QStyle::SP_ToolBarHorizontalExtensionButton, nullptr, nullptr);
    EXPECT_EQ(drawn, expected.pixmap(side, side).toImage());
    EXPECT_FALSE(drawn.isNull());
}

TEST_F(LazyIconStyleTest, leavesOtherIconsAlone) {
    EXPECT_FALSE(lazy->standardIcon(QStyle::SP_MessageBoxCritical).isNull());
    EXPECT_EQ(base->asked, 1);
}

} // namespace
} // namespace tolvane::tests
