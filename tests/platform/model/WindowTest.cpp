#include "platform/model/Window.h"

#include "platform/model/ViewController.h"
#include "platform/model/WindowController.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tolvane::platform {
namespace {

class JournalingContent final : public ViewController {
public:
    JournalingContent() : ViewController(std::nullopt, nullptr) {}
    void viewDidLoad() override { journal += 'l'; }
    void viewDidAppear() override { journal += 'a'; }
    std::string journal;
};

class Delegate final : public WindowDelegate {
public:
    void windowWillClose() override {
        ++told;
        if (reaction) {
            reaction();
        }
    }
    int told = 0;
    std::function<void()> reaction;
};

struct Shown {
    std::shared_ptr<Window> window = std::make_shared<Window>();
    std::shared_ptr<JournalingContent> content = std::make_shared<JournalingContent>();
    std::shared_ptr<Delegate> delegate = std::make_shared<Delegate>();
    std::shared_ptr<WindowController> controller = WindowController::make(window, content);

    Shown() { window->setDelegate(delegate); }

    // Leaves the window to itself.
    void letGo() {
        controller.reset();
        content.reset();
        window.reset();
    }
};

TEST(Window, isAbsentAndUntitledAtFirst) {
    const Window window;
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(window.title(), "");
    EXPECT_EQ(window.delegate(), nullptr);
    EXPECT_EQ(window.windowController(), nullptr);
    EXPECT_EQ(window.contentViewController(), nullptr);
}

TEST(Window, keepsWhatItWasMadeWith) {
    const Rect place{10.5, -20, 640, 480};
    const auto window = Window::initWithContentRect(
        place, windowStyleMaskTitled | windowStyleMaskResizable, BackingStore::nonretained, true);
    EXPECT_EQ(window->contentRect(), place);
    EXPECT_EQ(window->styleMask(), 9U);
    EXPECT_EQ(window->backing(), BackingStore::nonretained);
    EXPECT_TRUE(window->isDeferred());
    EXPECT_FALSE(window->isVisible());

    const Window plain;
    EXPECT_EQ(plain.contentRect(), Rect());
    EXPECT_EQ(plain.styleMask(), 0U);
    EXPECT_EQ(plain.backing(), BackingStore::buffered);
    EXPECT_FALSE(plain.isDeferred());
}

TEST(Window, loadsItsContentBeforeItFirstAppears) {
    const Shown shown;
    EXPECT_EQ(shown.content->journal, "");
    shown.window->makeKeyAndOrderFront();
    EXPECT_TRUE(shown.window->isVisible());
    EXPECT_EQ(shown.content->journal, "la");
}

TEST(Window, doesNotAppearWhenRaised) {
    const Shown shown;
    shown.window->makeKeyAndOrderFront();
    shown.window->makeKeyAndOrderFront();
    EXPECT_EQ(shown.content->journal, "la");
}

TEST(Window, appearsAgainAfterEachAbsence) {
    const Shown shown;
    shown.window->makeKeyAndOrderFront();
    shown.window->orderOut();
    EXPECT_FALSE(shown.window->isVisible());
    shown.window->makeKeyAndOrderFront();
    EXPECT_EQ(shown.content->journal, "laa");
    shown.window->close();
    shown.window->makeKeyAndOrderFront();
    EXPECT_EQ(shown.content->journal, "laaa");
}

TEST(Window, canBeShownWithoutContent) {
    Window window;
    window.makeKeyAndOrderFront();
    EXPECT_TRUE(window.isVisible());
    window.close();
    EXPECT_FALSE(window.isVisible());
}

TEST(Window, tellsItsDelegateOnceThatItCloses) {
    const Shown shown;
    shown.window->makeKeyAndOrderFront();
    bool visibleWhenTold = false;
    shown.delegate->reaction = [&] { visibleWhenTold = shown.window->isVisible(); };
    shown.window->close();
    EXPECT_TRUE(visibleWhenTold);
    EXPECT_FALSE(shown.window->isVisible());
    shown.window->close();
    EXPECT_EQ(shown.delegate->told, 1);
    shown.window->makeKeyAndOrderFront();
    shown.window->close();
    EXPECT_EQ(shown.delegate->told, 2);
}

TEST(Window, tellsItsDelegateOnceEvenIfThatClosesTheWindow) {
    const Shown shown;
    shown.window->makeKeyAndOrderFront();
    shown.delegate->reaction = [&] { shown.window->close(); };
    shown.window->close();
    EXPECT_EQ(shown.delegate->told, 1);
    EXPECT_FALSE(shown.window->isVisible());
}

TEST(Window, tellsNobodyWhenItIsHiddenOrWasAbsent) {
    const Shown shown;
    shown.window->close();
    shown.window->makeKeyAndOrderFront();
    shown.window->orderOut();
    shown.window->close();
    EXPECT_EQ(shown.delegate->told, 0);
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

TEST(Window, hasOneDelegateAtATime) {
    const Shown shown;
    const auto next = std::make_shared<Delegate>();
    shown.window->setDelegate(next);
    EXPECT_EQ(shown.window->delegate(), next);
    shown.window->makeKeyAndOrderFront();
    shown.window->close();
    EXPECT_EQ(shown.delegate->told, 0);
    EXPECT_EQ(next->told, 1);
}

TEST(Window, tellsObserversWhenTitleOrVisibilityChanges) {
    Window window;
    std::string told;
    const Subscription subscription =
        window.observe([&] { told += window.title() + (window.isVisible() ? "+" : "-"); });
    window.setTitle("a");
    window.setTitle("a");
    window.makeKeyAndOrderFront();
    window.makeKeyAndOrderFront();
    window.orderOut();
    window.orderOut();
    window.makeKeyAndOrderFront();
    window.close();
    window.close();
    EXPECT_EQ(told, "a-a+a-a+a-");
}

TEST(Window, survivesUntilItIsShownWhenAnObserverLetsGoOfIt) {
    Shown shown;
    Window& window = *shown.window;
    const std::weak_ptr<Window> watched = shown.window;
    const Subscription subscription = window.observe([&] { shown.letGo(); });
    window.makeKeyAndOrderFront();
    EXPECT_TRUE(watched.expired());
}

TEST(Window, survivesUntilItIsClosedWhenItsDelegateLetsGoOfIt) {
    Shown shown;
    Window& window = *shown.window;
    const std::weak_ptr<Window> watched = shown.window;
    window.makeKeyAndOrderFront();
    shown.delegate->reaction = [&] { shown.letGo(); };
    std::optional<bool> visible;
    const Subscription subscription = window.observe([&] { visible = window.isVisible(); });
    window.close();
    EXPECT_EQ(visible, false);
    EXPECT_TRUE(watched.expired());
}

TEST(Window, tellsEachTimeItIsAskedToTheFront) {
    const Shown shown;
    std::string told;
    const Subscription front =
        shown.window->observeOrderFront([&] { told += shown.content->journal.empty() ? "too early" : "f"; });
    shown.window->makeKeyAndOrderFront();
    shown.window->makeKeyAndOrderFront();
    EXPECT_EQ(told, "ff");
    EXPECT_EQ(shown.content->journal, "la");
}

TEST(Window, tellsThatItIsAboutToCloseAfterItsDelegateAndOnce) {
    const Shown shown;
    int told = 0;
    const Subscription closing = shown.window->observeWillClose([&] {
        ++told;
        EXPECT_EQ(shown.delegate->told, 1);
        EXPECT_TRUE(shown.window->isVisible());
        shown.window->close();
    });
    shown.window->makeKeyAndOrderFront();
    shown.window->orderOut();
    EXPECT_EQ(told, 0);
    shown.window->makeKeyAndOrderFront();
    shown.window->close();
    shown.window->close();
    EXPECT_EQ(told, 1);
}

} // namespace
} // namespace tolvane::platform
