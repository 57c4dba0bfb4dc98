#pragma once

#include "platform/values/Error.h"
#include "platform/values/URL.h"
#include "platform/values/Value.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tolvane::platform {

/// The parts of a response that this program uses.
struct URLResponse {
    /// The status of an HTTP response; nothing for other protocols.
    std::optional<int> statusCode;
    /// The MIME type without parameters, as sent; nothing if absent.
    std::optional<std::string> MIMEType;
};

/// Called once when a data task is complete, on a thread of the session: the whole body and the response, or
/// an error. A status such as 404 is a response, not an error.
using DataTaskCompletionHandler = std::function<void(
    std::optional<Data> data, std::optional<URLResponse> response, std::optional<Error> error)>;

/// One request.
class URLSessionDataTask {
public:
    URLSessionDataTask() = default;
    URLSessionDataTask(const URLSessionDataTask&) = delete;
    URLSessionDataTask& operator=(const URLSessionDataTask&) = delete;
    virtual ~URLSessionDataTask() = default;

    /// Starts the request and returns at once. Without it a task does nothing; a second call does nothing.
    virtual void resume() = 0;
};

/// Downloads URLs in the background.
class URLSession {
public:
    URLSession() = default;
    URLSession(const URLSession&) = delete;
    URLSession& operator=(const URLSession&) = delete;
    /// Cancels running tasks: no handler is called after the session is gone.
    virtual ~URLSession() = default;

    /// A task that will GET the URL. Once resumed it need not be kept. The session outlives its tasks.
    virtual std::shared_ptr<URLSessionDataTask> dataTaskWithURL(
        const URL& url, DataTaskCompletionHandler completionHandler) = 0;
};

} // namespace tolvane::platform
