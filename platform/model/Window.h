#pragma once

#include "platform/model/Observers.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace tolvane::platform {

class ContentController;
class WindowController;

/// A window's delegate. Every function is optional and does nothing unless overridden.
class WindowDelegate {
public:
    WindowDelegate() = default;
    WindowDelegate(const WindowDelegate&) = delete;
    WindowDelegate& operator=(const WindowDelegate&) = delete;
    virtual ~WindowDelegate() = default;

    virtual void windowWillClose() {}
};

/// A rectangle on the screen, in points.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    friend bool operator==(const Rect&, const Rect&) = default;
};

/// A window's decorations: a sum of the constants below, or of other bits that the platform defines.
using WindowStyleMask = std::uint64_t;
inline constexpr WindowStyleMask windowStyleMaskTitled = 1;
inline constexpr WindowStyleMask windowStyleMaskClosable = 2;
inline constexpr WindowStyleMask windowStyleMaskMiniaturizable = 4;
inline constexpr WindowStyleMask windowStyleMaskResizable = 8;

/// How a window's drawing is buffered, with the platform's numbers.
enum class BackingStore { retained = 0, nonretained = 1, buffered = 2 };

/// The model of a window: title, visibility, and links to its controller and content. The links are weak; a
/// window lives as long as a controller that refers to it.
class Window {
protected:
    /// Restricts the designated initializer's constructor to this class and derived ones.
    struct Key {};

public:
    /// A window of no size, for a front end that shows none.
    Window() = default;
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    virtual ~Window() = default;

    /// The designated initializer: a window with this content rectangle. Front ends use the arguments for
    /// their own window; the model ignores them.
    static std::shared_ptr<Window> initWithContentRect(
        const Rect& contentRect, WindowStyleMask styleMask, BackingStore backing, bool defer) {
        return std::make_shared<Window>(Key{}, contentRect, styleMask, backing, defer);
    }

    const Rect& contentRect() const { return contentRect_; }
    WindowStyleMask styleMask() const { return styleMask_; }
    BackingStore backing() const { return backing_; }
    /// True if the window's device is to be made when the window is first shown.
    bool isDeferred() const { return deferred_; }

    const std::string& title() const { return title_; }
    void setTitle(std::string title);

    /// One line about the state of what the window shows, such as that it was not saved. Initially empty.
    const std::string& status() const { return status_; }
    void setStatus(std::string status);

    std::shared_ptr<WindowDelegate> delegate() const { return delegate_.lock(); }
    /// Replaces the delegate. The window does not keep it alive.
    void setDelegate(std::weak_ptr<WindowDelegate> delegate) { delegate_ = std::move(delegate); }

    /// The window controller, or null once it is gone.
    std::shared_ptr<WindowController> windowController() const { return windowController_.lock(); }
    void setWindowController(std::weak_ptr<WindowController> controller) {
        windowController_ = std::move(controller);
    }

    std::shared_ptr<ContentController> contentViewController() const { return contentViewController_.lock(); }
    void setContentViewController(std::weak_ptr<ContentController> controller) {
        contentViewController_ = std::move(controller);
    }

    bool isVisible() const { return visible_; }

    /// Shows the window. If it was not visible, its content appears: the view is loaded if necessary, and the
    /// content controller's `viewDidAppear` runs. Raising a visible window is not an appearance.
    void makeKeyAndOrderFront();

    /// Called when the window is to come to the front, visible or not; the front end then raises it.
    [[nodiscard]] Subscription observeOrderFront(Observers::Function observer) {
        return orderFrontObservers_.add(std::move(observer));
    }

    /// Hides the window without closing it.
    void orderOut();

    /// Notifies the delegate, then hides the window. Does nothing if the window is not visible or the
    /// delegate is being notified already.
    void close();

    /// Called when the window is about to close, after its delegate and before it is hidden.
    [[nodiscard]] Subscription observeWillClose(Observers::Function observer) {
        return willCloseObservers_.add(std::move(observer));
    }

    /// To be called by the front end when the user turns to the window.
    void becomeKey() { becomeKeyObservers_.notify(); }

    /// Called when the user turns to the window.
    [[nodiscard]] Subscription observeBecomeKey(Observers::Function observer) {
        return becomeKeyObservers_.add(std::move(observer));
    }

    /// Called when the title, the status or the visibility changes.
    [[nodiscard]] Subscription observe(Observers::Function observer) {
        return observers_.add(std::move(observer));
    }

    Window(Key, const Rect& contentRect, WindowStyleMask styleMask, BackingStore backing, bool defer)
        : contentRect_(contentRect)
        , styleMask_(styleMask)
        , backing_(backing)
        , deferred_(defer) {}

private:
    Rect contentRect_;
    WindowStyleMask styleMask_ = 0;
    BackingStore backing_ = BackingStore::buffered;
    bool deferred_ = false;
    std::string title_;
    std::string status_;
    std::weak_ptr<WindowDelegate> delegate_;
    std::weak_ptr<WindowController> windowController_;
    std::weak_ptr<ContentController> contentViewController_;
    bool visible_ = false;
    bool closing_ = false;
    Observers observers_;
    Observers orderFrontObservers_;
    Observers becomeKeyObservers_;
    Observers willCloseObservers_;
};

} // namespace tolvane::platform
