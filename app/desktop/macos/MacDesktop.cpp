#include "app/desktop/macos/MacDesktop.h"

#include "platform/macos/MacPlatform.h"
#include "platform/macos/desktop/MacAppleScripts.h"
#include "platform/macos/desktop/MacPreviewPanels.h"
#include "platform/macos/desktop/MacServices.h"
#include "platform/qt/application/FileOpenEvents.h"
#include "platform/values/Utf8.h"

#include <QFile>
#include <QStandardPaths>

#include <optional>
#include <utility>
#include <variant>
#include <vector>

namespace tolvane::app {

namespace {

ServeFileNames namesOf(const ShowFileNames& request) {
    std::vector<std::string> names;
    for (const platform::URL& url : request.urls) {
        names.push_back(platform::shownText(url.path()));
    }
    return {std::make_shared<const platform::MacServicesPasteboard>(std::move(names))};
}

class MacDesktop final : public DesktopSystem {
public:
    std::optional<DesktopRequest> start(const LaunchRequest& request) override {
        if (const auto* const files = std::get_if<OpenFiles>(&request)) {
            return *files;
        }
        if (const auto* const named = std::get_if<ShowFileNames>(&request)) {
            return namesOf(*named);
        }
        return std::holds_alternative<OpenResolver>(request) ? DesktopRequest(OpenResolver())
                                                             : DesktopRequest(AwaitRequests());
    }

    SystemServices services() override { return servicesOf(system_, platform::readSystemProperties); }

    std::unique_ptr<platform::AppleScripts> appleScripts() override {
        return std::make_unique<platform::MacAppleScripts>();
    }

    std::unique_ptr<platform::PreviewPanels> previewPanels(
        platform::QtApplication& /*application*/,
        std::function<void(QMainWindow& window)> /*form*/) override {
        return std::make_unique<platform::MacPreviewPanels>();
    }

    std::vector<platform::URL> places() override {
        std::vector<platform::URL> places;
        for (const auto kind :
             {QStandardPaths::HomeLocation, QStandardPaths::DesktopLocation,
              QStandardPaths::DocumentsLocation, QStandardPaths::DownloadLocation}) {
            const QString path = QStandardPaths::writableLocation(kind);
            places.push_back(platform::URL::fileURLWithPath(QFile::encodeName(path).toStdString()));
        }
        return places;
    }

    /// Qt's theme follows the system's colours by itself.
    void setListeners(DesktopListeners listeners) override {
        files_.emplace([requested = listeners.requested](const std::vector<platform::URL>& urls) {
            requested(OpenFiles{urls});
        });
        services_.emplace([requested = listeners.requested](
                              std::shared_ptr<const platform::ServicesPasteboard> pasteboard) {
            requested(ServeFileNames{std::move(pasteboard)});
        });
    }

    bool hasRequestsWaiting() const override { return files_ && files_->hasFilesWaiting(); }

private:
    std::shared_ptr<const platform::MacPlatform> system_ = std::make_shared<const platform::MacPlatform>();
    std::optional<platform::FileOpenEvents> files_;
    std::optional<platform::MacServices> services_;
};

} // namespace

std::unique_ptr<DesktopSystem> desktopSystem(std::function<void(const std::string& sentence)> /*complain*/) {
    return std::make_unique<MacDesktop>();
}

} // namespace tolvane::app
