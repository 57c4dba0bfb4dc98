#include "app/desktop/macos/MacDesktop.h"

#include "tests/platform/macos/substitute/Desktop.h"
#include "tests/platform/macos/substitute/Objects.h"
#include "tests/platform/qt/QtTest.h"

#include <QDir>
#include <QFileOpenEvent>
#include <QUrl>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace tolvane::tests {
namespace {

using app::DesktopRequest;
using platform::URL;
using testing::ElementsAre;
using testing::Optional;

using Names = std::vector<std::string>;

class MacDesktopTest : public testing::Test {
protected:
    MacDesktopTest() { application(); }

    void listen() {
        system->setListeners(
            {.requested = [this](const DesktopRequest& request) { requests.push_back(request); },
             .darkColorsPreferred = [](bool /*preferred*/) {}});
    }

    static std::optional<Names> namesIn(const DesktopRequest& request) {
        return std::get<app::ServeFileNames>(request).pasteboard->fileNames();
    }

    macos::Substitute substitute;
    macos::DesktopSubstitute desktop;
    std::vector<DesktopRequest> requests;
    std::unique_ptr<app::DesktopSystem> system = app::desktopSystem({});
};

TEST_F(MacDesktopTest, beginsWithWhatWasAskedFor) {
    const std::vector files{URL::fileURLWithPath("/a"), URL::fileURLWithPath("/b")};
    const auto opening = system->start(app::OpenFiles{files});
    ASSERT_TRUE(opening);
    EXPECT_EQ(std::get<app::OpenFiles>(*opening).urls, files);
    const auto resolver = system->start(app::OpenResolver());
    EXPECT_TRUE(resolver && std::holds_alternative<app::OpenResolver>(*resolver));
    const auto waiting = system->start(app::AwaitRequests());
    EXPECT_TRUE(waiting && std::holds_alternative<app::AwaitRequests>(*waiting));
}

TEST_F(MacDesktopTest, servesTheNamesThatWereNamedAsText) {
    const auto request =
        system->start(app::ShowFileNames{{URL::fileURLWithPath("/a b"), URL::fileURLWithPath("/c\xFF")}});
    ASSERT_TRUE(request);
    EXPECT_THAT(namesIn(*request), Optional(ElementsAre("/a b", "/c\uFFFD")));
}

TEST_F(MacDesktopTest, passesTheFilesOfTheFinderOn) {
    listen();
    QFileOpenEvent event(QUrl("file:///folder/a%20name"));
    QCoreApplication::sendEvent(qApp, &event);
    EXPECT_TRUE(system->hasRequestsWaiting());
    QCoreApplication::processEvents();
    ASSERT_EQ(requests.size(), 1U);
    EXPECT_THAT(
        std::get<app::OpenFiles>(requests.front()).urls, ElementsAre(URL::fileURLWithPath("/folder/a name")));
    EXPECT_FALSE(system->hasRequestsWaiting());
}

TEST_F(MacDesktopTest, passesTheNamesOfTheServicesEntryOn) {
    listen();
    const CFTypeRef type = macos::newString("names");
    const CFTypeRef names = macos::newArray({macos::newString("/a")});
    desktop.serve(static_cast<CFStringRef>(type), names);
    macos::release(names);
    macos::release(type);
    ASSERT_EQ(requests.size(), 1U);
    EXPECT_THAT(namesIn(requests.front()), Optional(ElementsAre("/a")));
}

TEST_F(MacDesktopTest, servesNoMoreAtItsEnd) {
    listen();
    EXPECT_NE(desktop.provider, nullptr);
    system.reset();
    EXPECT_EQ(desktop.provider, nullptr);
}

TEST_F(MacDesktopTest, hasTheSystemReadBookmarks) {
    const app::SystemServices services = system->services();
    EXPECT_TRUE(services.readStoredProperties({}).failure);
    EXPECT_TRUE(std::ranges::any_of(
        substitute.calls, [](const std::string& call) { return call.starts_with("properties "); }));
}

TEST_F(MacDesktopTest, listsTheHomeFolderFirst) {
    EXPECT_EQ(system->places().front(), URL::fileURLWithPath(QDir::homePath().toStdString()));
}

TEST_F(MacDesktopTest, hasTheSystemRunScripts) {
    EXPECT_TRUE(system->appleScripts()->initWithSource("text"));
    EXPECT_THAT(substitute.calls, ElementsAre("script text"));
}

} // namespace
} // namespace tolvane::tests
