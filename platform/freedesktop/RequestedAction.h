#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tolvane::platform {

/// An action that the application is asked for by its name.
struct RequestedAction {
    std::string name = {};
    /// The parameter where that is one array of texts; nothing for any other, and for none.
    std::optional<std::vector<std::string>> texts = {};

    friend bool operator==(const RequestedAction&, const RequestedAction&) = default;
};

} // namespace tolvane::platform
