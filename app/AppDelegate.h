#pragma once

#include "app/ProductAddresses.h"
#include "app/UpdateCheck.h"
#include "platform/Action.h"
#include "platform/ActionTarget.h"
#include "platform/Alert.h"
#include "platform/Application.h"
#include "platform/ProcessInfo.h"
#include "platform/Storyboard.h"
#include "platform/WindowController.h"
#include "platform/Workspace.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::app {

/// What the application shell needs of the platform. The referenced objects outlive the delegate.
struct AppSources {
    const platform::Bundle& mainBundle;
    platform::Application& application;
    platform::Alerts& alerts;
    platform::Workspace& workspace;
    const platform::ProcessInfo& processInfo;
    platform::UserDefaults& defaults;
    const platform::UserSession& session;
    platform::URLSession& urlSession;
    platform::MainQueue& mainQueue;
    const platform::PropertyLists& propertyLists;
    ProductAddresses addresses;
};

/// The application's delegate: it owns the windows that belong to the program rather than to a document, and
/// serves the entry that other applications offer for this one.
class AppDelegate final : public platform::ApplicationDelegate,
                          public platform::ServicesProvider,
                          public platform::ActionTarget,
                          public std::enable_shared_from_this<AppDelegate> {
    /// Makes the constructor usable by `make` alone.
    struct Key {};

public:
    using ControllerList = std::vector<std::shared_ptr<platform::WindowController>>;

    static std::shared_ptr<AppDelegate> make(const AppSources& sources) {
        return std::make_shared<AppDelegate>(Key{}, sources);
    }

    /// The launch routine: looks for a newer version when it is time to (`UpdateCheck`), then makes this
    /// delegate the provider of the services entry.
    void applicationDidFinishLaunching() override;
    void applicationWillTerminate() override {}
    /// No: neither a start nor an activation makes an empty document.
    bool applicationShouldOpenUntitledFile() override { return false; }

    /// Opens another resolver window. There is no limit on their number. A scene that is missing or is no
    /// window controller is a fatal error.
    void openBrowserWindow(platform::Sender sender);

    /// Closes the resolver window that was opened last and lets go of it, even when its user had closed it
    /// before.
    void closeBrowserWindow(platform::Sender sender);

    /// Opens the support page, with whatever the user chose for web pages.
    void openSupport(platform::Sender sender);

    /// Opens the page of updates for the system's version. The minor number alone decides, so that a later
    /// major version with a small one gets the older page.
    void openUpdates(platform::Sender sender);

    /// Opens another privacy window, even while there is one. A scene that is missing or is no window
    /// controller is a fatal error.
    void openPrivacy(platform::Sender sender);

    /// Shows each file name in an alert of its own, one after the other. Nothing is opened.
    void handleServicesWithPboard(
        const platform::ServicesPasteboard& pasteboard,
        std::string_view userData,
        platform::Error* error) override;

    std::function<void(platform::Sender)> actionForSelector(std::string_view selector) override;
    bool isActionEnabled(std::string_view selector) override;

    /// The resolver windows in the order of their opening, those included that their users have closed. An
    /// entry may be null.
    const ControllerList& myResolverWindow() const { return myResolverWindow_; }

    /// The privacy windows in the order of their opening. None is ever let go of. An entry may be null.
    const ControllerList& myPrivacy() const { return myPrivacy_; }

    AppDelegate(Key, const AppSources& sources)
        : sources_(sources)
        , updateCheck_(UpdateCheck::make(
              {sources.mainBundle, sources.application, sources.alerts, sources.workspace, sources.defaults,
               sources.session, sources.urlSession, sources.mainQueue, sources.propertyLists},
              sources.addresses)) {}

private:
    std::shared_ptr<platform::WindowController> showScene(std::string_view identifier) const;
    void openPage(const std::string& address) const;

    AppSources sources_;
    std::shared_ptr<UpdateCheck> updateCheck_;
    ControllerList myResolverWindow_;
    ControllerList myPrivacy_;
};

} // namespace tolvane::app
