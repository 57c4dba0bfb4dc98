#pragma once

#include "platform/Observers.h"

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

/// The model of a window: title, visibility, and the links between a window, its controller and its content.
/// All links are weak; the window itself lives as long as a controller that refers to it.
class Window {
public:
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

    /// Hides the window without closing it.
    void orderOut();

    /// Tells the delegate, then hides the window. Closing a window that is not visible tells nobody, and
    /// neither does closing it while the delegate is being told.
    void close();

    /// Told when the title or the visibility changes.
    [[nodiscard]] Subscription observe(Observers::Function observer) {
        return observers_.add(std::move(observer));
    }

private:
    std::string title_;
    std::weak_ptr<WindowDelegate> delegate_;
    std::weak_ptr<WindowController> windowController_;
    std::weak_ptr<ViewController> contentViewController_;
    bool visible_ = false;
    bool closing_ = false;
    Observers observers_;
};

} // namespace tolvane::platform
