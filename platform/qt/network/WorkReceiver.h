#pragma once

#include <QObject>

#include <functional>

namespace tolvane::platform {

/// Does work on the thread that it lives on, in that thread's event loop.
class WorkReceiver : public QObject {
public:
    /// May be called from any thread. The work is done later, in the order in which it was handed over; what
    /// is left when this object goes is dropped.
    void post(std::function<void()> work);

protected:
    void customEvent(QEvent* event) override;
};

} // namespace tolvane::platform
