#pragma once

#include "platform/model/Observers.h"
#include "platform/qt/windows/MainWindow.h"

#include <memory>
#include <string>
#include <vector>

namespace tolvane::platform {

class QtApplication;
class TextFieldWidget;
class ContentController;
class Window;

/// Shows a model window on the screen: title, status and visibility follow the model, which is asked to close
/// when the user wants that. The status is in the form's field "statusLine", which is hidden when empty.
/// Destroying this hides the widget at once and deletes it when it is idle.
class WindowFrontEnd {
public:
    /// `application` outlives this object; the model and the content are not kept alive.
    WindowFrontEnd(
        QtApplication& application,
        std::unique_ptr<MainWindow> widget,
        const std::shared_ptr<Window>& window,
        const std::shared_ptr<ContentController>& content);
    WindowFrontEnd(const WindowFrontEnd&) = delete;
    WindowFrontEnd& operator=(const WindowFrontEnd&) = delete;
    ~WindowFrontEnd();

    /// Keeps something for as long as the front end, for instance what mirrors a control.
    void keep(std::shared_ptr<void> kept) { kept_.push_back(std::move(kept)); }

private:
    void showState();
    void showStatus(const std::string& status);

    QtApplication& application_;
    std::unique_ptr<MainWindow> widget_;
    std::weak_ptr<Window> window_;
    const Window* registered_;
    TextFieldWidget* statusLine_; // Owned by the window on the screen, which may have none.
    std::vector<std::shared_ptr<void>> kept_;
    Subscription stateSubscription_;
    Subscription frontSubscription_;
};

} // namespace tolvane::platform
