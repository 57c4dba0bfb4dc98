#pragma once

#include "app/ProductAddresses.h"
#include "app/UpdateCheck.h"
#include "platform/model/ActionTarget.h"
#include "platform/model/Storyboard.h"
#include "platform/model/WindowController.h"
#include "platform/services/Alert.h"
#include "platform/services/Application.h"
#include "platform/services/ProcessInfo.h"
#include "platform/services/Workspace.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::app {

/// The services that the application shell needs. The referenced objects outlive the delegate.
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
    ProductAddresses addresses;
};

/// The application's delegate: owns the windows that belong to no document, and serves the Services entry.
class AppDelegate final : public platform::ApplicationDelegate,
                          public platform::ServicesProvider,
                          public platform::ActionTarget,
                          public std::enable_shared_from_this<AppDelegate> {
    /// Restricts the constructor to `make`.
    struct Key {};

public:
    using ControllerList = std::vector<std::shared_ptr<platform::WindowController>>;

    static std::shared_ptr<AppDelegate> make(const AppSources& sources) {
        return std::make_shared<AppDelegate>(Key{}, sources);
    }

    /// Checks for a newer version if that is due, then registers as provider of the Services entry.
    void applicationDidFinishLaunching() override;
    void applicationWillTerminate() override {}
    /// False: neither a start nor an activation opens an empty document.
    bool applicationShouldOpenUntitledFile() override { return false; }

    /// Opens another resolver window, without limit (`windowControllerOfScene`).
    void openBrowserWindow(platform::Sender /*sender*/) {
        myResolverWindow_.push_back(showScene("Bookmark Resolver Window"));
    }

    /// Closes and releases the resolver window opened last, even if its user has closed it already.
    void closeBrowserWindow(platform::Sender sender);

    /// Opens the support page in the default browser.
    void openSupport(platform::Sender /*sender*/) { openPage(sources_.addresses.support); }

    /// Opens the updates page for the system's version. Only the minor number counts, so a later major
    /// version with a small minor number gets the older page.
    void openUpdates(platform::Sender sender);

    /// Opens another privacy window, even if one is open (`windowControllerOfScene`).
    void openPrivacy(platform::Sender /*sender*/) {
        myPrivacy_.push_back(showScene("Privacy Window Controller"));
    }

    /// Shows each file name in an alert of its own, one after the other. Nothing is opened.
    void handleServicesWithPboard(
        const platform::ServicesPasteboard& pasteboard,
        std::string_view userData,
        platform::Error* error) override;

    std::function<void(platform::Sender)> actionForSelector(std::string_view selector) override;
    bool isActionEnabled(std::string_view selector) override;

    /// The resolver windows in the order of opening, closed ones too. An entry may be null.
    const ControllerList& myResolverWindow() const { return myResolverWindow_; }

    /// The privacy windows in the order of opening; none is ever released. An entry may be null.
    const ControllerList& myPrivacy() const { return myPrivacy_; }

    AppDelegate(Key, const AppSources& sources)
        : sources_(sources)
        , updateCheck_(UpdateCheck::make(
              {sources.mainBundle, sources.application, sources.alerts, sources.workspace, sources.defaults,
               sources.session, sources.urlSession, sources.mainQueue},
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
