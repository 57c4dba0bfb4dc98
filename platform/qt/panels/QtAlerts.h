#pragma once

#include "platform/services/Alert.h"

#include <QTimer>

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <variant>

namespace tolvane::platform {

class AlertBox;

/// Alerts (`AlertBox`) for which all windows of the program wait. Queued ones are shown one at a time, in
/// order.
class QtAlerts final : public Alerts {
public:
    QtAlerts();
    QtAlerts(const QtAlerts&) = delete;
    QtAlerts& operator=(const QtAlerts&) = delete;
    ~QtAlerts() override;

    /// Shown at once, over other alerts. If the program is told to end meanwhile, this and the following
    /// alerts are answered by their cancel buttons.
    std::size_t runModal(const Alert& alert) override;

    /// Shows an error with an OK button, with details on request, and returns. Those waiting when this object
    /// is destroyed are not shown.
    void presentError(
        const std::string& message, const std::string& informative, const std::string& details = {});

    /// Calls the function, which may run alerts: now if none is shown or waiting, otherwise later from the
    /// event loop, so alerts of two calls never mix. If the event loop ends before the first answer, the
    /// function waits for another event loop.
    void inTurn(std::function<void()> function) { add(Function{std::move(function)}); }

    /// Likewise, but once at most, and nothing that the program must not end without.
    void whenFree(std::function<void()> function);

    /// Whether there are errors or functions whose turn has not come and without which the program must not
    /// end.
    bool hasWaiting() const;

    /// Whether there are functions that wait for their turn and without which the program may end.
    bool hasOptional() const;

private:
    struct Error {
        Alert alert;
        std::string details;
    };
    struct Function {
        std::function<void()> call;
        bool isOptional = false;
    };
    using Turn = std::variant<Error, Function>;

    static bool isOptional(const Turn& turn);

    void add(Turn turn);
    void beginTurn();
    void endTurn();
    void show(const Error& error);

    std::deque<Turn> waiting_;
    bool isTaken_ = false;
    int running_ = 0;
    bool isEnding_ = false;
    bool hasAnswers_ = false;
    std::unique_ptr<AlertBox> shown_;
    QTimer next_;
};

} // namespace tolvane::platform
