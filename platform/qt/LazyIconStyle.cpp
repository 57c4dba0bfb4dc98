#include "platform/qt/LazyIconStyle.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPixmap>

#include <memory>

namespace tolvane::platform {

namespace {

/// The icon that the style underneath has, asked for when it is drawn.
class LazyIcon final : public QIconEngine {
public:
    explicit LazyIcon(QStyle::StandardPixmap which) : which_(which) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        icon().paint(painter, rect, Qt::AlignCenter, mode, state);
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return icon().pixmap(size, mode, state);
    }
    QIconEngine* clone() const override { return std::make_unique<LazyIcon>(which_).release(); }

private:
    QIcon icon() const {
        const auto* const style = qobject_cast<const QProxyStyle*>(QApplication::style());
        return style == nullptr ? QIcon() : style->baseStyle()->standardIcon(which_);
    }

    QStyle::StandardPixmap which_;
};

} // namespace

QIcon LazyIconStyle::standardIcon(
    StandardPixmap which, const QStyleOption* option, const QWidget* widget) const {
    if (which == SP_ToolBarHorizontalExtensionButton) {
        return QIcon(std::make_unique<LazyIcon>(which).release());
    }
    return QProxyStyle::standardIcon(which, option, widget);
}

} // namespace tolvane::platform
