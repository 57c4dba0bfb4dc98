#include "app/desktop/Desktop.h"

#include "interface/ui_DocumentWindow.h"
#include "interface/ui_FoundBookmarksWindow.h"
#include "interface/ui_MenuBar.h"
#include "interface/ui_PrivacyWindow.h"
#include "interface/ui_ResolverWindow.h"
#include "interface/ui_StartWindow.h"
#include "platform/freedesktop/DesktopPlaces.h"
#include "platform/freedesktop/FileNamesAction.h"
#include "platform/linux/volumes/FileSystemKind.h"
#include "resolver/FoundBookmarksController.h"
#include "resolver/TRWindow.h"

namespace tolvane::app {

namespace {

/// A form with the menu bar that every window has.
template <typename Form>
void setUpForm(QMainWindow& window) {
    Ui::MenuBar().setupUi(&window);
    Form().setupUi(&window);
}

} // namespace

Desktop::Desktop(ProductAddresses addresses, platform::TypeTable types)
    : addresses_(std::move(addresses))
    , system_(std::make_shared<const platform::LinuxPlatform>(std::move(types)))
    , previewPanels_(
          application_, [](QMainWindow& window) { Ui::MenuBar().setupUi(&window); }, system_->fileContents) {
    patience_.setSingleShot(true);
    QObject::connect(
        &patience_, &QTimer::timeout, &application_, &platform::QtApplication::quitWhenNothingIsShown);
    addWindowScenes();
    // The list of versions may come before there is a window whose form names the item.
    application_.helpMenuItem("actionUpdateChecked", "Update not checked");
    application_.addTarget(*delegate_);
    application_.addTarget(documents_);
    application_.addTarget(foundBookmarks_);
    application_.setFileOpener(
        [this](const std::vector<platform::URL>& urls) { documents_.openDocuments(urls); });
    application_.setBookmarkFinder(
        [this](const std::vector<platform::URL>& urls) { foundBookmarks_.searchIn(urls); });
}

void Desktop::addWindowScenes() {
    platform::QtStoryboard& storyboard = bundle_.mainStoryboard();
    storyboard.addWindowScene(
        "Document Window Controller",
        [this](const platform::Coder& coder) {
            return details::ViewController::initWithCoder(coder, detailsSources_);
        },
        &setUpForm<Ui::DocumentWindow>);
    storyboard.addWindowScene(
        "Bookmark Resolver Window",
        [this](const platform::Coder& coder) {
            return resolver::TRViewController::initWithCoder(coder, resolverSources_);
        },
        &setUpForm<Ui::ResolverWindow>, &resolver::TRWindow::initWithContentRect);
    storyboard.addWindowScene(
        "Found Bookmarks Window",
        [this](const platform::Coder& coder) {
            return std::make_shared<resolver::FoundBookmarksController>(coder, foundBookmarksSources());
        },
        &setUpForm<Ui::FoundBookmarksWindow>);
    storyboard.addWindowScene(
        "Privacy Window Controller",
        [](const platform::Coder& coder) { return std::make_shared<platform::ViewController>(coder); },
        &setUpForm<Ui::PrivacyWindow>);
}

/// Tasks share the system's services, since they may still run when the desktop ends.
resolver::FoundBookmarksSources Desktop::foundBookmarksSources() {
    return {
        system_->fileContents,
        std::shared_ptr<const platform::ExtendedAttributeCalls>(system_, &system_->extendedAttributes),
        system_->composed,
        std::shared_ptr<const platform::Bookmarks>(system_, &system_->bookmarks),
        backgroundTasks_,
        savePanels_,
        system_->textFiles,
        system_->session,
        [this](const platform::Data& bookmark) { showInResolver(bookmark); }};
}

void Desktop::showInResolver(const platform::Data& bookmark) {
    delegate_->openBrowserWindow(nullptr);
    const auto content = delegate_->myResolverWindow().back()->contentViewController();
    if (auto* const resolver = dynamic_cast<resolver::TRViewController*>(content.get())) {
        resolver->showBookmark(bookmark);
    }
}

details::WordSources Desktop::wordSources() {
    return {
        .explanations =
            {.files = fileSources_,
             .contents = *system_->fileContents,
             .accountName =
                 [this](attributes::AccountKind kind, std::uint32_t number) {
                     return kind == attributes::AccountKind::user ? accounts_.userName(number)
                                                                  : accounts_.groupName(number);
                 },
             .facts = &system_->statusFacts,
             .linkAttributes = &system_->linkAttributes},
        .sharedContents = system_->fileContents,
        .tasks = &backgroundTasks_};
}

std::vector<platform::URL> Desktop::places() {
    std::vector<std::string> mountPoints;
    if (const auto table = mounts_.table()) {
        for (const platform::Mount* const mount : (*table)->reachable()) {
            // A panel looks at each place, and a server may not answer.
            if (platform::isLocalFileSystem(mount->type)) {
                mountPoints.push_back(mount->mountPoint);
            }
        }
    }
    return platform::desktopPlaces(mountPoints);
}

void Desktop::launch(
    const std::vector<platform::URL>& urls,
    const platform::RequestedAction& action,
    platform::SingleInstance& instance) {
    delegate_->applicationDidFinishLaunching();
    instance.setHandlers(
        {.open =
             [this](const std::vector<platform::URL>& more) {
                 endUnlessSomethingIsShownSoon();
                 documents_.openDocuments(more);
             },
         .activate = [this] { activate(); },
         .action =
             [this](const platform::RequestedAction& asked) {
                 endUnlessSomethingIsShownSoon();
                 carryOut(asked);
             }});
    if (!urls.empty()) {
        documents_.openDocuments(urls);
    } else if (action.name.empty()) {
        activate();
    } else {
        endUnlessSomethingIsShownSoon();
        awaitUpdateCheck();
        // Alerts run the event loop.
        QTimer::singleShot(0, &application_, [this, action] { carryOut(action); });
    }
}

int Desktop::run(const platform::SingleInstance& instance) {
    const int status = application_.run(
        [&] { return instance.hasRequestsWaiting() || alerts_.hasWaiting() || documents_.isOpening(); });
    delegate_->applicationWillTerminate();
    return status;
}

/// The bus may have started the program for a caller who then asks nothing of it, or nothing that it knows.
void Desktop::endUnlessSomethingIsShownSoon() {
    constexpr std::chrono::seconds patience{10};
    patience_.start(patience);
}

/// The check has set its date already, so what it finds would be told half a day later.
void Desktop::awaitUpdateCheck() {
    application_.setAwaited([this] { return urlSession_.isAsking() || alerts_.hasOptional(); });
}

void Desktop::carryOut(const platform::RequestedAction& action) {
    if (action.name == resolverAction) {
        delegate_->openBrowserWindow(nullptr);
    } else if (action.name == platform::fileNamesActionName) {
        alerts_.inTurn([this, names = platform::FileNamesPasteboard(action.texts)] {
            if (const auto provider = application_.servicesProvider()) {
                provider->handleServicesWithPboard(names, "", nullptr);
            }
        });
    }
}

void Desktop::activate() {
    if (delegate_->applicationShouldOpenUntitledFile()) {
        return;
    }
    if (!startWindow_) {
        startWindow_ = std::make_unique<platform::StartWindow>(application_, &setUpForm<Ui::StartWindow>);
    }
    startWindow_->bringToFront();
}

} // namespace tolvane::app
