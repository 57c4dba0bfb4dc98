#include "platform/qt/application/DarkColors.h"

#include "tests/platform/qt/QtTest.h"

#include <QToolTip>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tolvane::tests {
namespace {

/// The contrast of two colours as the rules for readable web pages measure it, from 1 to 21.
double contrast(const QColor& a, const QColor& b) {
    const auto luminance = [](const QColor& color) {
        const auto linear = [](float value) {
            const auto part = static_cast<double>(value);
            return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
               + 0.0722 * linear(color.blueF());
    };
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

class DarkColorsTest : public testing::Test {
protected:
    DarkColorsTest() { application(); }
    ~DarkColorsTest() override {
        QApplication::setPalette(QPalette());
        QToolTip::setPalette(toolTips);
    }

    static bool isDark() { return QApplication::palette().color(QPalette::Window).lightness() < 128; }

    const QPalette before = QApplication::palette();
    const QPalette toolTips = QToolTip::palette();
    platform::DarkColors colors;
};

TEST_F(DarkColorsTest, makeALightThemeDarkAndLightAgain) {
    QWidget window;
    window.show();
    ASSERT_FALSE(isDark());
    colors.setPreferred(true);
    EXPECT_TRUE(isDark());
    QCoreApplication::processEvents();
    EXPECT_LT(window.palette().color(QPalette::Window).lightness(), 128);
    EXPECT_LT(QToolTip::palette().color(QPalette::ToolTipBase).lightness(), 128);
    colors.setPreferred(false);
    EXPECT_EQ(QApplication::palette(), before);
    EXPECT_EQ(QToolTip::palette(), toolTips);
}

TEST_F(DarkColorsTest, leaveADarkThemeAlone) {
    QApplication::setPalette({QColor(20, 40, 20), QColor(30, 50, 30)});
    const QPalette own = QApplication::palette();
    colors.setPreferred(true);
    EXPECT_EQ(QApplication::palette(), own);
    colors.setPreferred(false);
    EXPECT_EQ(QApplication::palette(), own);
}

TEST_F(DarkColorsTest, canBeRead) {
    colors.setPreferred(true);
    const QPalette palette = QApplication::palette();
    using Pair = std::pair<QPalette::ColorRole, QPalette::ColorRole>;
    for (const auto& [text, ground] :
         {Pair{QPalette::WindowText, QPalette::Window}, Pair{QPalette::Text, QPalette::Base},
          Pair{QPalette::Text, QPalette::AlternateBase}, Pair{QPalette::ButtonText, QPalette::Button},
          Pair{QPalette::HighlightedText, QPalette::Highlight}, Pair{QPalette::Link, QPalette::Base},
          Pair{QPalette::LinkVisited, QPalette::Base}, Pair{QPalette::PlaceholderText, QPalette::Base},
          Pair{QPalette::ToolTipText, QPalette::ToolTipBase}}) {
        EXPECT_GE(contrast(palette.color(text), palette.color(ground)), 4.5) << text << " on " << ground;
    }
}

} // namespace
} // namespace tolvane::tests
