#include "platform/qt/preview/PictureView.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace tolvane::platform {

constexpr int pictureMargin = 12;

PictureView::PictureView(QWidget* parent) : QWidget(parent) {
    setAccessibleName(QStringLiteral("Picture"));
    timer_.setSingleShot(true);
    QObject::connect(&timer_, &QTimer::timeout, this, [this] { goOn(); });
}

void PictureView::addFrame(QImage image, std::uint32_t delay) {
    // Shorter delays mean the usual one.
    constexpr std::uint32_t shortestDelay = 20;
    constexpr std::uint32_t usualDelay = 100;
    constexpr std::uint32_t longestDelay = 60'000;
    const std::uint32_t wait = delay < shortestDelay ? usualDelay : std::min(delay, longestDelay);
    frames_.push_back({std::move(image), static_cast<int>(wait)});
    if (frames_.size() == 1) {
        update();
    } else if (!timer_.isActive()) {
        this->wait();
    }
}

void PictureView::clear() {
    timer_.stop();
    frames_.clear();
    shown_ = 0;
    scaled_ = {};
    update();
}

void PictureView::goOn() {
    shown_ = shown_ + 1 < frames_.size() ? shown_ + 1 : 0;
    scaled_ = {};
    update();
    wait();
}

void PictureView::wait() {
    if (frames_.size() > 1 && isVisible()) {
        timer_.start(frames_[shown_].delay);
    }
}

void PictureView::paintEvent(QPaintEvent* /*event*/) {
    if (shown_ >= frames_.size()) {
        return;
    }
    const QImage& image = frames_[shown_].image;
    const qreal ratio = devicePixelRatioF();
    const QSize room =
        (QSizeF(size() - QSize(2 * pictureMargin, 2 * pictureMargin)) * ratio).toSize().expandedTo({1, 1});
    QSize shown = image.size();
    if (shown.width() > room.width() || shown.height() > room.height()) {
        shown = shown.scaled(room, Qt::KeepAspectRatio).expandedTo({1, 1});
    }
    if (scaled_.size() != shown) {
        scaled_ = QPixmap::fromImage(
            image.size() == shown ? image
                                  : image.scaled(shown, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    }
    scaled_.setDevicePixelRatio(ratio);
    QRectF place({0, 0}, QSizeF(shown) / ratio);
    place.moveCenter(QRectF(rect()).center());
    // A picture's pixels should fall onto those of the screen.
    place.moveTopLeft(QPointF((place.topLeft() * ratio).toPoint()) / ratio);
    QPainter painter(this);
    painter.fillRect(place, palette().color(QPalette::Base));
    painter.drawPixmap(place.topLeft(), scaled_);
}

} // namespace tolvane::platform
