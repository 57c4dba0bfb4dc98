#pragma once

#include <QObject>
#include <QTimer>

#include <functional>

namespace tolvane::platform {

/// Work that is done in steps between the application's events, so that windows are painted and respond
/// meanwhile. The first step is taken once a window was painted, or after a while without. When the
/// application is told to quit, the steps that are left are not taken.
class StepsAfterPainting final : public QObject {
public:
    StepsAfterPainting();

    /// Takes steps until one returns false. Nothing may be running.
    void start(std::function<bool()> step);

    bool isRunning() const { return timer_.isActive(); }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void takeStep();

    std::function<bool()> step_;
    QTimer timer_;
};

} // namespace tolvane::platform
