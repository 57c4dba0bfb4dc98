#include "platform/qt/application/BackgroundWork.h"

#include "tests/platform/qt/QtTest.h"

#include <QTest>
#include <QThread>
#include <gtest/gtest.h>

#include <atomic>
#include <memory>

namespace tolvane::platform {
namespace {

constexpr int patience = 10'000;

class BackgroundTasksTest : public testing::Test {
protected:
    BackgroundTasksTest() { tests::application(); }

    QtBackgroundTasks tasks;
};

TEST_F(BackgroundTasksTest, workApartAndDeliverOnTheMainThread) {
    const QThread* const mainThread = QThread::currentThread();
    bool isApart = false;
    bool isDelivered = false;
    const auto task = tasks.start([&](const BackgroundLink& link) {
        isApart = QThread::currentThread() != mainThread;
        link.deliver([&] { isDelivered = QThread::currentThread() == mainThread; });
    });
    EXPECT_TRUE(QTest::qWaitFor([&] { return isDelivered; }, patience));
    EXPECT_TRUE(isApart);
}

TEST_F(BackgroundTasksTest, deliverNothingOnceCancelled) {
    bool isDelivered = false;
    auto isSeen = std::make_shared<std::atomic<bool>>(false);
    auto task = tasks.start([&isDelivered, isSeen](const BackgroundLink& link) {
        link.deliver([&isDelivered] { isDelivered = true; });
        while (!link.isCancelled()) {
            std::this_thread::yield();
        }
        link.deliver([&isDelivered] { isDelivered = true; });
        *isSeen = true;
    });
    task.reset();
    EXPECT_TRUE(QTest::qWaitFor([&] { return isSeen->load(); }, patience));
    QTest::qWait(0);
    EXPECT_FALSE(isDelivered);
}

} // namespace
} // namespace tolvane::platform
