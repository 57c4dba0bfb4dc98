#include "platform/qt/network/QtURLSession.h"

#include "tests/platform/qt/application/EventLoop.h"
#include "tests/platform/qt/network/HttpsServer.h"
#include "tests/support/ScriptedSources.h"

#include <QCoreApplication>
#include <QTcpServer>
#include <QThread>
#include <QTimer>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace tolvane::tests {
namespace {

using platform::QtURLSession;
using testing::HasSubstr;
using testing::SizeIs;

/// The arguments and the thread of a completion.
struct Completion {
    std::optional<platform::Data> data;
    std::optional<platform::URLResponse> response;
    std::optional<platform::Error> error;
    const QThread* thread = nullptr;
};

/// Takes completions on any thread.
class Completions {
public:
    platform::DataTaskCompletionHandler handler() {
        return [this](auto data, auto response, auto error) {
            const std::scoped_lock lock(mutex_);
            taken_.push_back(
                {std::move(data), std::move(response), std::move(error), QThread::currentThread()});
        };
    }
    std::vector<Completion> taken() const {
        const std::scoped_lock lock(mutex_);
        return taken_;
    }

private:
    mutable std::mutex mutex_;
    std::vector<Completion> taken_;
};

/// A whole response.
QByteArray xml(const QByteArray& body) {
    return response("200 OK", "text/xml", body);
}

/// The begin of a response, which goes on with more header lines.
const QByteArray okay = "HTTP/1.1 200 OK\r\nContent-Type: text/xml\r\n";

class QtURLSessionTest : public testing::Test {
protected:
    QtURLSessionTest() { trustAlone(authority); }

    static void resume(QtURLSession& session, const std::string& url, Completions& completions) {
        session.dataTaskWithURL(*platform::URL::fromText(url), completions.handler())->resume();
    }

    /// The completion of a request; empty if there is none.
    static Completion fetch(const std::string& url, platform::TransferLimits limits = {}) {
        Completions completions;
        QtURLSession session(limits);
        resume(session, url, completions);
        EXPECT_TRUE(eventually([&] { return !completions.taken().empty(); })) << url;
        const auto taken = completions.taken();
        EXPECT_THAT(taken, SizeIs(1));
        return taken.empty() ? Completion{} : taken.front();
    }

    Completion fetchAnswer(const QByteArray& bytes) {
        server.answer("/", bytes);
        return fetch(server.url("/"));
    }

    static void expectError(const Completion& completion) {
        EXPECT_TRUE(completion.error);
        EXPECT_FALSE(completion.response);
        EXPECT_FALSE(completion.data);
    }

    static void expectBody(const Completion& completion, int status, const std::string& body) {
        EXPECT_FALSE(completion.error) << completion.error->localizedDescription();
        ASSERT_TRUE(completion.response);
        EXPECT_EQ(completion.response->statusCode, status);
        EXPECT_EQ(completion.data, bytesOf(body));
    }

