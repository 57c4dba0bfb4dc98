#pragma once

#include "platform/values/Error.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::platform {

class Menu;

/// The events of the application's life, as its delegate receives them.
class ApplicationDelegate {
public:
    ApplicationDelegate() = default;
    ApplicationDelegate(const ApplicationDelegate&) = delete;
    ApplicationDelegate& operator=(const ApplicationDelegate&) = delete;
    virtual ~ApplicationDelegate() = default;

    /// Launching is complete; the event loop is about to start.
    virtual void applicationDidFinishLaunching() = 0;
    virtual void applicationWillTerminate() = 0;

    /// Whether a start or activation without files opens an empty document.
    virtual bool applicationShouldOpenUntitledFile() = 0;
};

/// What another application passes when its user chooses this program's Services entry.
class ServicesPasteboard {
public:
    virtual ~ServicesPasteboard() = default;

    /// The names of the files as text; nothing unless a list of file names was passed.
    virtual std::optional<std::vector<std::string>> fileNames() const = 0;
};

/// Serves the Services entry.
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

    /// Replaces the provider. The application does not keep it alive.
    virtual void setServicesProvider(std::weak_ptr<ServicesProvider> provider) = 0;

    /// The Help menu, owned by the application, or null.
    virtual Menu* helpMenu() = 0;
};

} // namespace tolvane::platform
