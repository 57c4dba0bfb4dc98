#include "app/UpdateCheck.h"

#include "platform/model/Menu.h"
#include "platform/propertylist/PropertyList.h"
#include "platform/values/FatalError.h"

#include <algorithm>

namespace tolvane::app {

namespace {

constexpr std::string_view noUpdateCheckKey = "noUpdateCheck";
constexpr std::string_view dateLastUpdateCheckKey = "dateLastUpdateCheck";
constexpr std::string_view updateCheckIntKey = "updateCheckInt";
constexpr double leastInterval = 1.0;
constexpr double usualInterval = 43200.0;
constexpr std::string_view applicationName = "Tolvane";

/// Whether the body of the response is to be parsed. Runs on the session's thread.
bool isUsable(
    const std::optional<platform::URLResponse>& response, const std::optional<platform::Error>& error) {
    if (!response || error || !response->statusCode || *response->statusCode < 200
        || *response->statusCode > 299) {
        return false;
    }
    return response->MIMEType == "text/xml" || response->MIMEType == "text/plain";
}

/// Whether a URL may contain all of these characters; others must be escaped as %XX.
bool isAddress(std::string_view text) {
    return std::ranges::all_of(text, [](char character) {
        const auto byte = static_cast<unsigned char>(character);
        constexpr unsigned char space = 0x20;
        constexpr unsigned char deleteCharacter = 0x7F;
        return byte > space && byte < deleteCharacter && !std::string_view("\"<>\\^`{|}").contains(character);
    });
}

const std::string& textIn(const platform::Dictionary& entry, std::string_view key) {
    const platform::Value* const value = entry.find(key);
    const auto* const text = value == nullptr ? nullptr : value->as<std::string>();
    if (text == nullptr) {
        platform::fatalError("an entry of the update list has no text under \"" + std::string(key) + "\"");
    }
    return *text;
}

} // namespace

void UpdateCheck::schedule() {
    platform::UserDefaults& defaults = sources_.defaults;
    const bool noUpdateCheck = defaults.boolForKey(noUpdateCheckKey);
    const double dateLastUpdateCheck = defaults.doubleForKey(dateLastUpdateCheckKey);
    double updateCheckInt = defaults.doubleForKey(updateCheckIntKey);
    if (updateCheckInt < leastInterval) {
        updateCheckInt = usualInterval;
    }
    const double now = sources_.session.now().timeIntervalSinceReferenceDate();
    if (now - dateLastUpdateCheck > updateCheckInt && !noUpdateCheck) {
        start();
        defaults.setDouble(sources_.session.now().timeIntervalSinceReferenceDate(), dateLastUpdateCheckKey);
    }
    defaults.setBool(noUpdateCheck, noUpdateCheckKey);
    defaults.setDouble(updateCheckInt, updateCheckIntKey);
}

void UpdateCheck::start() {
    const platform::Dictionary* const information = sources_.mainBundle.infoDictionary();
    if (information == nullptr) {
        return;
    }
    const platform::Value* const version = information->find(platform::CFBundleShortVersionString);
    const auto* const runningVersion = version == nullptr ? nullptr : version->as<std::string>();
    if (runningVersion == nullptr) {
        showError("Can't check for updates:\nNo app version string found.");
        return;
    }
    const auto updateList = platform::URL::fromText(addresses_.updateList);
    if (!updateList) {
        platform::fatalError("the address of the update list is not a valid URL");
    }
    const auto task = sources_.urlSession.dataTaskWithURL(
        *updateList,
        [check = weak_from_this(), &mainQueue = sources_.mainQueue, runningVersion = *runningVersion](
            std::optional<platform::Data> data, const std::optional<platform::URLResponse>& response,
            const std::optional<platform::Error>& error) {
            if (!isUsable(response, error)) {
                return;
            }
            mainQueue.async([check, list = std::move(data), runningVersion] {
                if (const auto still = check.lock()) {
                    still->processList(list, runningVersion);
                }
            });
        });
    task->resume();
}

void UpdateCheck::processList(const std::optional<platform::Data>& list, const std::string& runningVersion) {
    if (!list) {
        platform::fatalError("the update list has no body");
    }
    const auto parsed = platform::readPropertyList(*list);
    if (!parsed) {
        showError("Error in update Property List.");
        return;
    }
    const auto* const entries = parsed->value.as<platform::Array>();
    if (entries == nullptr) {
        platform::fatalError("the update list is not an array");
    }
    if (entries->empty()) {
        showError("Update Property List has no entries.");
        return;
    }
    for (const platform::Value& value : *entries) {
        const auto* const entry = value.as<platform::Dictionary>();
        if (entry == nullptr) {
            platform::fatalError("an entry of the update list is not a dictionary");
        }
        processEntry(*entry, runningVersion);
    }
}

void UpdateCheck::processEntry(const platform::Dictionary& entry, const std::string& runningVersion) {
    if (textIn(entry, "AppName") != applicationName) {
        return;
    }
    markHelpMenu();
    const std::string& version = textIn(entry, "Version");
    const std::string& address = textIn(entry, "URL");
    if (version == runningVersion || !address.contains(addresses_.downloadPrefix)) {
        return;
    }
    if (!userWantsToDownload(version, runningVersion)) {
        return;
    }
    const auto url = isAddress(address) ? platform::URL::fromText(address) : std::nullopt;
    if (!url) {
        platform::fatalError("the URL in an entry of the update list is not valid");
    }
    sources_.workspace.openURL(*url);
}

void UpdateCheck::markHelpMenu() {
    platform::Menu* const menu = sources_.application.helpMenu();
    platform::MenuItem* const item = menu == nullptr ? nullptr : menu->itemWithTitle("Update not checked");
    if (item != nullptr) {
        item->setState(platform::MenuItemState::on);
        item->setTitle("Checked for update");
    }
}

bool UpdateCheck::userWantsToDownload(const std::string& version, const std::string& runningVersion) {
    constexpr std::size_t ignore = 0;
    constexpr std::size_t download = 1;
    const std::size_t answer = sources_.alerts.runModal(
        {.messageText = "An update to this app to version " + version + " is available.",
         .informativeText = "You are currently running Tolvane version " + runningVersion
                            + ".\nPlease choose whether to download this update now in your default browser.",
         .style = platform::AlertStyle::informational,
         .buttons = {"Ignore", "Download"},
         .cancelButton = ignore});
    return answer == download;
}

void UpdateCheck::showError(std::string text) {
    sources_.alerts.runModal({"An error occurred:", std::move(text), platform::AlertStyle::critical, {"OK"}});
}

} // namespace tolvane::app
