/// What the desktop program asks of its system, beside what Qt answers alike on all of them.
#pragma once

#include "app/LaunchArguments.h"
#include "platform/services/AppleScript.h"
#include "platform/services/Application.h"
#include "platform/services/Bookmarks.h"
#include "platform/services/ExtendedAttributeCalls.h"
#include "platform/services/FileContents.h"
#include "platform/services/FileManager.h"
#include "platform/services/PreviewPanel.h"
#include "platform/services/ProcessInfo.h"
#include "platform/services/StatusFactSource.h"
#include "platform/services/TextFiles.h"
#include "platform/services/URLResources.h"
#include "platform/services/UserSession.h"
#include "platform/values/URL.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

class QMainWindow;

namespace tolvane::platform {
class QtApplication;
}

namespace tolvane::app {

/// The names of files that the Services entry is given. Never null.
struct ServeFileNames {
    std::shared_ptr<const platform::ServicesPasteboard> pasteboard;
};

/// What the start, or another process, asks the program to show.
using DesktopRequest = std::variant<OpenFiles, OpenResolver, AwaitRequests, ServeFileNames>;

/// The system's services, for several threads at a time. They are shared, since tasks may end after the
/// desktop. Null where a comment says so.
struct SystemServices {
    std::shared_ptr<const platform::URLResources> resources;
    std::shared_ptr<const platform::FileManager> fileManager;
    std::shared_ptr<const platform::ExtendedAttributeCalls> extendedAttributes;
    std::shared_ptr<const platform::Bookmarks> bookmarks;
    std::shared_ptr<const platform::UserSession> session;
    std::shared_ptr<const platform::TextFiles> textFiles;
    std::shared_ptr<const platform::ProcessInfo> processInfo;
    std::shared_ptr<const platform::FileContents> fileContents;
    /// Null where there is none.
    std::shared_ptr<const platform::StatusFactSource> statusFacts;
    /// Those of links themselves; null where there are none.
    std::shared_ptr<const platform::ExtendedAttributeCalls> linkAttributes;
    /// The composed form of names, in which they are compared; null where there is none.
    std::optional<std::string> (*composed)(std::string_view);
    platform::StoredPropertiesReader readStoredProperties;
};

/// The services of a system whose members belong to one object.
template <typename Platform>
SystemServices servicesOf(
    const std::shared_ptr<const Platform>& system,
    const platform::StoredPropertiesReader& readStoredProperties) {
    const auto shared = [&system]<typename Member>(const Member& member) {
        return std::shared_ptr<const Member>(system, &member);
    };
    return {
        .resources = shared(system->resources),
        .fileManager = shared(system->fileManager),
        .extendedAttributes = shared(system->extendedAttributes),
        .bookmarks = shared(system->bookmarks),
        .session = shared(system->session),
        .textFiles = shared(system->textFiles),
        .processInfo = shared(system->processInfo),
        .fileContents = system->fileContents,
        .statusFacts = {system, system->statusFactSource()},
        .linkAttributes = {system, system->linkAttributeCalls()},
        .composed = system->composed,
        .readStoredProperties = readStoredProperties};
}

/// Called by the event loop, on the main thread. None may be empty.
struct DesktopListeners {
    std::function<void(const DesktopRequest& request)> requested;
    /// Whether windows are to have dark colours although Qt's theme has none.
    std::function<void(bool preferred)> darkColorsPreferred;
};

/// The system that the program is built for. Made before Qt's application object and destroyed before it;
/// used on the main thread only.
class DesktopSystem {
public:
    DesktopSystem() = default;
    DesktopSystem(const DesktopSystem&) = delete;
    DesktopSystem& operator=(const DesktopSystem&) = delete;
    virtual ~DesktopSystem() = default;

    /// Passes what the arguments ask for to an instance that runs already, or returns what this one is to do.
    /// Called once, when there is an application object, before all others; not for what ends the program.
    virtual std::optional<DesktopRequest> start(const LaunchRequest& request) = 0;

    virtual SystemServices services() = 0;
    virtual std::unique_ptr<platform::AppleScripts> appleScripts() = 0;

    /// The form puts the menus of the program's windows into a window.
    virtual std::unique_ptr<platform::PreviewPanels> previewPanels(
        platform::QtApplication& application, std::function<void(QMainWindow& window)> form) = 0;

    /// What file panels list beside the folder.
    virtual std::vector<platform::URL> places() = 0;

    /// From then on requests are passed on, those that came since the start first.
    virtual void setListeners(DesktopListeners listeners) = 0;

    /// Whether requests that were accepted have not been passed on yet.
    virtual bool hasRequestsWaiting() const = 0;
};

} // namespace tolvane::app
