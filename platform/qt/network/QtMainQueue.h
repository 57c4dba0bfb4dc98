#pragma once

#include "platform/services/MainQueue.h"

#include <QMetaObject>
#include <QObject>

#include <functional>
#include <utility>

namespace tolvane::platform {

/// Runs work in the event loop of the thread that makes this object, which outlives every caller. Work that
/// is left when this object is destroyed is dropped.
class QtMainQueue final : public MainQueue {
public:
    void async(std::function<void()> work) override {
        QMetaObject::invokeMethod(&context_, std::move(work), Qt::QueuedConnection);
    }

private:
    QObject context_;
};

} // namespace tolvane::platform
