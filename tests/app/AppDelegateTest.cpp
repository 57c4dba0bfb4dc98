#include "app/AppDelegate.h"

#include "tests/support/MemoryStoryboard.h"
#include "tests/support/MemoryUserDefaults.h"
#include "tests/support/UpdateParts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tolvane::app {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class HandedOver final : public platform::ServicesPasteboard {
public:
    explicit HandedOver(std::optional<std::vector<std::string>> names) : names_(std::move(names)) {}
    std::optional<std::vector<std::string>> fileNames() const override { return names_; }

private:
    std::optional<std::vector<std::string>> names_;
};

class AppDelegateTest : public testing::Test {
protected:
    AppDelegateTest() {
        for (const char* const scene : {"Bookmark Resolver Window", "Privacy Window Controller"}) {
            bundle.storyboard("Main").addWindowScene(scene, makeContent);
        }
    }

    static std::shared_ptr<platform::ContentController> makeContent(const platform::Coder& coder) {
        return std::make_shared<platform::ContentController>(coder);
    }

    void openBrowserWindows(int count) {
        for (int i = 0; i < count; ++i) {
            delegate->openBrowserWindow(nullptr);
        }
    }

    /// The pages that are opened on a system of this version.
    std::vector<std::string> updatesOf(platform::OperatingSystemVersion version) {
        workspace.opened.clear();
        processInfo.version = version;
        delegate->openUpdates(nullptr);
        return workspace.opened;
    }

    bool isVisible(std::size_t index) const {
        return delegate->myResolverWindow().at(index)->window()->isVisible();
    }

    void press(std::string_view selector) {
        const auto action = delegate->actionForSelector(selector);
        ASSERT_TRUE(action);
        action(nullptr);
    }

    AppSources sourcesWith(const platform::Bundle& mainBundle) {
        return {
            mainBundle,
            application,
            alerts,
            workspace,
            processInfo,
            defaults,
            session,
            urlSession,
            mainQueue,
            {.support = "https://a.example/support",
             .updatesElCapitan = "https://a.example/el-capitan",
             .updatesSierra = "https://a.example/sierra",
             .updateList = "https://tolvane.example/list",
             .downloadPrefix = "https://tolvane.example/"}};
    }

    tests::CallLog log;
    platform::MemoryBundle bundle;
    tests::PlainApplication application;
    tests::RememberedAlerts alerts;
    tests::RememberedWorkspace workspace;
    tests::GivenVersion processInfo;
    platform::MemoryUserDefaults defaults;
    tests::ScriptedSession session;
    tests::ScriptedURLSession urlSession{log};
    tests::WaitingMainQueue mainQueue;
    std::shared_ptr<AppDelegate> delegate = AppDelegate::make(sourcesWith(bundle));
};

TEST_F(AppDelegateTest, servesOthersAndShowsNoWindowWhenLaunched) {
    EXPECT_EQ(application.provider.lock(), nullptr);
    delegate->applicationDidFinishLaunching();
    EXPECT_EQ(application.provider.lock(), delegate);
    EXPECT_THAT(delegate->myResolverWindow(), IsEmpty());
    EXPECT_THAT(delegate->myPrivacy(), IsEmpty());
    EXPECT_FALSE(delegate->applicationShouldOpenUntitledFile());
}

TEST_F(AppDelegateTest, looksForANewerVersionBeforeItServesOthers) {
    bundle.setInfoDictionary({{"CFBundleShortVersionString", "1.2"}});
    session.time = 1e9;
    application.onServicesProvider = [this] {
        log.push_back("provider with interval " + std::to_string(defaults.doubleForKey("updateCheckInt")));
    };
    delegate->applicationDidFinishLaunching();
    EXPECT_THAT(
        log, ElementsAre("resume https://tolvane.example/list", "provider with interval 43200.000000"));
}

TEST_F(AppDelegateTest, opensAnotherWindowEachTimeAndClosesTheNewest) {
    openBrowserWindows(3);
    ASSERT_THAT(delegate->myResolverWindow(), SizeIs(3));
    EXPECT_TRUE(isVisible(0) && isVisible(1) && isVisible(2));
    const auto second = delegate->myResolverWindow()[1]->window();
    const auto third = delegate->myResolverWindow()[2]->window();
    const std::weak_ptr<platform::WindowController> controllerOfThird = delegate->myResolverWindow()[2];
    delegate->closeBrowserWindow(nullptr);
    EXPECT_FALSE(third->isVisible());
    EXPECT_TRUE(controllerOfThird.expired());
    EXPECT_TRUE(second->isVisible());
    delegate->closeBrowserWindow(nullptr);
    EXPECT_FALSE(second->isVisible());
    ASSERT_THAT(delegate->myResolverWindow(), SizeIs(1));
    EXPECT_TRUE(isVisible(0));
}

TEST_F(AppDelegateTest, doesNotSkipAWindowThatItsUserHasClosed) {
    openBrowserWindows(2);
    delegate->myResolverWindow()[1]->window()->close();
    ASSERT_THAT(delegate->myResolverWindow(), SizeIs(2));
    delegate->closeBrowserWindow(nullptr);
    ASSERT_THAT(delegate->myResolverWindow(), SizeIs(1));
    EXPECT_TRUE(isVisible(0));
}

