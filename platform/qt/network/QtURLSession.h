#pragma once

#include "platform/URLSession.h"

#include <QThread>

#include <chrono>
#include <cstddef>

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
/// is a URL that is none of HTTPS. The domain of errors is "QNetworkReply", their codes are the toolkit's.
class QtURLSession final : public URLSession {
public:
    explicit QtURLSession(TransferLimits limits = {}) : limits_(limits) {}
    QtURLSession(const QtURLSession&) = delete;
    QtURLSession& operator=(const QtURLSession&) = delete;
    /// Waits for the thread to end, not for transfers.
    ~QtURLSession() override;

    std::shared_ptr<URLSessionDataTask> dataTaskWithURL(
        const URL& url, DataTaskCompletionHandler completionHandler) override;

    /// Whether anything was ever asked for. Then the toolkit's application object waits, when it goes, until
    /// the system has answered which host a name stands for, even when nobody wants to know any more.
    bool hasAsked() const { return worker_ != nullptr; }

private:
    class Task;

    URLSessionWorker& worker();

    TransferLimits limits_;
    QThread thread_;
    /// Lives on the thread, which destroys it at its end.
    URLSessionWorker* worker_ = nullptr;
};

} // namespace tolvane::platform
