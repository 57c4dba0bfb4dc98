#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tolvane::platform {

/// An action of the application, requested by name.
struct RequestedAction {
    std::string name = {};
    /// The parameter if it is one array of strings.
    std::optional<std::vector<std::string>> texts = {};

    friend bool operator==(const RequestedAction&, const RequestedAction&) = default;
};

} // namespace tolvane::platform
