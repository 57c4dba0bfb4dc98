#include "app/AppDelegate.h"
#include "app/LaunchArguments.h"
#include "app/ProductAddresses.h"
#include "details/ViewController.h"
#include "inspect/Document.h"
#include "interface/ui_DocumentWindow.h"
#include "interface/ui_MenuBar.h"
#include "interface/ui_PrivacyWindow.h"
#include "interface/ui_ResolverWindow.h"
#include "interface/ui_StartWindow.h"
#include "platform/bookmark/StoredProperties.h"
#include "platform/freedesktop/ApplicationCalls.h"
#include "platform/freedesktop/FileManagerReveal.h"
#include "platform/freedesktop/FileNamesAction.h"
#include "platform/freedesktop/FontConfiguration.h"
#include "platform/freedesktop/FreedesktopAppleScripts.h"
#include "platform/freedesktop/SingleInstance.h"
#include "platform/linux/CurrentDirectory.h"
#include "platform/linux/DeclaredTypesText.h"
#include "platform/linux/LinuxBookmarks.h"
#include "platform/linux/LinuxExtendedAttributeCalls.h"
#include "platform/linux/LinuxFileContents.h"
#include "platform/linux/LinuxFileManager.h"
#include "platform/linux/LinuxProcessInfo.h"
#include "platform/linux/LinuxStreams.h"
#include "platform/linux/LinuxTextFiles.h"
#include "platform/linux/LinuxURLResources.h"
#include "platform/linux/LinuxUserSession.h"
#include "platform/linux/TypeTable.h"
#include "platform/qt/DisplayCheck.h"
#include "platform/qt/LazyIconStyle.h"
#include "platform/qt/QtApplication.h"
#include "platform/qt/QtDocumentController.h"
#include "platform/qt/QtPasteboard.h"
#include "platform/qt/QtStoryboard.h"
#include "platform/qt/QtUserDefaults.h"
#include "platform/qt/QtWorkspace.h"
#include "platform/qt/StartWindow.h"
#include "platform/qt/network/QtMainQueue.h"
#include "platform/qt/network/QtPropertyLists.h"
#include "platform/qt/network/QtURLSession.h"
#include "platform/qt/panels/QtAlerts.h"
#include "platform/qt/panels/QtOpenPanel.h"
#include "platform/qt/panels/QtSavePanel.h"
#include "platform/qt/preview/QtPreviewPanel.h"
#include "platform/qt/text/VisibleText.h"
#include "resolver/TRViewController.h"
#include "resolver/TRWindow.h"

#include <QApplication>
#include <QDBusConnection>
#include <QIcon>
#include <QLatin1String>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

