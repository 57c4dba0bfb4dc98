#include "platform/qt/windows/MainWindow.h"

#include "platform/qt/application/QtApplication.h"
#include "platform/qt/application/WindowPlacement.h"
#include "platform/qt/text/TextViewWidget.h"
#include "platform/qt/windows/SelectorActions.h"
#include "platform/qt/windows/WindowMenus.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCursor>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLayout>
#include <QMimeData>
#include <QScreen>

#include <array>
#include <utility>

namespace tolvane::platform {

namespace {

constexpr auto uriList = "text/uri-list";

std::vector<URL> filesIn(const QMimeData& data) {
    const QByteArray list = data.data(uriList);
    return fileURLsInList({list.constData(), static_cast<std::size_t>(list.size())});
}

} // namespace

MainWindow::MainWindow(QtApplication& application, std::string name)
    : application_(application)
    , name_("windowGeometry." + std::move(name))
    , tableCommands_(*this)
    , textCommands_(*this) {
    setAcceptDrops(true);
}

void MainWindow::formIsComplete() {
    connectSelectors(*this, [this](std::string_view selector) { return responderTo(selector); });
    fillRecentMenu(*this, application_);
    fillWindowMenu(*this);
    helpMenu_ = mirrorHelpMenu(*this, application_);
    if (const QByteArray geometry = application_.settings().bytesForKey(name_); !geometry.isEmpty()) {
        isRemembered_ = restoreGeometry(geometry);
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
    if (tableCommands_.actionForSelector(selector)) {
        return &tableCommands_;
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

void MainWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && activationHandler_) {
        activationHandler_();
    }
}

void MainWindow::closeEvent(QCloseEvent* event) {
    // The model hides this window if it closes. Only then does Qt, asked to quit, go on to the next.
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
    // The source must not take this for a move and delete the files.
    event->setDropAction(Qt::CopyAction);
    event->accept();
    if (!takeFilesAt(event->position().toPoint(), files)) {
        application_.openFiles(files);
    }
}

bool MainWindow::takeFilesAt(const QPoint& place, const std::vector<URL>& files) {
    for (QWidget* widget = childAt(place); widget != nullptr; widget = widget->parentWidget()) {
        auto* const text = dynamic_cast<TextViewWidget*>(widget);
        if (text != nullptr && text->takeFiles(files)) {
            return true;
        }
    }
    return false;
}

void MainWindow::setVisible(bool visible) {
    // Before there is a window of the system: of one that there is already, Qt would place the inside and not
    // the frame.
    if (visible && !std::exchange(placed_, true)) {
        placeOnScreen();
    }
    QMainWindow::setVisible(visible);
}

void MainWindow::hideEvent(QHideEvent* event) {
    if (!event->spontaneous()) {
        application_.settings().setBytes(saveGeometry(), name_);
    }
    QMainWindow::hideEvent(event);
}

void MainWindow::placeOnScreen() {
    if (isMaximized() || isFullScreen()) {
        return;
    }
    // A window that was nowhere yet comes where the user is.
    const QScreen* const nearest =
        QGuiApplication::screenAt(isRemembered_ ? geometry().center() : QCursor::pos());
    const QRect area = (nearest != nullptr ? nearest : screen())->availableGeometry();
    resize(isRemembered_ ? sizeWithin(size(), area.size()) : firstSizeWithin(size(), area.size()));
    // The content may need more.
    layout()->activate();
    const QPoint wanted = isRemembered_ ? pos() : firstPlaceWithin(size(), area);
    std::vector<QPoint> others;
    for (const QWidget* const other : QApplication::topLevelWidgets()) {
        if (other != this && other->isVisible() && dynamic_cast<const MainWindow*>(other) != nullptr) {
            others.push_back(other->pos());
        }
    }
    move(placeWithin({wanted, size()}, area, others));
}

std::vector<URL> fileURLsInList(std::string_view list) {
    std::vector<URL> urls;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find_first_of("\r\n"), list.size());
        const std::string_view line = list.substr(0, end);
        list.remove_prefix(std::min(end + 1, list.size()));
        if (auto url = localFileURL(line)) {
            urls.push_back(*std::move(url));
        }
    }
    return urls;
}

} // namespace tolvane::platform
