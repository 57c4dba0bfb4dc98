#include "platform/qt/network/QtURLSession.h"

#include "platform/qt/application/MakeChild.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUrl>
#include <QVariant>

namespace tolvane::platform {

namespace {

Error errorOf(QNetworkReply::NetworkError code, const QString& description) {
    return {
        "QNetworkReply",
        static_cast<std::int64_t>(code),
        {{std::string(NSLocalizedDescriptionKey), description.toStdString()}}};
}

/// Qt also counts a status such as 404 as an error, and some of them as an invalid operation.
bool isMereStatus(const QNetworkReply& reply) {
    const QNetworkReply::NetworkError code = reply.error();
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid()
           && ((code >= QNetworkReply::ContentAccessDenied && code <= QNetworkReply::UnknownContentError)
               || code == QNetworkReply::ProtocolInvalidOperationError
               || code >= QNetworkReply::InternalServerError);
}

Data dataOf(const QByteArray& bytes) {
    const auto* const first = reinterpret_cast<const std::byte*>(bytes.constData());
    return {first, first + bytes.size()};
}

URLResponse responseOf(const QNetworkReply& reply) {
    URLResponse response;
    const QVariant status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute);
    if (status.isValid()) {
        response.statusCode = status.toInt();
    }
    const QByteArray type = reply.rawHeader("Content-Type").split(';').value(0).trimmed();
    if (!type.isEmpty()) {
        response.MIMEType = type.toStdString();
    }
    return response;
}

} // namespace

/// Makes the requests. Everything but the constructor happens on the session's thread.
class URLSessionWorker final : public QObject {
public:
    explicit URLSessionWorker(TransferLimits limits) : limits_(limits) {}

    void get(const QUrl& url, const QByteArray& userAgent, const DataTaskCompletionHandler& handler) {
        if (url.scheme() != QLatin1String("https")) {
            handler(
                std::nullopt, std::nullopt,
                errorOf(QNetworkReply::ProtocolUnknownError, QStringLiteral("not an HTTPS URL")));
            return;
        }
        QNetworkRequest request(url);
        request.setAttribute(
            QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
        request.setHeader(QNetworkRequest::UserAgentHeader, userAgent);
        request.setTransferTimeout(static_cast<int>(limits_.silence.count()));
        request.setMaximumRedirectsAllowed(mostRedirections);
        QNetworkReply* const reply = manager().get(request);
        const auto transfer = std::make_shared<Transfer>(Transfer{{}, handler});
        connect(
            reply, &QNetworkReply::readyRead, reply, [this, reply, transfer] { read(*reply, *transfer); });
        connect(reply, &QNetworkReply::finished, reply, [this, reply, transfer] {
            read(*reply, *transfer);
            finish(*reply, *transfer);
        });
    }

private:
    /// Made late, since Qt loads certificates and more with the first of these.
    QNetworkAccessManager& manager() {
        if (manager_ == nullptr) {
            manager_ = &makeChild<QNetworkAccessManager>(this);
        }
        return *manager_;
    }

    /// The handler is empty once it has been called.
    struct Transfer {
        QByteArray body;
        DataTaskCompletionHandler handler;
    };

    void read(QNetworkReply& reply, Transfer& transfer) const {
        // One that failed is closed, and Qt warns about reading it.
        if (!transfer.handler || !reply.isReadable()) {
            return;
        }
        transfer.body.append(reply.readAll());
        if (static_cast<std::size_t>(transfer.body.size()) > limits_.body) {
            fail(transfer, QNetworkReply::OperationCanceledError, QStringLiteral("the body is too long"));
            // Ends the transfer. Aborting it would make Qt warn where the status was an error.
            reply.deleteLater();
        }
    }

    static void finish(QNetworkReply& reply, Transfer& transfer) {
        reply.deleteLater();
        if (!transfer.handler) {
            return;
        }
        if (reply.error() != QNetworkReply::NoError && !isMereStatus(reply)) {
            fail(transfer, reply.error(), reply.errorString());
            return;
        }
        std::exchange(transfer.handler, nullptr)(dataOf(transfer.body), responseOf(reply), std::nullopt);
    }

    static void fail(Transfer& transfer, QNetworkReply::NetworkError code, const QString& description) {
        std::exchange(transfer.handler, nullptr)(std::nullopt, std::nullopt, errorOf(code, description));
    }

    static constexpr int mostRedirections = 20;

    TransferLimits limits_;
    QNetworkAccessManager* manager_ = nullptr;
};

class QtURLSession::Task final : public URLSessionDataTask {
public:
    Task(QtURLSession& session, const URL& url, DataTaskCompletionHandler handler)
        : session_(session)
        , url_(QUrl::fromEncoded(QByteArray::fromStdString(url.absoluteString()), QUrl::StrictMode))
        , handler_(std::move(handler)) {}

    void resume() override {
        if (!handler_) {
            return;
        }
        URLSessionWorker& worker = session_.worker();
        ++session_.underWay_;
        const auto told = [&session = session_, handler = std::exchange(handler_, nullptr)](
                              std::optional<Data> data, std::optional<URLResponse> response,
                              std::optional<Error> error) {
            handler(std::move(data), std::move(response), std::move(error));
            // The session waits for this thread before it goes.
            QMetaObject::invokeMethod(
                &session.home_, [&session] { --session.underWay_; }, Qt::QueuedConnection);
        };
        QMetaObject::invokeMethod(
            &worker,
            [&worker, url = url_, userAgent = QCoreApplication::applicationName().toUtf8(), told] {
                worker.get(url, userAgent, told);
            },
            Qt::QueuedConnection);
    }

private:
    QtURLSession& session_;
    QUrl url_;
    DataTaskCompletionHandler handler_;
};

QtURLSession::~QtURLSession() {
    thread_.quit();
    thread_.wait();
}

std::shared_ptr<URLSessionDataTask> QtURLSession::dataTaskWithURL(
    const URL& url, DataTaskCompletionHandler completionHandler) {
    return std::make_shared<Task>(*this, url, std::move(completionHandler));
}

URLSessionWorker& QtURLSession::worker() {
    if (worker_ == nullptr) {
        worker_ = std::make_unique<URLSessionWorker>(limits_).release();
        worker_->moveToThread(&thread_);
        QObject::connect(&thread_, &QThread::finished, worker_, &QObject::deleteLater);
        thread_.start();
    }
    return *worker_;
}

} // namespace tolvane::platform
