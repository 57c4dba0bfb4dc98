#pragma once

#include "platform/model/ActionTarget.h"
#include "platform/model/Menu.h"
#include "platform/qt/application/QtUserDefaults.h"
#include "platform/qt/application/RecentDocuments.h"
#include "platform/services/Application.h"
#include "platform/values/URL.h"

#include <QCoreApplication>
#include <QTimer>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class QWidget;

namespace tolvane::platform {

class Window;

/// The running program for its windows: further targets of actions, the opener of dropped files, and the
/// widget of each window. Ends the program when its last window is closed.
class QtApplication final : public QObject, public Application, public ActionTarget {
public:
    QtApplication(QtUserDefaults& settings, RecentDocuments& recentDocuments, std::string version);

    QtUserDefaults& settings() { return settings_; }
    RecentDocuments& recentDocuments() { return recentDocuments_; }

    /// Adds a target of actions, in this order. It outlives this object.
    void addTarget(ActionTarget& target) { targets_.push_back(&target); }

    /// Null if there is none.
    ActionTarget* responderTo(std::string_view selector);

    /// Opens files. Nothing is opened before it is set.
    void setFileOpener(std::function<void(const std::vector<URL>&)> opener) { opener_ = std::move(opener); }
    void openFiles(const std::vector<URL>& urls) const;

    /// Searches files for bookmarks. Nothing is searched before it is set.
    void setBookmarkFinder(std::function<void(const std::vector<URL>&)> finder) {
        bookmarkFinder_ = std::move(finder);
    }
    void findBookmarksIn(const std::vector<URL>& urls) const;

    void setServicesProvider(std::weak_ptr<ServicesProvider> provider) override {
        servicesProvider_ = std::move(provider);
    }
    std::shared_ptr<ServicesProvider> servicesProvider() const { return servicesProvider_.lock(); }

    /// Has the items of the windows' forms, once there is a window.
    Menu* helpMenu() override { return &helpMenu_; }

    /// The help menu's item with this name in the forms, made with this title if it is new.
    MenuItem& helpMenuItem(const std::string& name, const std::string& title);

    /// The widget that shows a window, for panels that belong to it; null when none does.
    QWidget* widgetOf(const Window& window) const;
    void setWidget(const Window& window, QWidget* widget);

    /// Runs the event loop until the program ends, and returns its exit status. It does not end by itself
    /// while `isWorkLeft` returns true; told to end, it waits for that, and for windows shown since.
    int run(const std::function<bool()>& isWorkLeft);

    /// While `isAwaited` says so the program does not end by itself either, but it does when it is told to.
    void setAwaited(std::function<bool()> isAwaited) { isAwaited_ = std::move(isAwaited); }

    std::function<void(Sender)> actionForSelector(std::string_view selector) override;
    bool isActionEnabled(std::string_view selector) override;

    bool eventFilter(QObject* watched, QEvent* event) override;

    /// Ends the program unless it shows a window or a panel. Called whenever one is closed.
    void quitWhenNothingIsShown();

private:
    void checkSoon();
    void terminate(Sender /*sender*/) { QCoreApplication::quit(); }
    void orderFrontStandardAboutPanel(Sender sender);
    void clearRecentDocuments(Sender /*sender*/) { recentDocuments_.clear(); }

    QtUserDefaults& settings_;
    RecentDocuments& recentDocuments_;
    std::string version_;
    std::vector<ActionTarget*> targets_;
    std::function<void(const std::vector<URL>&)> opener_;
    std::function<void(const std::vector<URL>&)> bookmarkFinder_;
    std::weak_ptr<ServicesProvider> servicesProvider_;
    Menu helpMenu_;
    std::map<std::string, MenuItem*> helpMenuItems_;
    std::map<const Window*, QWidget*> widgets_;
    /// Empty when the event loop is not run by this object.
    std::function<bool()> isWorkLeft_;
    std::function<bool()> isAwaited_;
    QTimer check_;
};

/// While it lives, Qt's failure to reach a display writes one sentence to standard error, naming the terminal
/// program, and exits with status 1 instead of aborting.
class DisplayCheck {
public:
    DisplayCheck();
    DisplayCheck(const DisplayCheck&) = delete;
    DisplayCheck& operator=(const DisplayCheck&) = delete;
    ~DisplayCheck();
};

} // namespace tolvane::platform
