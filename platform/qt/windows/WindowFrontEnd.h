#pragma once

#include "platform/model/Observers.h"
#include "platform/qt/windows/MainWindow.h"

#include <memory>
#include <vector>

namespace tolvane::platform {

class QtApplication;
class ViewController;
class Window;

/// Shows a model window on the screen: title and visibility follow the model, which is asked to close when
/// the user wants that. Destroying this hides the widget at once and deletes it when it is idle.
class WindowFrontEnd {
public:
    /// `application` outlives this object; the model and the content are not kept alive.
    WindowFrontEnd(
        QtApplication& application,
        std::unique_ptr<MainWindow> widget,
        const std::shared_ptr<Window>& window,
        const std::shared_ptr<ViewController>& content);
    WindowFrontEnd(const WindowFrontEnd&) = delete;
    WindowFrontEnd& operator=(const WindowFrontEnd&) = delete;
    ~WindowFrontEnd();

    /// Keeps something for as long as the front end, for instance what mirrors a control.
    void keep(std::shared_ptr<void> kept) { kept_.push_back(std::move(kept)); }

private:
    void showState();

    QtApplication& application_;
    std::unique_ptr<MainWindow> widget_;
    std::weak_ptr<Window> window_;
    const Window* registered_;
    std::vector<std::shared_ptr<void>> kept_;
    Subscription stateSubscription_;
    Subscription frontSubscription_;
};

} // namespace tolvane::platform
