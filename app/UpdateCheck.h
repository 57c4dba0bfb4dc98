#pragma once

#include "app/ProductAddresses.h"
#include "platform/Alert.h"
#include "platform/Application.h"
#include "platform/MainQueue.h"
#include "platform/PropertyLists.h"
#include "platform/Storyboard.h"
#include "platform/URLSession.h"
#include "platform/UserDefaults.h"
#include "platform/UserSession.h"
#include "platform/Workspace.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace tolvane::app {

/// What the update check needs of the platform. The referenced objects outlive every use of the check, and
/// the main queue outlives the session.
struct UpdateSources {
    const platform::Bundle& mainBundle;
    platform::Application& application;
    platform::Alerts& alerts;
    platform::Workspace& workspace;
    platform::UserDefaults& defaults;
    const platform::UserSession& session;
    platform::URLSession& urlSession;
    platform::MainQueue& mainQueue;
    const platform::PropertyLists& propertyLists;
};

/// Looks once in a while whether the update list names another version of this program, and offers to
/// download it. Nothing is kept but the settings:
///
/// - `noUpdateCheck`: true switches the check off;
/// - `dateLastUpdateCheck`: when the last check was started, in seconds since 1 January 2001 UTC;
/// - `updateCheckInt`: the least number of seconds between two checks; below 1 it counts as 43,200.
///
/// Only the sorting of the response leaves the main thread.
class UpdateCheck final : public std::enable_shared_from_this<UpdateCheck> {
    /// Makes the constructor usable by `make` alone.
    struct Key {};

public:
    static std::shared_ptr<UpdateCheck> make(const UpdateSources& sources, ProductAddresses addresses) {
        return std::make_shared<UpdateCheck>(Key{}, sources, std::move(addresses));
    }

    /// Starts a check when more than the interval has passed since the last one and the user has not switched
    /// it off. Writes the settings, whatever comes of the check.
    void schedule();

    /// Asks for the update list and returns at once. Without an information dictionary nothing happens; one
    /// without a version is told in an alert.
    void start();

    /// Marks the help menu's item, and offers each entry of this program that names another version and an
    /// address on the download site. A list that cannot be read or is empty is told in an alert. A list of
    /// another shape, and an absent one, is a fatal error.
    void processList(const std::optional<platform::Data>& list, const std::string& runningVersion);

    UpdateCheck(Key, const UpdateSources& sources, ProductAddresses addresses)
        : sources_(sources)
        , addresses_(std::move(addresses)) {}

private:
    void processEntry(const platform::Dictionary& entry, const std::string& runningVersion);
    void markHelpMenu();
    bool userWantsToDownload(const std::string& version, const std::string& runningVersion);
    void showError(std::string text);

    UpdateSources sources_;
    ProductAddresses addresses_;
};

} // namespace tolvane::app
