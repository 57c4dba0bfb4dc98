#include "app/desktop/linux/LinuxDesktop.h"

#include "platform/bookmark/description/BookmarkProperties.h"
#include "platform/freedesktop/ApplicationCalls.h"
#include "platform/freedesktop/ColorScheme.h"
#include "platform/freedesktop/DesktopPlaces.h"
#include "platform/freedesktop/FileManagerReveal.h"
#include "platform/freedesktop/FileNamesAction.h"
#include "platform/freedesktop/FreedesktopAppleScripts.h"
#include "platform/freedesktop/RequestedAction.h"
#include "platform/freedesktop/SingleInstance.h"
#include "platform/linux/LinuxPlatform.h"
#include "platform/linux/volumes/CurrentMounts.h"
#include "platform/linux/volumes/FileSystemKind.h"
#include "platform/qt/application/UserEvents.h"
#include "platform/qt/preview/QtPreviewPanel.h"

#include <QByteArray>
#include <QDBusConnection>
#include <QGuiApplication>

#include <optional>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace tolvane::app {

namespace {

/// The action that opens the window that resolves bookmarks.
constexpr std::string_view resolverAction = "resolver";
/// Does nothing in an instance that runs already, which the bus had no need to start.
constexpr std::string_view noAction = "none";

platform::RequestedAction actionOf(const LaunchRequest& request) {
    if (const auto* const named = std::get_if<ShowFileNames>(&request)) {
        return platform::fileNamesAction(named->urls);
    }
    if (std::holds_alternative<OpenFiles>(request)) {
        return {};
    }
    return {std::string(std::holds_alternative<OpenResolver>(request) ? resolverAction : noAction)};
}

DesktopRequest requestOf(const platform::RequestedAction& action) {
    if (action.name == resolverAction) {
        return OpenResolver();
    }
    if (action.name == platform::fileNamesActionName) {
        return ServeFileNames{std::make_shared<const platform::FileNamesPasteboard>(action.texts)};
    }
    return AwaitRequests();
}

class LinuxDesktop final : public DesktopSystem {
public:
    explicit LinuxDesktop(std::function<void(const std::string& sentence)> complain)
        : complain_(std::move(complain)) {}

    std::optional<DesktopRequest> start(const LaunchRequest& request) override;
    SystemServices services() override;
    std::unique_ptr<platform::AppleScripts> appleScripts() override;
    std::unique_ptr<platform::PreviewPanels> previewPanels(
        platform::QtApplication& application, std::function<void(QMainWindow& window)> form) override;
    std::vector<platform::URL> places() override;
    void setListeners(DesktopListeners listeners) override;
    bool hasRequestsWaiting() const override { return instance_ && instance_->hasRequestsWaiting(); }

private:
    std::function<void(const std::string& sentence)> complain_;
    /// Qt takes it out of the environment.
    platform::StartupNotification startup_ = platform::StartupNotification::ofEnvironment();
    std::optional<platform::SingleInstance> instance_;
    std::optional<platform::UserEvents> userEvents_;
    std::optional<platform::ColorScheme> colorScheme_;
    std::shared_ptr<const platform::LinuxPlatform> system_;
    platform::CurrentMounts mounts_;
};

std::optional<DesktopRequest> LinuxDesktop::start(const LaunchRequest& request) {
    if (startup_.activationToken.empty() && !startup_.startupId.empty()
        && QGuiApplication::platformName().startsWith("wayland")) {
        // Older launchers have one variable for both.
        qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(startup_.startupId));
    }
    const auto* const files = std::get_if<OpenFiles>(&request);
    const platform::RequestedAction action = actionOf(request);
    instance_.emplace(QDBusConnection::sessionBus());
    switch (instance_->start(files ? files->urls : std::vector<platform::URL>(), startup_, action)) {
    case platform::SingleInstance::Start::handedOver:
        return std::nullopt;
    case platform::SingleInstance::Start::alone:
        if (!instance_->message().empty()) {
            complain_(instance_->message());
        }
        break;
    case platform::SingleInstance::Start::first:
        break;
    }
    userEvents_.emplace();
    return files ? DesktopRequest(*files) : requestOf(action);
}

SystemServices LinuxDesktop::services() {
    if (!system_) {
        system_ = std::make_shared<const platform::LinuxPlatform>(platform::declaredTypes(complain_));
    }
    return servicesOf(system_, platform::readStoredProperties);
}

std::unique_ptr<platform::AppleScripts> LinuxDesktop::appleScripts() {
    return std::make_unique<platform::FreedesktopAppleScripts>(std::make_shared<platform::FileManagerReveal>(
        QDBusConnection::sessionBus(), platform::FileManagerReveal::usualTimeLimit,
        [this] { return userEvents_ ? userEvents_->startupId() : std::string(); }));
}

std::unique_ptr<platform::PreviewPanels> LinuxDesktop::previewPanels(
    platform::QtApplication& application, std::function<void(QMainWindow& window)> form) {
    return std::make_unique<platform::QtPreviewPanels>(application, std::move(form), services().fileContents);
}

std::vector<platform::URL> LinuxDesktop::places() {
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

void LinuxDesktop::setListeners(DesktopListeners listeners) {
    using Preference = platform::ColorScheme::Preference;
    colorScheme_.emplace(
        QDBusConnection::sessionBus(),
        [prefer = std::move(listeners.darkColorsPreferred)](Preference preference) {
            prefer(preference == Preference::dark);
        });
    instance_->setHandlers(
        {.open = [requested = listeners.requested](
                     std::vector<platform::URL> urls) { requested(OpenFiles{std::move(urls)}); },
         .activate = [requested = listeners.requested] { requested(OpenFiles()); },
         .action = [requested = listeners.requested](
                       const platform::RequestedAction& action) { requested(requestOf(action)); }});
}

} // namespace

std::unique_ptr<DesktopSystem> desktopSystem(std::function<void(const std::string& sentence)> complain) {
    return std::make_unique<LinuxDesktop>(std::move(complain));
}

} // namespace tolvane::app
