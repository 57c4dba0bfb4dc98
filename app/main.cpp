#include "app/AppDelegate.h"
#include "app/LaunchArguments.h"
#include "details/ViewController.h"
#include "inspect/Document.h"
#include "interface/ui_DocumentWindow.h"
#include "interface/ui_MenuBar.h"
#include "interface/ui_ResolverWindow.h"
#include "interface/ui_StartWindow.h"
#include "platform/bookmark/StoredProperties.h"
#include "platform/freedesktop/ApplicationCalls.h"
#include "platform/freedesktop/FileManagerReveal.h"
#include "platform/freedesktop/FontConfiguration.h"
#include "platform/freedesktop/FreedesktopAppleScripts.h"
#include "platform/freedesktop/SingleInstance.h"
#include "platform/linux/CurrentDirectory.h"
#include "platform/linux/DeclaredTypesText.h"
#include "platform/linux/LinuxBookmarks.h"
#include "platform/linux/LinuxExtendedAttributeCalls.h"
#include "platform/linux/LinuxFileContents.h"
#include "platform/linux/LinuxFileManager.h"
#include "platform/linux/LinuxStreams.h"
#include "platform/linux/LinuxTextFiles.h"
#include "platform/linux/LinuxURLResources.h"
#include "platform/linux/LinuxUserSession.h"
#include "platform/linux/TypeTable.h"
#include "platform/qt/DisplayCheck.h"
#include "platform/qt/LazyIconStyle.h"
#include "platform/qt/QtAlerts.h"
#include "platform/qt/QtApplication.h"
#include "platform/qt/QtDocumentController.h"
#include "platform/qt/QtOpenPanel.h"
#include "platform/qt/QtPasteboard.h"
#include "platform/qt/QtSavePanel.h"
#include "platform/qt/QtStoryboard.h"
#include "platform/qt/QtUserDefaults.h"
#include "platform/qt/StartWindow.h"
#include "platform/qt/preview/QtPreviewPanel.h"
#include "resolver/TRViewController.h"
#include "resolver/TRWindow.h"

#include <QApplication>
#include <QDBusConnection>

#include <algorithm>
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
    Desktop() {
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
        application_.addTarget(*delegate_);
        application_.addTarget(documents_);
        application_.setFileOpener(
            [this](const std::vector<platform::URL>& urls) { documents_.openDocuments(urls); });
    }

    void launch(const std::vector<platform::URL>& urls, platform::SingleInstance& instance) {
        delegate_->applicationDidFinishLaunching();
        instance.setHandlers(
            {.open = [this](const std::vector<platform::URL>& more) { documents_.openDocuments(more); },
             .activate = [this] { activate(); },
             .action =
                 [this](const std::string& name) {
                     if (name == "resolver") {
                         delegate_->openBrowserWindow(nullptr);
                     }
                 }});
        if (urls.empty()) {
            activate();
        } else {
            documents_.openDocuments(urls);
        }
    }

    void terminate() { delegate_->applicationWillTerminate(); }

private:
    void activate() {
        if (delegate_->applicationShouldOpenUntitledFile()) {
            return;
        }
        if (!startWindow_) {
            startWindow_ = std::make_unique<platform::StartWindow>(application_, &setUpForm<Ui::StartWindow>);
        }
        startWindow_->bringToFront();
    }

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
    platform::QtBundle bundle_{application_};
    const details::DetailsSources detailsSources_{resources_,  bookmarks_,  session_, textFiles_,
                                                  savePanels_, pasteboard_, defaults_};
    const resolver::ResolverSources resolverSources_{
        bookmarks_, bookmarkProperties_, fileManager_, openPanels_, appleScripts_, previewPanels_, defaults_};
    const inspect::FileSources fileSources_{resources_, fileManager_, extendedAttributes_};
    const std::shared_ptr<app::AppDelegate> delegate_ =
        app::AppDelegate::make({bundle_, application_, alerts_});
    platform::QtDocumentController documents_{
        {resources_, recentDocuments_,
         [this] { return std::make_shared<inspect::Document>(fileSources_, bundle_); },
         [this](const std::string& message, const std::string& reason, const std::string& details) {
             alerts_.presentError(message, reason, details);
         },
         [this](auto handler) { openDocumentsPanel_.begin(std::move(handler)); }}};
    std::unique_ptr<platform::StartWindow> startWindow_;
};

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
    const QApplication toolkit(toolkitCount, arguments);
    displayCheck.reset();
    QApplication::setStyle(std::make_unique<platform::LazyIconStyle>().release());
    QApplication::setApplicationName("tolvane");
    QApplication::setApplicationDisplayName("Tolvane");
    QApplication::setDesktopFileName("example.tolvane.tolvane");

    platform::keepToolkitSettingsBesideOurs();

    // Read again: the toolkit has taken its own options out.
    const auto launch = request();
    if (const auto* const error = std::get_if<app::UsageError>(&launch)) {
        complain(error->sentence + "\nTry 'tolvane --help'.");
        return wrongUsage;
    }
    const std::vector<platform::URL>& urls = std::get<app::OpenFiles>(launch).urls;

    platform::SingleInstance instance(QDBusConnection::sessionBus());
    switch (instance.start(urls, startup)) {
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

    Desktop desktop;
    desktop.launch(urls, instance);
    const int status = QApplication::exec();
    desktop.terminate();
    return status;
}

} // namespace

int main(int count, char** arguments) {
    return run(count, arguments);
}
