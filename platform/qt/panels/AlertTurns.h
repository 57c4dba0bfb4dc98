#pragma once

#include "platform/qt/panels/QtAlerts.h"
#include "platform/services/MainQueue.h"

#include <functional>
#include <utility>

namespace tolvane::platform {

/// Runs work that may show alerts on the main thread, when no other alert is shown or waits for its turn
/// (`QtAlerts::whenFree`).
class AlertTurns final : public MainQueue {
public:
    /// Both outlive this object.
    AlertTurns(MainQueue& mainQueue, QtAlerts& alerts) : mainQueue_(mainQueue), alerts_(alerts) {}

    void async(std::function<void()> work) override {
        mainQueue_.async([&alerts = alerts_, work = std::move(work)] { alerts.whenFree(work); });
    }

private:
    MainQueue& mainQueue_;
    QtAlerts& alerts_;
};

} // namespace tolvane::platform
