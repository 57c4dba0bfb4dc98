#pragma once

#include "app/ProductAddresses.h"
#include "platform/model/Storyboard.h"
#include "platform/services/Alert.h"
#include "platform/services/Application.h"
#include "platform/services/MainQueue.h"
#include "platform/services/URLSession.h"
#include "platform/services/UserDefaults.h"
#include "platform/services/UserSession.h"
#include "platform/services/Workspace.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace tolvane::app {

/// The services of the update check, which outlive every use of it; the main queue outlives the session.
struct UpdateSources {
    const platform::Bundle& mainBundle;
    platform::Application& application;
    platform::Alerts& alerts;
    platform::Workspace& workspace;
    platform::UserDefaults& defaults;
    const platform::UserSession& session;
    platform::URLSession& urlSession;
    platform::MainQueue& mainQueue;
};

/// Checks from time to time whether the update list has another version of this program, and offers to
/// download it. It stores only settings:
///
/// - `noUpdateCheck`: true switches the check off;
/// - `dateLastUpdateCheck`: when the last check started, in seconds since 1 January 2001 UTC;
/// - `updateCheckInt`: the least number of seconds between two checks; below 1 it counts as 43,200.
///
/// Only the filtering of the response runs outside the main thread.
class UpdateCheck final : public std::enable_shared_from_this<UpdateCheck> {
    /// Restricts the constructor to `make`.
    struct Key {};

public:
    static std::shared_ptr<UpdateCheck> make(const UpdateSources& sources, ProductAddresses addresses) {
        return std::make_shared<UpdateCheck>(Key{}, sources, std::move(addresses));
    }

    /// Starts a check if more than the interval has passed since the last one and checks are not switched
    /// off. Writes the settings in any case.
    void schedule();

    /// Requests the update list and returns. Without an information dictionary nothing happens; one without a
    /// version is reported in an alert.
    void start();

    /// Marks the Help menu's item, and offers each entry of this program with another version and an address
    /// on the download site. An unreadable or empty list is reported in an alert. An absent list and one of
    /// the wrong structure are fatal errors.
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
