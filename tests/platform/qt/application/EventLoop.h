#pragma once

#include <QCoreApplication>
#include <QTest>

#include <functional>

namespace tolvane::tests {

/// Runs the event loop until the condition holds, with a limit that only a failure reaches.
inline bool eventually(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, 60'000);
}

/// Handles pending events and deletions.
inline void settle() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace tolvane::tests
