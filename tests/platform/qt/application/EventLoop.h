// Letting the toolkit's event loop run for as long as a test needs it.
#pragma once

#include <QCoreApplication>
#include <QTest>

#include <functional>

namespace tolvane::tests {

/// Runs the event loop until the condition holds, with a limit that only a failure reaches.
inline bool eventually(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, 30'000);
}

/// Has done whatever was put off until later, deletions included.
inline void settle() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace tolvane::tests
