#pragma once

#include "platform/services/MainQueue.h"
#include "platform/services/URLSession.h"

#include <QMetaObject>
#include <QObject>
#include <QThread>

#include <chrono>
#include <cstddef>
#include <functional>
#include <utility>

namespace tolvane::platform {

class URLSessionWorker;

/// When a transfer is given up.
struct TransferLimits {
    /// For bodies that are longer, in bytes.
    std::size_t body = std::size_t{1024} * 1024;
    /// For servers that are silent for as long.
    std::chrono::milliseconds silence = std::chrono::seconds(60);
};

/// Fetches over HTTPS, on a thread of its own that is started with the first task. Certificates are checked;
/// redirections are followed only where they stay with HTTPS. What is given up or cut off is an error, and so
/// is a URL of another scheme. The domain of errors is "QNetworkReply", their codes are Qt's.
class QtURLSession final : public URLSession {
public:
    explicit QtURLSession(TransferLimits limits = {}) : limits_(limits) {}
    QtURLSession(const QtURLSession&) = delete;
    QtURLSession& operator=(const QtURLSession&) = delete;
    /// Waits for the thread to end, not for transfers.
    ~QtURLSession() override;

    std::shared_ptr<URLSessionDataTask> dataTaskWithURL(
        const URL& url, DataTaskCompletionHandler completionHandler) override;

    /// Whether any task was ever started. If so, Qt's application object waits at its destruction until the
    /// system has resolved the host name, even when the result is no longer needed.
    bool hasAsked() const { return worker_ != nullptr; }

    /// Whether a task that was started has not called its handler yet, or what that handed to the main queue
    /// has not begun.
    bool isAsking() const { return underWay_ > 0; }

private:
    class Task;

    URLSessionWorker& worker();

    TransferLimits limits_;
    QThread thread_;
    /// Lives on the thread, which destroys it at its end.
    URLSessionWorker* worker_ = nullptr;
    int underWay_ = 0;
    /// Gets the news of each end, on the thread that made it.
    QObject home_;
};

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
