#include "app/desktop/Desktop.h"

#include "interface/ui_DocumentWindow.h"
#include "interface/ui_FoundBookmarksWindow.h"
#include "interface/ui_MenuBar.h"
#include "interface/ui_PrivacyWindow.h"
#include "interface/ui_ResolverWindow.h"
#include "interface/ui_StartWindow.h"
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

Desktop::Desktop(ProductAddresses addresses, DesktopSystem& system)
    : addresses_(std::move(addresses))
    , system_(system)
    , services_(system.services())
    , appleScripts_(system.appleScripts())
    , previewPanels_(
          system.previewPanels(application_, [](QMainWindow& window) { Ui::MenuBar().setupUi(&window); })) {
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
        [](const platform::Coder& coder) { return std::make_shared<platform::ContentController>(coder); },
        &setUpForm<Ui::PrivacyWindow>);
}

resolver::FoundBookmarksSources Desktop::foundBookmarksSources() {
    return {
        services_.fileContents,
        services_.extendedAttributes,
        services_.composed,
        services_.bookmarks,
        backgroundTasks_,
        savePanels_,
        *services_.textFiles,
        *services_.session,
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
             .contents = *services_.fileContents,
             .accountName =
                 [this](attributes::AccountKind kind, std::uint32_t number) {
                     return kind == attributes::AccountKind::user ? accounts_.userName(number)
                                                                  : accounts_.groupName(number);
                 },
             .facts = services_.statusFacts.get(),
             .linkAttributes = services_.linkAttributes.get()},
        .sharedContents = services_.fileContents,
        .tasks = &backgroundTasks_};
}

void Desktop::launch(const DesktopRequest& request) {
    delegate_->applicationDidFinishLaunching();
    system_.setListeners(
        {.requested = [this](const DesktopRequest& further) { carryOut(further); },
         .darkColorsPreferred = [this](bool preferred) { darkColors_.setPreferred(preferred); }});
    if (const auto* const files = std::get_if<OpenFiles>(&request); files == nullptr) {
        endUnlessSomethingIsShownSoon();
        awaitUpdateCheck();
        // Alerts run the event loop.
        QTimer::singleShot(0, &application_, [this, request] { carryOut(request); });
    } else if (files->urls.empty()) {
        activate();
    } else {
        documents_.openDocuments(files->urls);
    }
}

int Desktop::run() {
    const int status = application_.run(
        [this] { return system_.hasRequestsWaiting() || alerts_.hasWaiting() || documents_.isOpening(); });
    delegate_->applicationWillTerminate();
    return status;
}

/// The program may have been started for a caller who then asks nothing of it, or nothing that it knows.
void Desktop::endUnlessSomethingIsShownSoon() {
    constexpr std::chrono::seconds patience{10};
    patience_.start(patience);
}

/// The check has set its date already, so what it finds would be told half a day later.
void Desktop::awaitUpdateCheck() {
    application_.setAwaited([this] { return urlSession_.isAsking() || alerts_.hasOptional(); });
}

void Desktop::carryOut(const DesktopRequest& request) {
    const auto* const files = std::get_if<OpenFiles>(&request);
    if (files != nullptr && files->urls.empty()) {
        activate();
        return;
    }
    endUnlessSomethingIsShownSoon();
    if (files != nullptr) {
        documents_.openDocuments(files->urls);
    } else if (std::holds_alternative<OpenResolver>(request)) {
        delegate_->openBrowserWindow(nullptr);
    } else if (const auto* const names = std::get_if<ServeFileNames>(&request)) {
        serve(*names);
    }
}

void Desktop::serve(const ServeFileNames& names) {
    alerts_.inTurn([this, names] {
        if (const auto provider = application_.servicesProvider()) {
            provider->handleServicesWithPboard(*names.pasteboard, "", nullptr);
        }
    });
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
