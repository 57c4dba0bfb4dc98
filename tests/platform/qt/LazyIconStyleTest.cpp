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
protected:
    LazyIconStyleTest() {
        application();
        auto style = std::make_unique<LazyIconStyle>();
        auto base = std::make_unique<CountingStyle>(QStyleFactory::create("Fusion"));
        base_ = base.get();
        style->setBaseStyle(base.release());
        style_ = style.get();
        QApplication::setStyle(style.release());
    }
    ~LazyIconStyleTest() override { QApplication::setStyle(QStyleFactory::create("Fusion")); }

    LazyIconStyle* style_ = nullptr;
    CountingStyle* base_ = nullptr;
};

TEST_F(LazyIconStyleTest, loadsNoIconForAMenuBar) {
    const QMenuBar bar;
    EXPECT_EQ(base_->asked, 0);
}

TEST_F(LazyIconStyleTest, hasTheIconWhenItIsDrawn) {
    constexpr int side = 16;
    const QIcon icon = style_->standardIcon(QStyle::SP_ToolBarHorizontalExtensionButton);
    EXPECT_EQ(base_->asked, 0);
    const QImage drawn = icon.pixmap(side, side).toImage();
    EXPECT_EQ(base_->asked, 1);
    const QIcon expected = base_->standardIcon(QStyle::SP_ToolBarHorizontalExtensionButton, nullptr, nullptr);
    EXPECT_EQ(drawn, expected.pixmap(side, side).toImage());
    EXPECT_FALSE(drawn.isNull());
}

TEST_F(LazyIconStyleTest, leavesOtherIconsAlone) {
    EXPECT_FALSE(style_->standardIcon(QStyle::SP_MessageBoxCritical).isNull());
    EXPECT_EQ(base_->asked, 1);
}

} // namespace
} // namespace tolvane::tests
