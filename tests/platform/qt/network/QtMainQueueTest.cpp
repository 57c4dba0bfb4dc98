#include "platform/qt/network/QtURLSession.h"
#include "tests/platform/qt/QtTest.h"
#include "tests/platform/qt/application/EventLoop.h"

#include <QThread>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <thread>
#include <vector>

namespace tolvane::tests {
namespace {

class QtMainQueueTest : public testing::Test {
protected:
    QtMainQueueTest() { application(); }

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
