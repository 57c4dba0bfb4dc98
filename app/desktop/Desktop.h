// The desktop program's objects: the facts come from the system, the windows from Qt.
#pragma once

#include "app/AppDelegate.h"
#include "app/ProductAddresses.h"
#include "app/desktop/DesktopSystem.h"
#include "details/ViewController.h"
#include "inspect/Document.h"
#include "platform/bookmark/description/SalvageDescription.h"
#include "platform/bookmark/resolution/ComparedFacts.h"
#include "platform/posix/Accounts.h"
#include "platform/qt/application/BackgroundWork.h"
#include "platform/qt/application/DarkColors.h"
#include "platform/qt/application/QtApplication.h"
#include "platform/qt/application/QtDocumentController.h"
#include "platform/qt/application/QtUserDefaults.h"
#include "platform/qt/application/QtWorkspace.h"
#include "platform/qt/network/QtURLSession.h"
#include "platform/qt/panels/AlertTurns.h"
#include "platform/qt/panels/QtAlerts.h"
#include "platform/qt/panels/QtPanels.h"
#include "platform/qt/windows/QtStoryboard.h"
#include "platform/qt/windows/StartWindow.h"
#include "platform/values/URL.h"
#include "resolver/FoundBookmarksController.h"
#include "resolver/FoundBookmarksWindows.h"
#include "resolver/TRViewController.h"

#include <QTimer>

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

namespace tolvane::app {

/// All objects between Qt's application object and its event loop, which outlive every window.
///
/// The order of the members is the order in which they are made, and in reverse that in which they are
/// destroyed: each refers to those above it only. Where one calls back to a member below it, it does so while
/// the event loop runs and never later.
class Desktop {
public:
    /// The system outlives the desktop and has started.
    Desktop(ProductAddresses addresses, DesktopSystem& system);
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;
    ~Desktop() = default;

    /// Carries out the first request, and from then on those of other processes.
    void launch(const DesktopRequest& request);

    /// Runs the event loop, which goes on while a request or an alert is waiting; returns the exit status.
    int run();

    /// Whether any network request was made.
    bool hasAskedTheNetwork() const { return urlSession_.hasAsked(); }

private:
    void addWindowScenes();
    resolver::FoundBookmarksSources foundBookmarksSources();
    void showInResolver(const platform::Data& bookmark);
    details::WordSources wordSources();
    void endUnlessSomethingIsShownSoon();
    void awaitUpdateCheck();
    void carryOut(const DesktopRequest& request);
    void serve(const ServeFileNames& names);
    void activate();

    const ProductAddresses addresses_;
    DesktopSystem& system_;
    const SystemServices services_;
    platform::AccountNames accounts_;

    platform::QtUserDefaults defaults_;
    platform::RecentDocuments recentDocuments_{defaults_};
    platform::QtApplication application_{defaults_, recentDocuments_, TOLVANE_VERSION};
    platform::DarkColors darkColors_;
    platform::QtAlerts alerts_;
    platform::QtWorkspace workspace_;
    platform::QtMainQueue mainQueue_;
    platform::AlertTurns alertTurns_{mainQueue_, alerts_};
    platform::QtURLSession urlSession_;
    platform::QtSavePanels savePanels_{[this] { return system_.places(); }};
    platform::QtOpenPanels openPanels_{
        [this](platform::Window& window) { return application_.widgetOf(window); },
        [this] { return system_.places(); }};
    platform::OpenDocumentsPanel openDocumentsPanel_{[this] { return system_.places(); }};
    platform::OpenDocumentsPanel containersPanel_{[this] { return system_.places(); }};
    platform::QtPasteboard pasteboard_;
    platform::QtBackgroundTasks backgroundTasks_;
    const std::unique_ptr<platform::AppleScripts> appleScripts_;
    const std::unique_ptr<platform::PreviewPanels> previewPanels_;
    platform::QtBundle bundle_{application_, TOLVANE_VERSION};
    const inspect::FileSources fileSources_{
        *services_.resources, *services_.fileManager, *services_.extendedAttributes};
    platform::QtDocumentController documents_{
        {*services_.resources, recentDocuments_,
         [this] { return std::make_shared<inspect::Document>(fileSources_, bundle_); },
         [this](const std::string& message, const std::string& reason, const std::string& details) {
             alerts_.presentError(message, reason, details);
         },
         [this](auto handler) { openDocumentsPanel_.begin(std::move(handler)); }}};
    const details::DetailsSources detailsSources_{
        *services_.resources, *services_.bookmarks, *services_.session, *services_.textFiles,
        savePanels_,          pasteboard_,          defaults_,          documents_,
        wordSources()};
    const resolver::ResolverSources resolverSources_{
        *services_.bookmarks,
        services_.readStoredProperties,
        *services_.fileManager,
        openPanels_,
        *appleScripts_,
        *previewPanels_,
        defaults_,
        [](std::span<const std::byte> stored, std::span<const std::byte> found) {
            return platform::comparedFacts(stored, found);
        },
        platform::describeSalvaged};
    const std::shared_ptr<AppDelegate> delegate_ = AppDelegate::make(
        {bundle_, application_, alerts_, workspace_, *services_.processInfo, defaults_, *services_.session,
         urlSession_, alertTurns_, addresses_});
    resolver::FoundBookmarksWindows foundBookmarks_{
        bundle_, [this](resolver::FoundBookmarksWindows::FilesHandler handler) {
            containersPanel_.begin(std::move(handler));
        }};
    std::unique_ptr<platform::StartWindow> startWindow_;
    QTimer patience_;
};

} // namespace tolvane::app
