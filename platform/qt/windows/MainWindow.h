#pragma once

#include "platform/model/ActionTarget.h"
#include "platform/model/Observers.h"
#include "platform/qt/text/TextCommands.h"
#include "platform/qt/windows/TableCommands.h"
#include "platform/values/URL.h"

#include <QMainWindow>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::platform {

class QtApplication;

/// A window with the program's menu bar. It gives dropped files to the text view that they are dropped on, if
/// that takes any, and opens them otherwise. It remembers its size under a name. When it is first shown it is
/// made to fit the screen, apart from the others. Actions go to its content first, then to the window and its
/// table or texts, then to the application.
class MainWindow : public QMainWindow, public ActionTarget {
public:
    /// `application` outlives the window. Windows of one `name` share the remembered size.
    MainWindow(QtApplication& application, std::string name);

    /// The first target for actions; ignored once destroyed.
    void setFirstResponder(std::weak_ptr<ActionTarget> responder) { firstResponder_ = std::move(responder); }

    /// Called instead of closing when the user wants the window closed.
    void setCloseHandler(std::function<void()> handler) { closeHandler_ = std::move(handler); }

    /// Called when the user turns to the window.
    void setActivationHandler(std::function<void()> handler) { activationHandler_ = std::move(handler); }

    /// To be called once the form has put menus and buttons into the window and its first responder is set.
    void formIsComplete();

    /// Shows the window, or brings it back from the task bar, in front of the others with the keyboard.
    void bringToFront();

    std::function<void(Sender)> actionForSelector(std::string_view selector) override;

    void setVisible(bool visible) override;

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void hideEvent(QHideEvent* event) override;

    /// Gives files that were dropped at this place to what takes them there; false if nothing does.
    virtual bool takeFilesAt(const QPoint& place, const std::vector<URL>& files);

private:
    ActionTarget* responderTo(std::string_view selector);
    void performClose(Sender /*sender*/) { close(); }
    void performMiniaturize(Sender /*sender*/) { showMinimized(); }
    void toggleFullScreen(Sender /*sender*/) { setWindowState(windowState() ^ Qt::WindowFullScreen); }
    void placeOnScreen();

    QtApplication& application_;
    std::string name_;
    TableCommands tableCommands_;
    TextCommands textCommands_;
    std::weak_ptr<ActionTarget> firstResponder_;
    std::function<void()> closeHandler_;
    std::function<void()> activationHandler_;
    std::vector<Subscription> helpMenu_;
    bool isRemembered_ = false;
    bool placed_ = false;
};

/// The file URLs in a dropped list ("text/uri-list": one per line, comments begin with "#"); others are left
/// out. The list is bytes, so names need not be UTF-8.
std::vector<URL> fileURLsInList(std::string_view list);

} // namespace tolvane::platform
