#include "platform/qt/windows/WindowFrontEnd.h"

#include "platform/model/ViewController.h"
#include "platform/model/Window.h"
#include "platform/qt/application/QtApplication.h"
#include "platform/qt/text/VisibleText.h"

namespace tolvane::platform {

WindowFrontEnd::WindowFrontEnd(
    QtApplication& application,
    std::unique_ptr<MainWindow> widget,
    const std::shared_ptr<Window>& window,
    const std::shared_ptr<ViewController>& content)
    : application_(application)
    , widget_(std::move(widget))
    , window_(window)
    , registered_(window.get()) {
    application_.setWidget(*window, widget_.get());
    widget_->setFirstResponder(content);
    widget_->setCloseHandler([weakWindow = window_] {
        if (const auto closed = weakWindow.lock()) {
            closed->close();
        }
    });
    stateSubscription_ = window->observe([this] { showState(); });
    frontSubscription_ = window->observeOrderFront([this] { widget_->bringToFront(); });
    showState();
}

WindowFrontEnd::~WindowFrontEnd() {
    application_.setWidget(*registered_, nullptr);
    stateSubscription_.reset();
    frontSubscription_.reset();
    kept_.clear();
    widget_->setFirstResponder({});
    widget_->setCloseHandler({});
    widget_->hide();
    widget_.release()->deleteLater();
}

void WindowFrontEnd::showState() {
    const auto window = window_.lock();
    if (!window) {
        return;
    }
    // Qt takes "[*]" for a placeholder.
    widget_->setWindowTitle(visibleText(QString::fromStdString(window->title())).replace("[*]", "[*][*]"));
    if (window->isVisible() != widget_->isVisible()) {
        widget_->setVisible(window->isVisible());
    }
}

} // namespace tolvane::platform
