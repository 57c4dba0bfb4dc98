#include "platform/model/Window.h"

#include "platform/model/ContentController.h"
#include "platform/model/WindowController.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tolvane::platform {
namespace {

class JournalingContent final : public ContentController {
public:
    JournalingContent() : ContentController(std::nullopt, nullptr) {}
    void viewDidLoad() override { journal += 'l'; }
    void viewDidAppear() override { journal += 'a'; }
    std::string journal;
};

class Delegate final : public WindowDelegate {
public:
    void windowWillClose() override {
        ++notified;
        if (reaction) {
            reaction();
        }
    }
    int notified = 0;
    std::function<void()> reaction;
};

struct Shown {
    std::shared_ptr<Window> window = std::make_shared<Window>();
    std::shared_ptr<JournalingContent> content = std::make_shared<JournalingContent>();
    std::shared_ptr<Delegate> delegate = std::make_shared<Delegate>();
    std::shared_ptr<WindowController> controller = WindowController::make(window, content);

    Shown() { window->setDelegate(delegate); }

    // Leaves the window to itself.
    void release() {
        controller.reset();
        content.reset();
        window.reset();
    }
};

TEST(Window, isHiddenUntitledAndAloneAtFirst) {
    const Rect place{10.5, -20, 640, 480};
    const auto window = Window::initWithContentRect(
        place, windowStyleMaskTitled | windowStyleMaskResizable, BackingStore::nonretained, true);
    EXPECT_EQ(window->contentRect(), place);
    EXPECT_EQ(window->styleMask(), 9U);
    EXPECT_EQ(window->backing(), BackingStore::nonretained);
    EXPECT_TRUE(window->isDeferred());
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(window->title(), "");
    EXPECT_EQ(window->delegate(), nullptr);
    EXPECT_EQ(window->windowController(), nullptr);
    EXPECT_EQ(window->contentViewController(), nullptr);
}

TEST(Window, hasNoPlaceWithoutTheDesignatedInitializer) {
    const Window window;
    EXPECT_EQ(window.contentRect(), Rect());
    EXPECT_EQ(window.styleMask(), 0U);
    EXPECT_EQ(window.backing(), BackingStore::buffered);
    EXPECT_FALSE(window.isDeferred());
}

TEST(Window, loadsItsContentBeforeItFirstAppearsAndAppearsAgainAfterEachAbsence) {
    const Shown shown;
    EXPECT_EQ(shown.content->journal, "");
    shown.window->makeKeyAndOrderFront();
    EXPECT_TRUE(shown.window->isVisible());
    EXPECT_EQ(shown.content->journal, "la");
    shown.window->makeKeyAndOrderFront();
    EXPECT_EQ(shown.content->journal, "la") << "raising is not an appearance";
    shown.window->orderOut();
    EXPECT_FALSE(shown.window->isVisible());
    shown.window->makeKeyAndOrderFront();
    EXPECT_EQ(shown.content->journal, "laa");
    shown.window->close();
    shown.window->makeKeyAndOrderFront();
    EXPECT_EQ(shown.content->journal, "laaa");
}

TEST(Window, notifiesItsDelegateOncePerClosing) {
    const Shown shown;
    shown.window->makeKeyAndOrderFront();
    bool visibleWhenTold = false;
    shown.delegate->reaction = [&] { visibleWhenTold = shown.window->isVisible(); };
    shown.window->close();
    EXPECT_TRUE(visibleWhenTold);
    EXPECT_FALSE(shown.window->isVisible());
    shown.window->close();
    EXPECT_EQ(shown.delegate->notified, 1);
    const auto next = std::make_shared<Delegate>();
    shown.window->setDelegate(next);
    shown.window->makeKeyAndOrderFront();
    shown.window->close();
    EXPECT_EQ(next->notified, 1);
    EXPECT_EQ(shown.delegate->notified, 1) << "there is one delegate at a time";
}

TEST(Window, doesNotNotifyItsDelegateWhenItIsHidden) {
    const Shown shown;
    shown.window->close();
    shown.window->makeKeyAndOrderFront();
    shown.window->orderOut();
    shown.window->close();
    EXPECT_EQ(shown.delegate->notified, 0);
}

TEST(Window, doesNotKeepItsDelegateAlive) {
    Shown shown;
    const std::weak_ptr<Delegate> watched = shown.delegate;
    shown.delegate.reset();
    EXPECT_TRUE(watched.expired());
    EXPECT_EQ(shown.window->delegate(), nullptr);
    shown.window->makeKeyAndOrderFront();
    shown.window->close();
    EXPECT_FALSE(shown.window->isVisible());
}

TEST(Window, notifiesObserversWhenTitleOrVisibilityChanges) {
    Window window;
    std::string notified;
    const Subscription subscription =
        window.observe([&] { notified += window.title() + (window.isVisible() ? "+" : "-"); });
    window.setTitle("a");
    window.setTitle("a");
    window.makeKeyAndOrderFront();
    window.makeKeyAndOrderFront();
    window.orderOut();
    window.orderOut();
    window.makeKeyAndOrderFront();
    window.close();
    window.close();
    EXPECT_EQ(notified, "a-a+a-a+a-");
}

TEST(Window, survivesUntilItIsShownWhenAnObserverReleasesIt) {
    Shown shown;
    Window& window = *shown.window;
    const std::weak_ptr<Window> watched = shown.window;
    const Subscription subscription = window.observe([&] { shown.release(); });
    window.makeKeyAndOrderFront();
    EXPECT_TRUE(watched.expired());
}

TEST(Window, survivesUntilItIsClosedWhenItsDelegateReleasesIt) {
    Shown shown;
    Window& window = *shown.window;
    const std::weak_ptr<Window> watched = shown.window;
    window.makeKeyAndOrderFront();
    shown.delegate->reaction = [&] { shown.release(); };
    std::optional<bool> visible;
    const Subscription subscription = window.observe([&] { visible = window.isVisible(); });
    window.close();
    EXPECT_EQ(visible, false);
    EXPECT_TRUE(watched.expired());
}

TEST(Window, notifiesEachTimeItIsOrderedToTheFront) {
    const Shown shown;
    std::string notified;
    const Subscription front = shown.window->observeOrderFront(
        [&] { notified += shown.content->journal.empty() ? "too early" : "f"; });
    shown.window->makeKeyAndOrderFront();
    shown.window->makeKeyAndOrderFront();
    EXPECT_EQ(notified, "ff");
    EXPECT_EQ(shown.content->journal, "la");
}

TEST(Window, notifiesThatItWillCloseAfterItsDelegateAndOnce) {
    const Shown shown;
    int notified = 0;
    const Subscription closing = shown.window->observeWillClose([&] {
        ++notified;
        EXPECT_EQ(shown.delegate->notified, 1);
        EXPECT_TRUE(shown.window->isVisible());
        shown.window->close();
    });
    shown.window->makeKeyAndOrderFront();
    shown.window->orderOut();
    EXPECT_EQ(notified, 0);
    shown.window->makeKeyAndOrderFront();
    shown.window->close();
    shown.window->close();
    EXPECT_EQ(notified, 1);
}

} // namespace
} // namespace tolvane::platform