/// The desktop program: the facts come from Linux, the windows from Qt.
namespace {

using namespace tolvane;

constexpr int wrongUsage = 2;
constexpr QLatin1String identifier("example.tolvane.tolvane");
constexpr std::string_view resolverAction = "resolver";
/// Does nothing: where the program runs already, the bus need not have started it.
constexpr std::string_view noAction = "none";

void complain(const std::string& sentence) {
    static_cast<void>(std::fputs(("tolvane: " + sentence + "\n").c_str(), stderr));
}

int print(const std::string& text) {
    const bool written = std::fputs(text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0;
    if (!written) {
        complain("standard output cannot be written");
    }
    return written ? EXIT_SUCCESS : EXIT_FAILURE;
}

/// The declared types; when they cannot be read it is said once and the program goes on without them.
platform::TypeTable loadTypeTable() {
    auto table = platform::TypeTable::parse(platform::declaredTypesText);
    if (table) {
        return *std::move(table);
    }
    complain("type table, line " + std::to_string(table.error().line) + ": " + table.error().what);
    return platform::TypeTable::withoutDeclarations();
}

/// A form with the menu bar that every window carries.
template <typename Form>
void setUpForm(QMainWindow& window) {
    Ui::MenuBar().setupUi(&window);
    Form().setupUi(&window);
}

/// Everything between the toolkit's application object and its event loop.
class Desktop {
public:
    explicit Desktop(app::ProductAddresses addresses) : addresses_(std::move(addresses)) {
        patience_.setSingleShot(true);
        QObject::connect(
            &patience_, &QTimer::timeout, &application_, &platform::QtApplication::quitWhenNothingIsShown);
        bundle_.mainStoryboard().addWindowScene(
            "Document Window Controller",
            [this](const platform::Coder& coder) {
                return details::ViewController::initWithCoder(coder, detailsSources_);
            },
            &setUpForm<Ui::DocumentWindow>);
        bundle_.mainStoryboard().addWindowScene(
            "Bookmark Resolver Window",
            [this](const platform::Coder& coder) {
                return resolver::TRViewController::initWithCoder(coder, resolverSources_);
            },
            &setUpForm<Ui::ResolverWindow>, &resolver::TRWindow::initWithContentRect);
        bundle_.mainStoryboard().addWindowScene(
            "Privacy Window Controller",
            [](const platform::Coder& coder) { return std::make_shared<platform::ViewController>(coder); },
            &setUpForm<Ui::PrivacyWindow>);
        // The list of versions may come before there is a window whose form names the item.
        application_.helpMenuItem("actionUpdateChecked", "Update not checked");
        application_.addTarget(*delegate_);
        application_.addTarget(documents_);
        application_.setFileOpener(
            [this](const std::vector<platform::URL>& urls) { documents_.openDocuments(urls); });
    }

    void launch(
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
            // Alerts take the event loop.
            QTimer::singleShot(0, &application_, [this, action] { carryOut(action); });
        }
    }

    /// Nothing that was taken on is left undone at the end.
    int run(const platform::SingleInstance& instance) {
        return application_.run([&] { return instance.hasRequestsWaiting() || alerts_.hasWaiting(); });
    }

    void terminate() { delegate_->applicationWillTerminate(); }

    /// Whether the network was asked for anything.
    bool hasAskedTheNetwork() const { return urlSession_.hasAsked(); }

private:
    /// Whoever has the bus start the program need not ask it for anything, or for anything that it knows.
    void endUnlessSomethingIsShownSoon() {
        constexpr std::chrono::seconds patience{10};
        patience_.start(patience);
    }

    void carryOut(const platform::RequestedAction& action) {
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

    void activate() {
        if (delegate_->applicationShouldOpenUntitledFile()) {
            return;
        }
        if (!startWindow_) {
            startWindow_ = std::make_unique<platform::StartWindow>(application_, &setUpForm<Ui::StartWindow>);
        }
        startWindow_->bringToFront();
    }

    const app::ProductAddresses addresses_;
    const platform::TypeTable typeTable_ = loadTypeTable();
    const platform::LinuxExtendedAttributeCalls extendedAttributes_;
    const platform::LinuxFileManager fileManager_{extendedAttributes_};
    const platform::LinuxURLResources resources_{typeTable_};
    const platform::LinuxBookmarks bookmarks_;
    const platform::StoredProperties bookmarkProperties_;
    const platform::LinuxUserSession session_;
    const platform::LinuxTextFiles textFiles_;

    platform::QtUserDefaults defaults_;
    platform::RecentDocuments recentDocuments_{defaults_};
    platform::QtApplication application_{defaults_, recentDocuments_, TOLVANE_VERSION};
    platform::QtAlerts alerts_;
    platform::QtWorkspace workspace_;
    const platform::LinuxProcessInfo processInfo_;
    const platform::QtPropertyLists propertyLists_;
    platform::QtMainQueue mainQueue_;
    platform::QtURLSession urlSession_;
    platform::QtSavePanels savePanels_;
    platform::QtOpenPanels openPanels_{
        [this](platform::Window& window) { return application_.widgetOf(window); }};
    platform::OpenDocumentsPanel openDocumentsPanel_;
    platform::QtPasteboard pasteboard_;
    platform::FreedesktopAppleScripts appleScripts_{
        std::make_shared<platform::FileManagerReveal>(QDBusConnection::sessionBus())};
    platform::QtPreviewPanels previewPanels_{
        application_, [](QMainWindow& window) { Ui::MenuBar().setupUi(&window); },
        std::make_shared<platform::LinuxFileContents>()};
    platform::QtBundle bundle_{application_, TOLVANE_VERSION};
    const details::DetailsSources detailsSources_{resources_,  bookmarks_,  session_, textFiles_,
                                                  savePanels_, pasteboard_, defaults_};
    const resolver::ResolverSources resolverSources_{
        bookmarks_, bookmarkProperties_, fileManager_, openPanels_, appleScripts_, previewPanels_, defaults_};
    const inspect::FileSources fileSources_{resources_, fileManager_, extendedAttributes_};
    const std::shared_ptr<app::AppDelegate> delegate_ = app::AppDelegate::make(
        {bundle_, application_, alerts_, workspace_, processInfo_, defaults_, session_, urlSession_,
         mainQueue_, propertyLists_, addresses_});
    platform::QtDocumentController documents_{
        {resources_, recentDocuments_,
         [this] { return std::make_shared<inspect::Document>(fileSources_, bundle_); },
         [this](const std::string& message, const std::string& reason, const std::string& details) {
             alerts_.presentError(message, reason, details);
         },
         [this](auto handler) { openDocumentsPanel_.begin(std::move(handler)); }}};
    std::unique_ptr<platform::StartWindow> startWindow_;
    QTimer patience_;
};

/// The desktop's own drawing comes first; the one that is compiled in serves where the program was not
/// installed. Looking for it and drawing it takes about a quarter of the time that the program needs to
/// start, so the first window is not kept waiting for it. Panels know the icon from the desktop entry
/// meanwhile.
void setWindowIconLater() {
    constexpr std::chrono::milliseconds afterTheFirstWindow{500};
    QTimer::singleShot(afterTheFirstWindow, qApp, [] {
        QApplication::setWindowIcon(QIcon::fromTheme(identifier, QIcon(":/" + identifier + ".svg")));
    });
}

/// What is asked for in place of opening files, here or of the program that runs already.
platform::RequestedAction actionFor(const app::LaunchRequest& request) {
    if (const auto* const named = std::get_if<app::ShowFileNames>(&request)) {
        return platform::fileNamesAction(named->urls);
    }
    switch (std::get<app::OpenFiles>(request).firstWindow) {
    case app::FirstWindow::resolver:
        return {.name = std::string(resolverAction)};
    case app::FirstWindow::none:
        return {.name = std::string(noAction)};
    case app::FirstWindow::usual:
        break;
    }
    return {};
}

int run(int count, char** arguments) {
    platform::makeWriteFailuresErrors();
    // What follows "--" are names, none of the toolkit's business.
    char** const names = std::find_if(
        arguments, arguments + count, [](const char* text) { return std::string_view(text) == "--"; });
    int toolkitCount = static_cast<int>(names - arguments);
    const auto request = [&] {
        std::vector<std::string> given(arguments + std::min(toolkitCount, 1), arguments + toolkitCount);
        given.insert(given.end(), names, arguments + count);
        return app::readLaunchArguments(given, &platform::currentDirectory);
    };
    if (const auto early = request(); std::holds_alternative<app::PrintText>(early)) {
        return print(std::get<app::PrintText>(early).text);
    }

    const auto startup = platform::StartupNotification::ofEnvironment();
    const platform::FontConfiguration fonts;
    auto displayCheck = std::make_unique<platform::DisplayCheck>();
    int status = EXIT_SUCCESS;
    bool hasAskedTheNetwork = false;
    const QApplication toolkit(toolkitCount, arguments);
    // The last thing that the toolkit does is to wait for the system to answer which host a name stands for.
    // Everything is closed by then, and nobody wants to know.
    QObject::connect(&toolkit, &QObject::destroyed, [&status, &hasAskedTheNetwork] {
        if (hasAskedTheNetwork) {
            static_cast<void>(std::fflush(nullptr));
            std::_Exit(status);
        }
    });
    displayCheck.reset();
    platform::LazyIconStyle::use();
    QApplication::setApplicationName("tolvane");
    QApplication::setApplicationDisplayName("Tolvane");
    QApplication::setDesktopFileName(identifier);

    platform::keepToolkitSettingsBesideOurs();

    // Read again: the toolkit has taken its own options out.
    const auto launch = request();
    if (const auto* const error = std::get_if<app::UsageError>(&launch)) {
        // A name that a pattern stands for on the command line may hold what a terminal would act on.
        complain(platform::visibleText(error->sentence).toStdString() + "\nTry 'tolvane --help'.");
        return wrongUsage;
    }
    const auto* const named = std::get_if<app::ShowFileNames>(&launch);
    if (named != nullptr && named->urls.empty()) {
        return EXIT_SUCCESS;
    }
    const auto urls = named == nullptr ? std::get<app::OpenFiles>(launch).urls : std::vector<platform::URL>();
    const platform::RequestedAction action = actionFor(launch);

    platform::SingleInstance instance(QDBusConnection::sessionBus());
    switch (instance.start(urls, startup, action)) {
    case platform::SingleInstance::Start::handedOver:
        return EXIT_SUCCESS;
    case platform::SingleInstance::Start::alone:
        if (!instance.message().empty()) {
            complain(instance.message());
        }
        break;
    case platform::SingleInstance::Start::first:
        break;
    }

    Desktop desktop(app::productAddresses());
    desktop.launch(urls, action, instance);
    setWindowIconLater();
    status = desktop.run(instance);
    desktop.terminate();
    hasAskedTheNetwork = desktop.hasAskedTheNetwork();
    return status;
}

} // namespace

int main(int count, char** arguments) {
    return run(count, arguments);
}
