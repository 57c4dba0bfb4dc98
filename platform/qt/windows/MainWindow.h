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

/// A window on the screen with the program's menu bar. It takes dropped files, gives them to the text view
/// that they are dropped on, if that takes any, and otherwise has them opened. It sends actions to its
/// content first, then handles those of windows and texts itself, then leaves them to the application, and
/// remembers its size under a name.
class MainWindow : public QMainWindow, public ActionTarget {
public:
    /// `application` outlives the window. Windows of one `name` share the remembered size.
    MainWindow(QtApplication& application, std::string name);
    ~MainWindow() override;

    /// Who is asked first for an action; asked no longer once it is gone.
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

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    ActionTarget* responderTo(std::string_view selector);
    void performClose(Sender sender);
    void performMiniaturize(Sender sender);
    void toggleFullScreen(Sender sender);
    void placeApartFromOthers();
    bool isTakenByTextAt(const QPoint& place, const std::vector<URL>& files) const;

    QtApplication& application_;
    std::string name_;
    TextCommands textCommands_;
    std::weak_ptr<ActionTarget> firstResponder_;
    std::function<void()> closeHandler_;
    std::function<void()> activationHandler_;
    std::vector<Subscription> helpMenu_;
    bool placed_ = false;
};

} // namespace tolvane::platform