    TestAuthority authority;
    HttpsServer server{authority.issueFor("IP:127.0.0.1,DNS:localhost")};
};

TEST_F(QtURLSessionTest, fetchesABodyOnAnotherThread) {
    const Completion completion = fetchAnswer(xml("the body"));
    expectBody(completion, 200, "the body");
    EXPECT_EQ(completion.response->MIMEType, "text/xml");
    EXPECT_NE(completion.thread, nullptr);
    EXPECT_NE(completion.thread, QCoreApplication::instance()->thread());
}

TEST_F(QtURLSessionTest, makesAPlainRequest) {
    QCoreApplication::setApplicationName("tolvane");
    server.answer("/a%2Fb?c=%20d", xml(""));
    fetch(server.url("/a%2Fb?c=%20d"));
    ASSERT_THAT(server.requests(), SizeIs(1));
    const std::string request = server.requests()[0].toStdString();
    EXPECT_TRUE(request.starts_with("GET /a%2Fb?c=%20d HTTP/1.1\r\n")) << request;
    // Names of fields may be in any case, and are not in the same in every version of Qt.
    const std::string lower = server.requests()[0].toLower().toStdString();
    EXPECT_THAT(lower, HasSubstr("\r\nuser-agent: tolvane\r\n"));
    EXPECT_THAT(lower, testing::Not(HasSubstr("\r\ncookie")));
}

TEST_F(QtURLSessionTest, givesAnEmptyBodyRatherThanNoneAndOneOfUnknownLength) {
    expectBody(fetchAnswer(xml("")), 200, "");
    expectBody(fetchAnswer("HTTP/1.1 204 No Content\r\nContent-Type: text/xml\r\n\r\n"), 204, "");
    expectBody(fetchAnswer(okay + "Connection: close\r\n\r\nabc"), 200, "abc");
}

TEST_F(QtURLSessionTest, returnsTheTypeOfTheBodyAsItWasSent) {
    const auto kindOf = [this](const QByteArray& contentType) {
        return fetchAnswer(response("200 OK", contentType, "x")).response->MIMEType;
    };
    EXPECT_EQ(kindOf("TEXT/XML"), "TEXT/XML");
    EXPECT_EQ(kindOf("text/plain; charset=utf-8"), "text/plain");
    EXPECT_EQ(kindOf("text/xml ;charset=\"a;b\""), "text/xml");
    EXPECT_EQ(kindOf("application/xml"), "application/xml");
    EXPECT_EQ(kindOf(""), std::nullopt);
    EXPECT_EQ(kindOf("; charset=utf-8"), std::nullopt);
    const Completion without = fetchAnswer("HTTP/1.1 200 OK\r\nContent-Length: 1\r\n\r\nx");
    EXPECT_EQ(without.response->MIMEType, std::nullopt);
}

TEST_F(QtURLSessionTest, takesStatusesForResponses) {
    for (const int status :
         {201, 226, 299, 304, 400, 401, 403, 404, 405, 409, 410, 418, 500, 501, 503, 599}) {
        const Completion completion =
            fetchAnswer(response(QByteArray::number(status) + " X", "text/xml", status == 304 ? "" : "b"));
        expectBody(completion, status, status == 304 ? "" : "b");
    }
}

TEST_F(QtURLSessionTest, fetchesInPiecesAndChunks) {
    server.answerBy("/", [](QSslSocket& client) {
        client.write(okay + "Transfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n");
        client.flush();
        QTimer::singleShot(20, &client, [&client] {
            client.write("2\r\nde\r\n0\r\n\r\n");
            client.disconnectFromHost();
        });
    });
    expectBody(fetch(server.url("/")), 200, "abcde");
}

TEST_F(QtURLSessionTest, takesABodyOfAMebibyteAndNoMore) {
    const QByteArray most(1024 * 1024, 'a');
    expectBody(fetchAnswer(xml(most)), 200, most.toStdString());
    expectError(fetchAnswer(xml(most + "b")));
    expectError(fetchAnswer(okay + "Connection: close\r\n\r\n" + most + "b"));
    expectError(fetchAnswer(response("404 Not Found", "text/xml", most + "b")));
}

TEST_F(QtURLSessionTest, givesUpAnEndlessBodyAndASilentServer) {
    server.answerBy("/", [](QSslSocket& client) {
        client.write(okay + "\r\n");
        const auto goOn = [&client] {
            if (client.encryptedBytesToWrite() < 100'000) {
                client.write(QByteArray(64 * 1024, 'a'));
            }
        };
        QObject::connect(&client, &QSslSocket::encryptedBytesWritten, &client, goOn);
        goOn();
    });
    expectError(fetch(server.url("/")));
    server.answerBy("/", [](QSslSocket& client) { client.write(okay + "Content-Length: 10\r\n\r\nabc"); });
    expectError(fetch(server.url("/"), {.silence = std::chrono::milliseconds(200)}));
}

TEST_F(QtURLSessionTest, takesACutOffResponseForAnError) {
    for (const QByteArray& bytes :
         {okay + "Content-Length: 10\r\n\r\nabc", okay + "Transfer-Encoding: chunked\r\n\r\nff\r\nabc",
          okay + "Transfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n",
          QByteArray("HTTP/1.1 200 OK\r\nContent-Ty"), QByteArray(),
          QByteArray("This is no HTTP at all\r\n\r\n")}) {
        SCOPED_TRACE(bytes.toStdString());
        expectError(fetchAnswer(bytes));
    }
}

TEST_F(QtURLSessionTest, refusesCertificatesOfUnknownAuthoritiesAndOtherServers) {
    TestAuthority stranger;
    for (const Certificate& certificate :
         {stranger.issueFor("IP:127.0.0.1"), authority.issueFor("DNS:elsewhere.example,IP:127.0.0.2")}) {
        SCOPED_TRACE(certificate.certificate);
        HttpsServer other(certificate);
        other.answer("/", xml("x"));
        expectError(fetch(other.url("/")));
        EXPECT_THAT(other.requests(), testing::IsEmpty());
    }
}

TEST_F(QtURLSessionTest, followsRedirectionsThatStayWithHTTPS) {
    HttpsServer other(authority.issueFor("IP:127.0.0.1"));
    other.answer("/b", xml("moved"));
    server.answer(
        "/", "HTTP/1.1 302 Found\r\nLocation: " + QByteArray::fromStdString(other.url("/b"))
                 + "\r\nContent-Length: 4\r\n\r\ngone");
    expectBody(fetch(server.url("/")), 200, "moved");
}

TEST_F(QtURLSessionTest, followsNoRedirectionToPlainHTTP) {
    QTcpServer plain;
    ASSERT_TRUE(plain.listen(QHostAddress::LocalHost));
    server.answer(
        "/", "HTTP/1.1 302 Found\r\nLocation: http://127.0.0.1:" + QByteArray::number(plain.serverPort())
                 + "/\r\nContent-Length: 0\r\n\r\n");
    expectError(fetch(server.url("/")));
    settle();
    EXPECT_FALSE(plain.hasPendingConnections());
}

TEST_F(QtURLSessionTest, endsACircleOfRedirections) {
    server.answer("/", "HTTP/1.1 302 Found\r\nLocation: /\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
    expectError(fetch(server.url("/")));
}

TEST_F(QtURLSessionTest, reportsThatNothingAnswers) {
    const std::string url = server.url("/");
    server.stop();
    expectError(fetch(url));
}

TEST_F(QtURLSessionTest, speaksNothingButHTTPS) {
    QTcpServer plain;
    ASSERT_TRUE(plain.listen(QHostAddress::LocalHost));
    expectError(fetch("http://127.0.0.1:" + std::to_string(plain.serverPort()) + "/"));
    expectError(fetch("file:///etc/passwd"));
    expectError(fetch("data:text/xml,x"));
    expectError(fetch("https:///"));
    EXPECT_FALSE(plain.hasPendingConnections());
}

TEST_F(QtURLSessionTest, startsNothingBeforeATaskIsResumed) {
    Completions completions;
    QtURLSession session;
    const auto task =
        session.dataTaskWithURL(*platform::URL::fromText(server.url("/")), completions.handler());
    settle();
    EXPECT_THAT(server.requests(), testing::IsEmpty());
    server.answer("/", xml("x"));
    EXPECT_FALSE(session.hasAsked());
    task->resume();
    EXPECT_TRUE(session.hasAsked());
    task->resume();
    EXPECT_TRUE(eventually([&] { return !completions.taken().empty(); }));
    resume(session, server.url("/"), completions);
    EXPECT_TRUE(eventually([&] { return completions.taken().size() > 1; }));
    EXPECT_THAT(server.requests(), SizeIs(2));
}

TEST_F(QtURLSessionTest, callsNoHandlerOnceItIsGone) {
    Completions completions;
    auto session = std::make_unique<QtURLSession>();
    bool isAsked = false;
    server.answerBy("/", [&isAsked](QSslSocket& client) {
        client.write(okay + "Content-Length: 10\r\n\r\nabc");
        isAsked = true;
    });
    resume(*session, server.url("/"), completions);
    EXPECT_TRUE(eventually([&] { return isAsked; }));
    resume(*session, server.url("/"), completions);
    session.reset();
    settle();
    EXPECT_TRUE(completions.taken().empty());
}

TEST_F(QtURLSessionTest, isAskingFromTheStartOfATaskUntilItsWorkHasBegun) {
    server.answer("/", xml("the body"));
    platform::QtMainQueue mainQueue;
    QtURLSession session;
    std::optional<bool> wasAsking;
    const auto task = session.dataTaskWithURL(
        *platform::URL::fromText(server.url("/")), [&](auto /*data*/, auto /*response*/, auto /*error*/) {
            mainQueue.async([&] { wasAsking = session.isAsking(); });
        });
    EXPECT_FALSE(session.isAsking());
    task->resume();
    EXPECT_TRUE(session.isAsking());
    EXPECT_TRUE(eventually([&] { return wasAsking.has_value(); }));
    EXPECT_EQ(wasAsking, true);
    EXPECT_TRUE(eventually([&] { return !session.isAsking(); }));
}

TEST_F(QtURLSessionTest, isAskingUntilAFailureToo) {
    Completions completions;
    QtURLSession session;
    resume(session, "http://127.0.0.1/", completions);
    EXPECT_TRUE(session.isAsking());
    EXPECT_TRUE(eventually([&] { return !session.isAsking(); }));
}

class QtMainQueueTest : public testing::Test {
protected:
    QApplication& qtApplication = application();
    platform::QtMainQueue queue;
};

TEST_F(QtMainQueueTest, doesTheWorkOfOtherThreadsOnTheMainThreadInOrder) {
    std::vector<int> done;
    std::vector<const QThread*> threads;
    std::thread([&] {
        for (int i = 0; i < 3; ++i) {
            queue.async([&done, &threads, i] {
                done.push_back(i);
                threads.push_back(QThread::currentThread());
            });
        }
    }).join();
    EXPECT_TRUE(done.empty());
    ASSERT_TRUE(eventually([&] { return done.size() == 3; }));
    EXPECT_THAT(done, testing::ElementsAre(0, 1, 2));
    EXPECT_THAT(threads, testing::Each(QCoreApplication::instance()->thread()));
}

TEST_F(QtMainQueueTest, doesNoWorkWithinTheCall) {
    bool isDone = false;
    queue.async([&] { isDone = true; });
    EXPECT_FALSE(isDone);
    EXPECT_TRUE(eventually([&] { return isDone; }));
}

TEST_F(QtMainQueueTest, dropsPendingWork) {
    bool isDone = false;
    const auto kept = std::make_shared<int>(1);
    {
        platform::QtMainQueue shortLived;
        shortLived.async([&isDone, kept] { isDone = true; });
    }
    settle();
    EXPECT_FALSE(isDone);
    EXPECT_EQ(kept.use_count(), 1);
}

} // namespace
} // namespace tolvane::tests
