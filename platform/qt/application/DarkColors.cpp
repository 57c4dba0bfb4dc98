#include "platform/qt/application/DarkColors.h"

#include <QApplication>
#include <QColor>
#include <QToolTip>

#include <array>

namespace tolvane::platform {

namespace {

struct RoleColor {
    QPalette::ColorRole role;
    QRgb color;
};

constexpr std::array<RoleColor, 20> colors{{
    {QPalette::Window, 0xFF35373A},      {QPalette::WindowText, 0xFFECECEC},
    {QPalette::Base, 0xFF1D1F21},        {QPalette::AlternateBase, 0xFF26282A},
    {QPalette::Text, 0xFFECECEC},        {QPalette::PlaceholderText, 0xFF9A9DA1},
    {QPalette::Button, 0xFF45484C},      {QPalette::ButtonText, 0xFFECECEC},
    {QPalette::BrightText, 0xFFFF7B72},  {QPalette::Light, 0xFF54585D},
    {QPalette::Midlight, 0xFF46494E},    {QPalette::Mid, 0xFF242629},
    {QPalette::Dark, 0xFF17191B},        {QPalette::Shadow, 0xFF0A0B0C},
    {QPalette::Highlight, 0xFF2F6FB5},   {QPalette::HighlightedText, 0xFFFFFFFF},
    {QPalette::Link, 0xFF7AB8FF},        {QPalette::LinkVisited, 0xFFC3A6FF},
    {QPalette::ToolTipBase, 0xFF45484C}, {QPalette::ToolTipText, 0xFFECECEC},
}};

constexpr std::array<RoleColor, 5> disabledColors{{
    {QPalette::WindowText, 0xFF85888C},
    {QPalette::Text, 0xFF85888C},
    {QPalette::ButtonText, 0xFF85888C},
    {QPalette::Highlight, 0xFF46494E},
    {QPalette::HighlightedText, 0xFFB0B3B7},
}};

QPalette darkPalette() {
    QPalette palette;
    for (const auto& [role, color] : colors) {
        palette.setColor(role, QColor::fromRgb(color));
    }
    for (const auto& [role, color] : disabledColors) {
        palette.setColor(QPalette::Disabled, role, QColor::fromRgb(color));
    }
    return palette;
}

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

} // namespace

void DarkColors::setPreferred(bool preferred) {
    if (preferred == areApplied_ || (preferred && isDark(QApplication::palette()))) {
        return;
    }
    areApplied_ = preferred;
    if (preferred) {
        lightToolTips_ = QToolTip::palette();
        QApplication::setPalette(darkPalette());
        QToolTip::setPalette(darkPalette());
    } else {
        QApplication::setPalette(QPalette());
        QToolTip::setPalette(lightToolTips_);
    }
}

} // namespace tolvane::platform
