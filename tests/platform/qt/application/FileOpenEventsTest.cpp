#include "platform/qt/application/FileOpenEvents.h"

#include "tests/platform/qt/QtTest.h"

#include <QFileOpenEvent>
#include <QUrl>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tolvane::tests {
namespace {

using platform::URL;
using testing::ElementsAre;

class FileOpenEventsTest : public testing::Test {
protected:
    /// Whether the event was taken.
    bool ask(const QUrl& url) {
        QFileOpenEvent event(url);
        return QCoreApplication::sendEvent(&program, &event);
    }

    QApplication& program = application();
    std::vector<std::vector<URL>> opened;
    platform::FileOpenEvents events{[this](const std::vector<URL>& urls) { opened.push_back(urls); }};
};

TEST_F(FileOpenEventsTest, passesFilesThatComeTogetherOnTogetherAndOnce) {
    EXPECT_TRUE(ask(QUrl("file:///folder/a%20name")));
    EXPECT_TRUE(ask(QUrl::fromLocalFile("/folder/Käse?#")));
    EXPECT_TRUE(opened.empty());
    EXPECT_TRUE(events.hasFilesWaiting());
    QCoreApplication::processEvents();
    EXPECT_FALSE(events.hasFilesWaiting());
    ask(QUrl("file:///b"));
    QCoreApplication::processEvents();
    EXPECT_THAT(
        opened,
        ElementsAre(
            ElementsAre(URL::fileURLWithPath("/folder/a name"), URL::fileURLWithPath("/folder/Käse?#")),
            ElementsAre(URL::fileURLWithPath("/b"))));
}

TEST_F(FileOpenEventsTest, leavesOtherURLsAlone) {
    EXPECT_FALSE(ask(QUrl("https://tolvane.example/page")));
    QCoreApplication::processEvents();
    EXPECT_FALSE(events.hasFilesWaiting());
    EXPECT_TRUE(opened.empty());
}

} // namespace
} // namespace tolvane::tests
