#include "app/AppDelegate.h"

#include "platform/FatalError.h"

#include <array>
#include <utility>

namespace tolvane::app {

void AppDelegate::applicationDidFinishLaunching() {
    updateCheck_->schedule();
    sources_.application.setServicesProvider(shared_from_this());
}

void AppDelegate::openBrowserWindow(platform::Sender /*sender*/) {
    const platform::Storyboard* storyboard = sources_.mainBundle.storyboardWithName("Main");
    if (storyboard == nullptr) {
        platform::fatalError("there is no storyboard \"Main\"");
    }
    auto controller = std::dynamic_pointer_cast<platform::WindowController>(
        storyboard->instantiateControllerWithIdentifier("Bookmark Resolver Window"));
    if (!controller) {
        platform::fatalError("\"Bookmark Resolver Window\" is no window controller");
    }
    controller->showWindow();
    myResolverWindow_.push_back(std::move(controller));
}

void AppDelegate::closeBrowserWindow(platform::Sender /*sender*/) {
    if (myResolverWindow_.empty()) {
        return;
    }
    // Held and out of the list, since whoever hears of the closing may close the next.
    const auto newest = std::move(myResolverWindow_.back());
    myResolverWindow_.pop_back();
    if (newest) {
        newest->close();
    }
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
        sources_.alerts.runModal({"An error occurred:", name, platform::AlertStyle::critical, {"OK"}});
    }
}

std::function<void(platform::Sender)> AppDelegate::actionForSelector(std::string_view selector) {
    static constexpr std::array<platform::NamedAction<AppDelegate>, 2> actions{{
        {"openBrowserWindow:", &AppDelegate::openBrowserWindow},
        {"closeBrowserWindow:", &AppDelegate::closeBrowserWindow},
    }};
    return platform::actionIn(actions, *this, selector);
}

bool AppDelegate::isActionEnabled(std::string_view selector) {
    return selector == "closeBrowserWindow:" ? !myResolverWindow_.empty()
                                             : platform::ActionTarget::isActionEnabled(selector);
}

} // namespace tolvane::app
