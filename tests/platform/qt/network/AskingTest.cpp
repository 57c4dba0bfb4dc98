#include "platform/qt/network/QtURLSession.h"
#include "tests/platform/qt/application/EventLoop.h"
#include "tests/platform/qt/network/HttpsServer.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace tolvane::tests {
namespace {

TEST(Asking, lastsFromTheStartOfATaskUntilItsWorkHasBegun) {
    TestAuthority authority;
    trustAlone(authority);
    HttpsServer server{authority.issueFor("IP:127.0.0.1,DNS:localhost")};
    server.answer("/", response("200 OK", "text/xml", "the body"));
    platform::QtMainQueue mainQueue;
    platform::QtURLSession session;
    bool wasAsking = false;
    bool hasWorked = false;
    const auto task = session.dataTaskWithURL(
        *platform::URL::fromText(server.url("/")), [&](auto /*data*/, auto /*response*/, auto /*error*/) {
            mainQueue.async([&] {
                wasAsking = session.isAsking();
                hasWorked = true;
            });
        });
    EXPECT_FALSE(session.isAsking());
    task->resume();
    EXPECT_TRUE(session.isAsking());
    EXPECT_TRUE(eventually([&] { return hasWorked; }));
    EXPECT_TRUE(wasAsking);
    EXPECT_TRUE(eventually([&] { return !session.isAsking(); }));
}

TEST(Asking, endsWithAFailureToo) {
    platform::QtURLSession session;
    session
        .dataTaskWithURL(
            *platform::URL::fromText("http://127.0.0.1/"),
            [](auto /*data*/, auto /*response*/, auto /*error*/) {})
        ->resume();
    EXPECT_TRUE(session.isAsking());
    EXPECT_TRUE(eventually([&] { return !session.isAsking(); }));
}

} // namespace
} // namespace tolvane::tests
