#pragma once

#include "platform/Observers.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace tolvane::platform {

class ViewController;
class WindowController;

/// What a window tells its delegate. Every operation is optional and does nothing unless overridden.
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

/// What a window is adorned with: a sum of the constants below, or any other bits that the platform knows.
using WindowStyleMask = std::uint64_t;
inline constexpr WindowStyleMask windowStyleMaskTitled = 1;
inline constexpr WindowStyleMask windowStyleMaskClosable = 2;
inline constexpr WindowStyleMask windowStyleMaskMiniaturizable = 4;
inline constexpr WindowStyleMask windowStyleMaskResizable = 8;

/// How a window's drawing is kept, with the platform's numbers.
enum class BackingStore { retained = 0, nonretained = 1, buffered = 2 };

/// The model of a window: title, visibility, and the links between a window, its controller and its content.
/// All links are weak; the window itself lives as long as a controller that refers to it.
class Window {
protected:
    /// Makes the designated initializer's constructor usable by this class and those derived from it alone.
    struct Key {};

public:
    /// A window of no size, for a front end that shows none.
    Window() = default;
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    virtual ~Window() = default;

    /// The designated initializer: a window for a content of this place and size. What is given here is what
    /// a front end makes its own window of; the model does nothing with it.
    static std::shared_ptr<Window> initWithContentRect(
        const Rect& contentRect, WindowStyleMask styleMask, BackingStore backing, bool defer) {
        return std::make_shared<Window>(Key{}, contentRect, styleMask, backing, defer);
    }

    const Rect& contentRect() const { return contentRect_; }
    WindowStyleMask styleMask() const { return styleMask_; }
    BackingStore backing() const { return backing_; }
    /// True when the window's device is to be made only when the window is first shown.
    bool isDeferred() const { return deferred_; }

    const std::string& title() const { return title_; }
    void setTitle(std::string title);

    std::shared_ptr<WindowDelegate> delegate() const { return delegate_.lock(); }
    /// Displaces the delegate that the window had. The window does not keep it alive.
    void setDelegate(std::weak_ptr<WindowDelegate> delegate) { delegate_ = std::move(delegate); }

    /// Null once the window controller is gone.
    std::shared_ptr<WindowController> windowController() const { return windowController_.lock(); }
    void setWindowController(std::weak_ptr<WindowController> controller) {
        windowController_ = std::move(controller);
    }

    std::shared_ptr<ViewController> contentViewController() const { return contentViewController_.lock(); }
    void setContentViewController(std::weak_ptr<ViewController> controller) {
        contentViewController_ = std::move(controller);
    }

    bool isVisible() const { return visible_; }

    /// Shows the window. When it was absent its content appears: the view is loaded if it was not, and the
    /// content controller's `viewDidAppear` runs. Raising a window that is visible is no appearance.
    void makeKeyAndOrderFront();

    /// Told when the window is asked to come to the front, whether it was visible or not. Only what shows the
    /// window can bring it there.
    [[nodiscard]] Subscription observeOrderFront(Observers::Function observer) {
        return orderFrontObservers_.add(std::move(observer));
    }

    /// Hides the window without closing it.
    void orderOut();

    /// Tells the delegate, then hides the window. Closing a window that is not visible tells nobody, and
    /// neither does closing it while the delegate is being told.
    void close();

    /// Told when the window is about to close, after its delegate and before it is hidden.
    [[nodiscard]] Subscription observeWillClose(Observers::Function observer) {
        return willCloseObservers_.add(std::move(observer));
    }

    /// Told when the title or the visibility changes.
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
    std::weak_ptr<WindowDelegate> delegate_;
    std::weak_ptr<WindowController> windowController_;
    std::weak_ptr<ViewController> contentViewController_;
    bool visible_ = false;
    bool closing_ = false;
    Observers observers_;
    Observers orderFrontObservers_;
    Observers willCloseObservers_;
};

} // namespace tolvane::platform
