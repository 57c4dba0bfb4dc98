#pragma once

#include "platform/model/ActionTarget.h"
#include "platform/model/Observers.h"
#include "platform/qt/text/TextCommands.h"
#include "platform/values/URL.h"

#include <QMainWindow>
#include <QString>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tolvane::platform {

class QtApplication;

/// A window on the screen with the program's menu bar. It takes dropped files, sends actions to its content
/// first, then handles those of windows and texts itself, then leaves them to the application, and remembers
/// its size under a name. When it is first shown it is made to fit the screen, apart from the others.
class MainWindow : public QMainWindow, public ActionTarget {
public:
    /// `application` outlives the window. Windows of one `name` share the remembered size.
    MainWindow(QtApplication& application, std::string name);
    ~MainWindow() override;

    /// Who is asked first for an action; asked no longer once it is gone.
    void setFirstResponder(std::weak_ptr<ActionTarget> responder) { firstResponder_ = std::move(responder); }

    /// Called instead of closing when the user wants the window closed.
    void setCloseHandler(std::function<void()> handler) { closeHandler_ = std::move(handler); }

    /// To be called once the form has put menus and buttons into the window and its first responder is set.
    void formIsComplete();

    /// Shows the window, or brings it back from the task bar, in front of the others with the keyboard.
    void bringToFront();

    std::function<void(Sender)> actionForSelector(std::string_view selector) override;

    void setVisible(bool visible) override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    ActionTarget* responderTo(std::string_view selector);
    void performClose(Sender sender);
    void performMiniaturize(Sender sender);
    void toggleFullScreen(Sender sender);
    void placeOnScreen();

    QtApplication& application_;
    std::string name_;
    TextCommands textCommands_;
    std::weak_ptr<ActionTarget> firstResponder_;
    std::function<void()> closeHandler_;
    std::vector<Subscription> helpMenu_;
    bool isRemembered_ = false;
    bool placed_ = false;
};

} // namespace tolvane::platform
