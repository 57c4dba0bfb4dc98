#pragma once

#include "platform/MainQueue.h"
#include "platform/qt/network/WorkReceiver.h"

#include <functional>
#include <utility>

namespace tolvane::platform {

/// Work for the thread that makes this object, which its event loop does. It outlives whoever hands work
/// over.
class QtMainQueue final : public MainQueue {
public:
    void async(std::function<void()> work) override { receiver_.post(std::move(work)); }

private:
    WorkReceiver receiver_;
};

} // namespace tolvane::platform
