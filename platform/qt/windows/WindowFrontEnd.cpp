#include "platform/qt/windows/WindowFrontEnd.h"

#include "platform/model/ContentController.h"
#include "platform/model/Window.h"
#include "platform/qt/application/QtApplication.h"
#include "platform/qt/text/TextFieldWidget.h"
#include "platform/qt/text/VisibleText.h"

#include <QAccessible>
#include <QSizePolicy>

namespace tolvane::platform {

WindowFrontEnd::WindowFrontEnd(
    QtApplication& application,
    std::unique_ptr<MainWindow> widget,
    const std::shared_ptr<Window>& window,
    const std::shared_ptr<ContentController>& content)
    : application_(application)
    , widget_(std::move(widget))
    , window_(window)
    , registered_(window.get())
    , statusLine_(dynamic_cast<TextFieldWidget*>(widget_->findChild<QWidget*>("statusLine"))) {
    application_.setWidget(*window, widget_.get());
    widget_->setFirstResponder(content);
    widget_->setCloseHandler([weakWindow = window_] {
        if (const auto closed = weakWindow.lock()) {
            closed->close();
        }
    });
    widget_->setActivationHandler([weakWindow = window_] {
        if (const auto key = weakWindow.lock()) {
            key->becomeKey();
        }
    });
    if (statusLine_ != nullptr) {
        // Part of the window, and no field of what it shows.
        statusLine_->viewport()->setAutoFillBackground(false);
        // Nothing is to move when it comes and goes.
        QSizePolicy policy = statusLine_->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        statusLine_->setSizePolicy(policy);
    }
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
    widget_->setActivationHandler({});
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
    showStatus(window->status());
    if (window->isVisible() != widget_->isVisible()) {
        widget_->setVisible(window->isVisible());
    }
}

void WindowFrontEnd::showStatus(const std::string& status) {
    if (statusLine_ == nullptr) {
        return;
    }
    const bool isNew = statusLine_->text() != status;
    statusLine_->setText(status);
    statusLine_->setVisible(!status.empty());
    if (isNew && !status.empty()) {
        // Read aloud by screen readers.
        QAccessibleEvent told(statusLine_, QAccessible::Alert);
        QAccessible::updateAccessibility(&told);
    }
}

} // namespace tolvane::platform
