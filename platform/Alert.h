#pragma once

#include <cstddef>
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
};

/// Shows alerts.
class Alerts {
public:
    virtual ~Alerts() = default;

    /// Shows the alert, which the whole program waits for, and answers the index of the button that ended it.
    virtual std::size_t runModal(const Alert& alert) = 0;
};

} // namespace tolvane::platform
