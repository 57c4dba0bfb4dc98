#pragma once

#include "tests/platform/qt/QtTest.h"
#include "tests/support/TestAuthority.h"

#include <QByteArray>
#include <QHostAddress>
#include <QNetworkProxyFactory>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QSslSocket>
#include <QString>
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace tolvane::tests {

inline QByteArray contentsOf(const std::string& path) {
    return QByteArray::fromStdString(contentsOfFile(path));
}

/// Makes this program trust the authority only, and use no proxy.
inline void trustAlone(const TestAuthority& authority) {
    QNetworkProxyFactory::setUseSystemConfiguration(false);
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setCaCertificates(
        QSslCertificate::fromData(contentsOf(authority.own().certificate), QSsl::Pem));
    QSslConfiguration::setDefaultConfiguration(configuration);
}

/// A whole response; the connection is closed after it.
inline QByteArray response(const QByteArray& status, const QByteArray& contentType, const QByteArray& body) {
    return "HTTP/1.1 " + status + "\r\nContent-Type: " + contentType + "\r\nContent-Length: "
           + QByteArray::number(body.size()) + "\r\nConnection: close\r\n\r\n" + body;
}

/// An HTTPS server on the loopback, whose answers are bytes of the test.
class HttpsServer {
public:
    using Answer = std::function<void(QSslSocket& client)>;

    /// Serves while the test runs its event loop.
    explicit HttpsServer(const Certificate& certificate) {
        application();
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.setLocalCertificate(QSslCertificate(contentsOf(certificate.certificate), QSsl::Pem));
        configuration.setPrivateKey(QSslKey(contentsOf(certificate.key), QSsl::Ec, QSsl::Pem));
        server_.setSslConfiguration(configuration);
        EXPECT_TRUE(server_.listen(QHostAddress::LocalHost));
        QObject::connect(&server_, &QTcpServer::pendingConnectionAvailable, &server_, [this] { accept(); });
    }

    /// The address of a path that begins with a slash.
    std::string url(const std::string& path) const {
        return "https://127.0.0.1:" + std::to_string(server_.serverPort()) + path;
    }

    void answer(const QByteArray& path, const QByteArray& bytes) {
        answers_[path] = [bytes](QSslSocket& client) {
            client.write(bytes);
            client.disconnectFromHost();
        };
    }
    void answerBy(const QByteArray& path, Answer answer) { answers_[path] = std::move(answer); }

    /// The requests so far, as they came.
    const std::vector<QByteArray>& requests() const { return requests_; }

    void stop() { server_.close(); }

private:
    void accept() {
        while (auto* const client = qobject_cast<QSslSocket*>(server_.nextPendingConnection())) {
            QObject::connect(client, &QSslSocket::readyRead, client, [this, client] { read(*client); });
            read(*client);
        }
    }

    void read(QSslSocket& client) {
        QByteArray& request = unfinished_[&client];
        request += client.readAll();
        if (!request.contains("\r\n\r\n")) {
            return;
        }
        requests_.push_back(std::exchange(request, {}));
        const QByteArray path = requests_.back().split(' ').value(1);
        if (const auto answer = answers_.find(path); answer != answers_.end()) {
            answer->second(client);
        } else {
            client.disconnectFromHost();
        }
    }

    QSslServer server_;
    std::map<QByteArray, Answer> answers_;
    std::map<QSslSocket*, QByteArray> unfinished_;
    std::vector<QByteArray> requests_;
};

} // namespace tolvane::tests
