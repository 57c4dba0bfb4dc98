// The desktop program's objects: the facts come from Linux, the windows from Qt.
#pragma once

#include "app/AppDelegate.h"
#include "app/ProductAddresses.h"
#include "details/ViewController.h"
#include "inspect/Document.h"
#include "platform/bookmark/description/BookmarkProperties.h"
#include "platform/freedesktop/ColorScheme.h"
#include "platform/freedesktop/FileManagerReveal.h"
#include "platform/freedesktop/FreedesktopAppleScripts.h"
#include "platform/freedesktop/RequestedAction.h"
#include "platform/freedesktop/SingleInstance.h"
#include "platform/linux/LinuxPlatform.h"
#include "platform/linux/volumes/CurrentMounts.h"
#include "platform/posix/Accounts.h"
#include "platform/qt/application/BackgroundWork.h"
#include "platform/qt/application/DarkColors.h"
#include "platform/qt/application/QtApplication.h"
#include "platform/qt/application/QtDocumentController.h"
#include "platform/qt/application/QtUserDefaults.h"
#include "platform/qt/application/QtWorkspace.h"
#include "platform/qt/application/UserEvents.h"
#include "platform/qt/network/QtURLSession.h"
#include "platform/qt/panels/AlertTurns.h"
#include "platform/qt/panels/QtAlerts.h"
#include "platform/qt/panels/QtPanels.h"
#include "platform/qt/preview/QtPreviewPanel.h"
#include "platform/qt/windows/QtStoryboard.h"
#include "platform/qt/windows/StartWindow.h"
#include "platform/values/URL.h"
#include "resolver/FoundBookmarksController.h"
#include "resolver/FoundBookmarksWindows.h"
#include "resolver/TRViewController.h"

#include <QDBusConnection>
#include <QTimer>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::app {

/// The action that opens the window that resolves bookmarks.
inline constexpr std::string_view resolverAction = "resolver";

/// All objects between Qt's application object and its event loop, which outlive every window.
///
/// The order of the members is the order in which they are made, and in reverse that in which they are
/// destroyed: each refers to those above it only. Where one calls back to a member below it, it does so while
/// the event loop runs and never later.
class Desktop {
public:
    Desktop(ProductAddresses addresses, platform::TypeTable types);
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;
    ~Desktop() = default;

    /// Opens the files, carries the action out where there are none, and otherwise shows what is shown
    /// without files. From then on takes the requests of other instances.
    void launch(
        const std::vector<platform::URL>& urls,
        const platform::RequestedAction& action,
        platform::SingleInstance& instance);

    /// Runs the event loop, which goes on while a request or an alert is waiting; returns the exit status.
    int run(const platform::SingleInstance& instance);

    /// Whether any network request was made.
    bool hasAskedTheNetwork() const { return urlSession_.hasAsked(); }

private:
    void addWindowScenes();
    resolver::FoundBookmarksSources foundBookmarksSources();
    void showInResolver(const platform::Data& bookmark);
    details::WordSources wordSources();
    std::vector<platform::URL> places();
    void endUnlessSomethingIsShownSoon();
    void awaitUpdateCheck();
    void carryOut(const platform::RequestedAction& action);
    void activate();

    const ProductAddresses addresses_;
    const std::shared_ptr<const platform::LinuxPlatform> system_;
    platform::AccountNames accounts_;

    platform::QtUserDefaults defaults_;
    platform::RecentDocuments recentDocuments_{defaults_};
    platform::QtApplication application_{defaults_, recentDocuments_, TOLVANE_VERSION};
    platform::UserEvents userEvents_;
    platform::DarkColors darkColors_;
    platform::ColorScheme colorScheme_{
        QDBusConnection::sessionBus(), [this](platform::ColorScheme::Preference preference) {
            darkColors_.setPreferred(preference == platform::ColorScheme::Preference::dark);
        }};
    platform::CurrentMounts mounts_;
    platform::QtAlerts alerts_;
    platform::QtWorkspace workspace_;
    platform::QtMainQueue mainQueue_;
    platform::AlertTurns alertTurns_{mainQueue_, alerts_};
    platform::QtURLSession urlSession_;
    platform::QtSavePanels savePanels_{[this] { return places(); }};
    platform::QtOpenPanels openPanels_{
        [this](platform::Window& window) { return application_.widgetOf(window); },
        [this] { return places(); }};
    platform::OpenDocumentsPanel openDocumentsPanel_{[this] { return places(); }};
    platform::OpenDocumentsPanel containersPanel_{[this] { return places(); }};
    platform::QtPasteboard pasteboard_;
    platform::QtBackgroundTasks backgroundTasks_;
    platform::FreedesktopAppleScripts appleScripts_{std::make_shared<platform::FileManagerReveal>(
        QDBusConnection::sessionBus(), platform::FileManagerReveal::usualTimeLimit, [this] {
            return userEvents_.startupId();
        })};
    platform::QtPreviewPanels previewPanels_;
    platform::QtBundle bundle_{application_, TOLVANE_VERSION};
    const inspect::FileSources fileSources_{
        system_->resources, system_->fileManager, system_->extendedAttributes};
    platform::QtDocumentController documents_{
        {system_->resources, recentDocuments_,
         [this] { return std::make_shared<inspect::Document>(fileSources_, bundle_); },
         [this](const std::string& message, const std::string& reason, const std::string& details) {
             alerts_.presentError(message, reason, details);
         },
         [this](auto handler) { openDocumentsPanel_.begin(std::move(handler)); }}};
    const details::DetailsSources detailsSources_{system_->resources, system_->bookmarks, system_->session,
                                                  system_->textFiles, savePanels_,        pasteboard_,
                                                  defaults_,          documents_,         wordSources()};
    const resolver::ResolverSources resolverSources_{
        system_->bookmarks,
        platform::readStoredProperties,
        system_->fileManager,
        openPanels_,
        appleScripts_,
        previewPanels_,
        defaults_};
    const std::shared_ptr<AppDelegate> delegate_ = AppDelegate::make(
        {bundle_, application_, alerts_, workspace_, system_->processInfo, defaults_, system_->session,
         urlSession_, alertTurns_, addresses_});
    resolver::FoundBookmarksWindows foundBookmarks_{
        bundle_, [this](resolver::FoundBookmarksWindows::FilesHandler handler) {
            containersPanel_.begin(std::move(handler));
        }};
    std::unique_ptr<platform::StartWindow> startWindow_;
    QTimer patience_;
};

} // namespace tolvane::app