TEST_F(AppDelegateTest, performsItsActionsBySelector) {
    EXPECT_FALSE(delegate->isActionEnabled("closeBrowserWindow:"));
    delegate->closeBrowserWindow(nullptr);
    EXPECT_THAT(delegate->myResolverWindow(), IsEmpty());
    press("openBrowserWindow:");
    EXPECT_THAT(delegate->myResolverWindow(), SizeIs(1));
    EXPECT_TRUE(delegate->isActionEnabled("closeBrowserWindow:"));
    press("closeBrowserWindow:");
    EXPECT_THAT(delegate->myResolverWindow(), IsEmpty());
    EXPECT_FALSE(delegate->actionForSelector("copyPath:"));
    EXPECT_FALSE(delegate->isActionEnabled("copyPath:"));
}

TEST_F(AppDelegateTest, choosesThePageOfUpdatesByTheMinorVersionAlone) {
    for (const platform::OperatingSystemVersion version :
         {platform::OperatingSystemVersion{10, 11, 6},
          {10, 0, 0},
          {11, 7, 0},
          {11, 2, 0},
          {12, 6, 0},
          {12},
          {}}) {
        EXPECT_THAT(updatesOf(version), ElementsAre("https://a.example/el-capitan")) << version.majorVersion;
    }
    for (const platform::OperatingSystemVersion version :
         {platform::OperatingSystemVersion{10, 13, 6}, {10, 12, 0}, {10, 12, 11}, {9, 99, 0}, {22, 12, 0}}) {
        EXPECT_THAT(updatesOf(version), ElementsAre("https://a.example/sierra")) << version.majorVersion;
    }
}

TEST_F(AppDelegateTest, saysNothingWhenNoPageCanBeOpened) {
    workspace.answer = false;
    delegate->openSupport(nullptr);
    delegate->openUpdates(nullptr);
    EXPECT_THAT(workspace.opened, SizeIs(2));
    EXPECT_THAT(alerts.shown, IsEmpty());
}

TEST_F(AppDelegateTest, opensAnotherPrivacyWindowEachTimeAndKeepsThoseThatItsUserHasClosed) {
    delegate->openPrivacy(nullptr);
    EXPECT_TRUE(delegate->myPrivacy()[0]->window()->isVisible());
    delegate->myPrivacy()[0]->window()->close();
    delegate->openPrivacy(nullptr);
    delegate->closeBrowserWindow(nullptr);
    ASSERT_THAT(delegate->myPrivacy(), SizeIs(2));
    EXPECT_FALSE(delegate->myPrivacy()[0]->window()->isVisible());
    EXPECT_TRUE(delegate->myPrivacy()[1]->window()->isVisible());
    EXPECT_THAT(delegate->myResolverWindow(), IsEmpty());
}

TEST_F(AppDelegateTest, performsTheHelpMenusActionsBySelector) {
    for (const char* const selector : {"openSupport:", "openUpdates:", "openPrivacy:"}) {
        EXPECT_TRUE(delegate->isActionEnabled(selector)) << selector;
        press(selector);
    }
    EXPECT_THAT(workspace.opened, ElementsAre("https://a.example/support", "https://a.example/el-capitan"));
    EXPECT_THAT(delegate->myPrivacy(), SizeIs(1));
}

TEST_F(AppDelegateTest, showsEachFileNameItIsHandedInAnAlert) {
    delegate->handleServicesWithPboard(HandedOver({{"/a b", "/c", "/ü"}}), "ignored", nullptr);
    ASSERT_THAT(alerts.shown, SizeIs(3));
    EXPECT_EQ(alerts.shown[0].informativeText, "/a b");
    EXPECT_EQ(alerts.shown[1].informativeText, "/c");
    EXPECT_EQ(alerts.shown[2].informativeText, "/ü");
    for (const platform::Alert& alert : alerts.shown) {
        EXPECT_EQ(alert.messageText, "An error occurred:");
        EXPECT_EQ(alert.style, platform::AlertStyle::critical);
        EXPECT_THAT(alert.buttons, ElementsAre("OK"));
        EXPECT_TRUE(alert.isInformativeTextExact);
    }
}

TEST_F(AppDelegateTest, showsNothingWithoutFileNames) {
    delegate->handleServicesWithPboard(HandedOver(std::nullopt), "", nullptr);
    delegate->handleServicesWithPboard(HandedOver(std::vector<std::string>()), "", nullptr);
    EXPECT_THAT(alerts.shown, IsEmpty());
}

using AppDelegateDeathTest = AppDelegateTest;

TEST_F(AppDelegateDeathTest, stopsWhenTheSceneIsNotAWindowController) {
    for (const char* const scene : {"Bookmark Resolver Window", "Privacy Window Controller"}) {
        bundle.storyboard("Main").addScene(scene, makeContent);
    }
    EXPECT_DEATH(delegate->openBrowserWindow(nullptr), "Bookmark Resolver Window");
    EXPECT_DEATH(delegate->openPrivacy(nullptr), "Privacy Window Controller");
}

TEST_F(AppDelegateDeathTest, stopsAtAnInvalidAddress) {
    AppSources wrong = sourcesWith(bundle);
    wrong.addresses.support = "no address";
    EXPECT_DEATH(AppDelegate::make(wrong)->openSupport(nullptr), "no address");
}

TEST_F(AppDelegateDeathTest, stopsWithoutAStoryboard) {
    const platform::MemoryBundle empty;
    const auto stranded = AppDelegate::make(sourcesWith(empty));
    EXPECT_DEATH(stranded->openBrowserWindow(nullptr), "Main");
    EXPECT_DEATH(stranded->openPrivacy(nullptr), "Main");
}

} // namespace
} // namespace tolvane::app
