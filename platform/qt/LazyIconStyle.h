#pragma once

#include <QProxyStyle>

namespace tolvane::platform {

/// The desktop's own style, but for when it loads the icon of a menu bar's overflow button: a menu bar asks
/// for it as it is made, whether or not anything will ever overflow, and loading the first icon makes the
/// toolkit load every decoder of pictures there is.
class LazyIconStyle final : public QProxyStyle {
public:
    LazyIconStyle() = default;

    QIcon standardIcon(
        StandardPixmap which,
        const QStyleOption* option = nullptr,
        const QWidget* widget = nullptr) const override;
};

} // namespace tolvane::platform
