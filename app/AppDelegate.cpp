#include "app/AppDelegate.h"

namespace tolvane::app {

void AppDelegate::applicationDidFinishLaunching() {
    updateCheck_->schedule();
    sources_.application.setServicesProvider(shared_from_this());
}

void AppDelegate::closeBrowserWindow(platform::Sender /*sender*/) {
    if (myResolverWindow_.empty()) {
        return;
    }
    // Removed from the list first, since an observer of the closing may close the next one.
    const auto newest = std::move(myResolverWindow_.back());
    myResolverWindow_.pop_back();
    if (newest) {
        newest->close();
    }
}

void AppDelegate::openUpdates(platform::Sender /*sender*/) {
    constexpr int sierra = 12;
    openPage(
        sources_.processInfo.operatingSystemVersion().minorVersion < sierra
            ? sources_.addresses.updatesElCapitan
            : sources_.addresses.updatesSierra);
}

void AppDelegate::handleServicesWithPboard(
    const platform::ServicesPasteboard& pasteboard,
    std::string_view /*userData*/,
    platform::Error* /*error*/) {
    const auto names = pasteboard.fileNames();
    if (!names) {
        return;
    }
    for (const std::string& name : *names) {
        sources_.alerts.runModal(
            {.messageText = "An error occurred:",
             .informativeText = name,
             .style = platform::AlertStyle::critical,
             .buttons = {"OK"},
             .isInformativeTextExact = true});
    }
}

std::function<void(platform::Sender)> AppDelegate::actionForSelector(std::string_view selector) {
    static constexpr std::array<platform::NamedAction<AppDelegate>, 5> actions{{
        {"openBrowserWindow:", &AppDelegate::openBrowserWindow},
        {"closeBrowserWindow:", &AppDelegate::closeBrowserWindow},
        {"openSupport:", &AppDelegate::openSupport},
        {"openUpdates:", &AppDelegate::openUpdates},
        {"openPrivacy:", &AppDelegate::openPrivacy},
    }};
    return platform::actionIn(actions, *this, selector);
}

bool AppDelegate::isActionEnabled(std::string_view selector) {
    return selector == "closeBrowserWindow:" ? !myResolverWindow_.empty()
                                             : platform::ActionTarget::isActionEnabled(selector);
}

std::shared_ptr<platform::WindowController> AppDelegate::showScene(std::string_view identifier) const {
    auto controller = platform::windowControllerOfScene(sources_.mainBundle, identifier);
    controller->showWindow();
    return controller;
}

void AppDelegate::openPage(const std::string& address) const {
    const auto url = platform::URL::fromText(address);
    if (!url) {
        platform::fatalError("\"" + address + "\" is not a valid URL");
    }
    sources_.workspace.openURL(*url);
}

} // namespace tolvane::app
