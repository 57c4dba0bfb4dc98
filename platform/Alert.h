#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tolvane::platform {

/// How grave an alert is, with the platform's numbers.
enum class AlertStyle { warning = 0, informational = 1, critical = 2 };

/// What an alert says and offers.
struct Alert {
    std::string messageText;
    std::string informativeText;
    AlertStyle style = AlertStyle::warning;
    /// The buttons' titles, the default one first.
    std::vector<std::string> buttons;
    /// The index of the button that stands for no answer, as when the alert is closed or the program ends;
    /// that of the last one when nothing is told.
    std::optional<std::size_t> cancelButton = std::nullopt;
};

/// Shows alerts.
class Alerts {
public:
    virtual ~Alerts() = default;

    /// Shows the alert, which the whole program waits for, and answers the index of the button that ended it.
    virtual std::size_t runModal(const Alert& alert) = 0;
};

} // namespace tolvane::platform
