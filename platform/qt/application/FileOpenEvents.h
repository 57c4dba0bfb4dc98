#pragma once

#include "platform/values/URL.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <vector>

namespace tolvane::platform {

/// Collects the files that macOS asks the program to open, which come one by one. Those that come together
/// are passed on together by the event loop. Main thread only.
class FileOpenEvents final : public QObject {
public:
    using Opener = std::function<void(const std::vector<URL>& urls)>;

    /// Watches the application.
    explicit FileOpenEvents(Opener opener);

    bool hasFilesWaiting() const { return !waiting_.empty(); }

    /// Takes events with a file; those with another URL are left to Qt.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Opener opener_;
    std::vector<URL> waiting_;
    QTimer passingOn_;
};

} // namespace tolvane::platform
