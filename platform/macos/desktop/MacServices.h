#pragma once

#include "platform/macos/values/Owned.h"
#include "platform/services/Application.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tolvane::platform {

/// The names of files, as they were passed.
class MacServicesPasteboard final : public ServicesPasteboard {
public:
    explicit MacServicesPasteboard(std::optional<std::vector<std::string>> names)
        : names_(std::move(names)) {}

    std::optional<std::vector<std::string>> fileNames() const override { return names_; }

private:
    std::optional<std::vector<std::string>> names_;
};

/// Serves the Services entry while it lives. Main thread only.
class MacServices {
public:
    /// Called by the event loop; never with null.
    using Handler = std::function<void(std::shared_ptr<const ServicesPasteboard> pasteboard)>;

    explicit MacServices(Handler handler);
    MacServices(const MacServices&) = delete;
    MacServices& operator=(const MacServices&) = delete;
    ~MacServices();

private:
    macos::Owned<CFTypeRef> provider_;
};

} // namespace tolvane::platform
