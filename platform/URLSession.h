#pragma once

#include "platform/Error.h"
#include "platform/URL.h"
#include "platform/Value.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tolvane::platform {

/// What came back for a request, as far as this program asks.
struct URLResponse {
    /// The status of an HTTP response; nothing for a response of another kind.
    std::optional<int> statusCode;
    /// The kind of the body without its parameters, its letters as they were sent; nothing when none was
    /// told.
    std::optional<std::string> MIMEType;
};

/// What a data task calls when it is over: the whole body and the response, or an error. A status such as 404
/// is a response, not an error. Called once, on a thread of the session's own.
using DataTaskCompletionHandler = std::function<void(
    std::optional<Data> data, std::optional<URLResponse> response, std::optional<Error> error)>;

/// One request.
class URLSessionDataTask {
public:
    URLSessionDataTask() = default;
    URLSessionDataTask(const URLSessionDataTask&) = delete;
    URLSessionDataTask& operator=(const URLSessionDataTask&) = delete;
    virtual ~URLSessionDataTask() = default;

    /// Has the request made, and returns at once. A task that is not resumed does nothing; resuming it again
    /// does nothing more.
    virtual void resume() = 0;
};

/// Fetches what URLs lead to, in the background.
class URLSession {
public:
    URLSession() = default;
    URLSession(const URLSession&) = delete;
    URLSession& operator=(const URLSession&) = delete;
    /// Gives up what is under way: no handler is called once the session is gone.
    virtual ~URLSession() = default;

    /// A task that will GET the URL. Once resumed, it need not be kept. The session outlives its tasks.
    virtual std::shared_ptr<URLSessionDataTask> dataTaskWithURL(
        const URL& url, DataTaskCompletionHandler completionHandler) = 0;
};

} // namespace tolvane::platform
