#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tolvane::platform {

/// How serious an alert is, with the platform's numbers.
enum class AlertStyle { warning = 0, informational = 1, critical = 2 };

/// The contents of an alert.
struct Alert {
    std::string messageText;
    std::string informativeText;
    AlertStyle style = AlertStyle::warning;
    /// The buttons' titles, default button first.
    std::vector<std::string> buttons;
    /// The index of the button that closing the alert stands for; the last one if absent.
    std::optional<std::size_t> cancelButton = std::nullopt;
    /// Whether the informative text is something to be read and copied to the byte, such as a path: then all
    /// of it is shown, however long it is.
    bool isInformativeTextExact = false;
};

/// Shows alerts.
class Alerts {
public:
    virtual ~Alerts() = default;

    /// Shows the alert modally and returns the index of the button that ended it.
    virtual std::size_t runModal(const Alert& alert) = 0;
};

} // namespace tolvane::platform
