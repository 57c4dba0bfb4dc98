#pragma once

#include "platform/Error.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::platform {

class Menu;

/// The application's life as its delegate hears of it.
class ApplicationDelegate {
public:
    ApplicationDelegate() = default;
    ApplicationDelegate(const ApplicationDelegate&) = delete;
    ApplicationDelegate& operator=(const ApplicationDelegate&) = delete;
    virtual ~ApplicationDelegate() = default;

    /// Launching is over and the program is about to wait for its user.
    virtual void applicationDidFinishLaunching() = 0;
    virtual void applicationWillTerminate() = 0;

    /// Whether a start, or an activation, without files makes an empty document.
    virtual bool applicationShouldOpenUntitledFile() = 0;
};

/// What another application hands over when its user chooses this program's entry.
class ServicesPasteboard {
public:
    virtual ~ServicesPasteboard() = default;

    /// The names of the files handed over, as text; nothing when what was handed over is no list of file
    /// names.
    virtual std::optional<std::vector<std::string>> fileNames() const = 0;
};

/// Serves the entry that other applications offer for this one.
class ServicesProvider {
public:
    ServicesProvider() = default;
    ServicesProvider(const ServicesProvider&) = delete;
    ServicesProvider& operator=(const ServicesProvider&) = delete;
    virtual ~ServicesProvider() = default;

    virtual void handleServicesWithPboard(
        const ServicesPasteboard& pasteboard, std::string_view userData, Error* error) = 0;
};

/// The running program.
class Application {
public:
    virtual ~Application() = default;

    /// Displaces the provider that there was. The application does not keep it alive.
    virtual void setServicesProvider(std::weak_ptr<ServicesProvider> provider) = 0;

    /// The menu "Help", owned by the application; null when there is none.
    virtual Menu* helpMenu() = 0;
};

} // namespace tolvane::platform
