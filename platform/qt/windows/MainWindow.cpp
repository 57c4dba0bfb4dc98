#include "platform/qt/windows/MainWindow.h"

#include "platform/qt/application/QtApplication.h"
#include "platform/qt/text/TextViewWidget.h"
#include "platform/qt/windows/DroppedFiles.h"
#include "platform/qt/windows/SelectorActions.h"
#include "platform/qt/windows/WindowMenus.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QScreen>

#include <algorithm>
#include <array>
#include <utility>

namespace tolvane::platform {

namespace {

constexpr auto uriList = "text/uri-list";
constexpr int cascadeStep = 28;

std::vector<URL> filesIn(const QMimeData& data) {
    const QByteArray list = data.data(uriList);
    return fileURLsInList({list.constData(), static_cast<std::size_t>(list.size())});
}

} // namespace

MainWindow::MainWindow(QtApplication& application, std::string name)
    : application_(application)
    , name_("windowGeometry." + std::move(name))
    , textCommands_(*this) {
    setAcceptDrops(true);
}

MainWindow::~MainWindow() = default;

void MainWindow::formIsComplete() {
    connectSelectors(*this, [this](std::string_view selector) { return responderTo(selector); });
    fillRecentMenu(*this, application_);
    fillWindowMenu(*this);
    helpMenu_ = mirrorHelpMenu(*this, application_);
    if (const QByteArray geometry = application_.settings().bytesForKey(name_); !geometry.isEmpty()) {
        restoreGeometry(geometry);
    }
}

void MainWindow::bringToFront() {
    if (isMinimized()) {
        setWindowState(windowState() & ~Qt::WindowMinimized);
    }
    show();
    raise();
    activateWindow();
}

ActionTarget* MainWindow::responderTo(std::string_view selector) {
    if (const auto first = firstResponder_.lock(); first && first->actionForSelector(selector)) {
        return first.get();
    }
    if (actionForSelector(selector)) {
        return this;
    }
    if (textCommands_.actionForSelector(selector)) {
        return &textCommands_;
    }
    return application_.responderTo(selector);
}

std::function<void(Sender)> MainWindow::actionForSelector(std::string_view selector) {
    static constexpr std::array<NamedAction<MainWindow>, 3> actions{{
        {"performClose:", &MainWindow::performClose},
        {"performMiniaturize:", &MainWindow::performMiniaturize},
        {"toggleFullScreen:", &MainWindow::toggleFullScreen},
    }};
    return actionIn(actions, *this, selector);
}

void MainWindow::performClose(Sender /*sender*/) {
    close();
}

void MainWindow::performMiniaturize(Sender /*sender*/) {
    showMinimized();
}

void MainWindow::toggleFullScreen(Sender /*sender*/) {
    setWindowState(windowState() ^ Qt::WindowFullScreen);
}

void MainWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && activationHandler_) {
        activationHandler_();
    }
}

void MainWindow::closeEvent(QCloseEvent* event) {
    // The model decides: it hides this window when it has closed. Only then Qt, asked to quit, goes
    // on to the next window.
    if (closeHandler_) {
        closeHandler_();
        event->setAccepted(!isVisible());
        return;
    }
    QMainWindow::closeEvent(event);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (!filesIn(*event->mimeData()).empty()) {
        event->acceptProposedAction();
    }
}

void MainWindow::dropEvent(QDropEvent* event) {
    const std::vector<URL> files = filesIn(*event->mimeData());
    // Whoever dropped them must not be told that they were moved and may be deleted.
    event->setDropAction(Qt::CopyAction);
    event->accept();
    if (!isTakenByTextAt(event->position().toPoint(), files)) {
        application_.openFiles(files);
    }
}

bool MainWindow::isTakenByTextAt(const QPoint& place, const std::vector<URL>& files) const {
    for (QWidget* widget = childAt(place); widget != nullptr; widget = widget->parentWidget()) {
        auto* const text = dynamic_cast<TextViewWidget*>(widget);
        if (text != nullptr && text->takeFiles(files)) {
            return true;
        }
    }
    return false;
}

void MainWindow::showEvent(QShowEvent* event) {
    if (!std::exchange(placed_, true)) {
        placeApartFromOthers();
    }
    QMainWindow::showEvent(event);
}

void MainWindow::hideEvent(QHideEvent* event) {
    if (!event->spontaneous()) {
        application_.settings().setBytes(saveGeometry(), name_);
    }
    QMainWindow::hideEvent(event);
}

void MainWindow::placeApartFromOthers() {
    const auto covers = [this](const QWidget* other) {
        const auto* const window = dynamic_cast<const MainWindow*>(other);
        return window != nullptr && window != this && window->isVisible()
               && (window->pos() - pos()).manhattanLength() < cascadeStep;
    };
    const QWidgetList others = QApplication::topLevelWidgets();
    const QRect screenArea = screen()->availableGeometry();
    while (std::ranges::any_of(others, covers)) {
        const QPoint next = pos() + QPoint(cascadeStep, cascadeStep);
        if (!screenArea.contains(QRect(next, size()))) {
            return;
        }
        move(next);
    }
}

} // namespace tolvane::platform
