#pragma once

#include "platform/model/Observers.h"
#include "platform/qt/windows/MainWindow.h"

#include <QTimer>

#include <functional>

class QListWidget;

namespace tolvane::platform {

class QtApplication;

/// The window that stands for a program without windows: it carries the menus, offers to open files and to
/// resolve a bookmark, lists recent files and takes dropped ones. It is no document. It goes when another
/// window of the program is shown.
class StartWindow final : public MainWindow {
public:
    /// The form puts a list named "recentDocuments" into the window, and buttons with selectors.
    /// `application` outlives the window.
    StartWindow(QtApplication& application, const std::function<void(QMainWindow&)>& form);
    ~StartWindow() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void listRecentDocuments();

    QtApplication& application_;
    QListWidget* list_ = nullptr; // Owned by the window.
    Subscription recents_;
    QTimer hiding_;
};

} // namespace tolvane::platform
