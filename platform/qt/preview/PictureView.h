#pragma once

#include <QImage>
#include <QPixmap>
#include <QTimer>
#include <QWidget>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tolvane::platform {

/// Shows a picture as large as fits, but not enlarged, or the frames of an animation in a loop.
class PictureView final : public QWidget {
public:
    explicit PictureView(QWidget* parent = nullptr);

    /// Adds a frame, which stays for so many milliseconds before the next.
    void addFrame(QImage image, std::uint32_t delay);
    void clear();

    std::size_t frameCount() const { return frames_.size(); }
    std::size_t shownFrame() const { return shown_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* /*event*/) override { wait(); }
    void hideEvent(QHideEvent* /*event*/) override { timer_.stop(); }

private:
    struct Frame {
        QImage image;
        int delay = 0;
    };

    void goOn();
    void wait();

    std::vector<Frame> frames_;
    std::size_t shown_ = 0;
    QPixmap scaled_; ///< The shown frame as it was painted last.
    QTimer timer_;
};

} // namespace tolvane::platform
