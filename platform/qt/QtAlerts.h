#pragma once

#include "platform/Alert.h"

#include <deque>
#include <memory>
#include <string>

namespace tolvane::platform {

class AlertBox;

/// Alerts on the screen (`AlertBox`), which all windows of the program wait for.
class QtAlerts final : public Alerts {
public:
    QtAlerts();
    QtAlerts(const QtAlerts&) = delete;
    QtAlerts& operator=(const QtAlerts&) = delete;
    ~QtAlerts() override;

    std::size_t runModal(const Alert& alert) override;

    /// Shows an error with an OK button and returns at once. Errors are shown one at a time, in the order in
    /// which they came; those still waiting when this object goes are not shown. Details are shown when the
    /// user asks for them.
    void presentError(
        const std::string& message, const std::string& informative, const std::string& details = {});

private:
    void showNextError();

    struct Error {
        Alert alert;
        std::string details;
    };

    std::deque<Error> waiting_;
    std::unique_ptr<AlertBox> shown_;
};

} // namespace tolvane::platform
