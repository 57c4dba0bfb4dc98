#pragma once

#include "platform/model/Observers.h"
#include "platform/qt/windows/MainWindow.h"

#include <QTimer>

#include <functional>

class QListWidget;

namespace tolvane::platform {

class QtApplication;

/// The window of a program without windows: it has the menus, offers to open files and to resolve a bookmark,
/// lists recent files and takes dropped ones. Those dropped on the form's "bookmarkArea" are searched for
/// bookmarks. It is hidden when another window is shown.
class StartWindow final : public MainWindow {
public:
    /// The form has a list named "recentDocuments", and buttons with selectors.
    StartWindow(QtApplication& application, const std::function<void(QMainWindow&)>& form);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    bool takeFilesAt(const QPoint& place, const std::vector<URL>& files) override;

private:
    void listRecentDocuments();

    QtApplication& application_;
    QListWidget* list_ = nullptr; // Owned by the window.
    Subscription recents_;
    QTimer hiding_;
};

} // namespace tolvane::platform
