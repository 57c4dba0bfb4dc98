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

/// Alerts on the screen (`AlertBox`), which all windows of the program wait for. What is presented or waits
/// its turn here is shown when no other alert is, in the order in which it came.
class QtAlerts final : public Alerts {
public:
    QtAlerts();
    QtAlerts(const QtAlerts&) = delete;
    QtAlerts& operator=(const QtAlerts&) = delete;
    ~QtAlerts() override;

    /// Shown at once, over whatever other alert there is. When the program is told to end meanwhile, this and
    /// the alerts that follow it are answered by the buttons that stand for no answer.
    std::size_t runModal(const Alert& alert) override;

    /// Shows an error with an OK button and returns at once. Those still waiting when this object goes are
    /// not shown. Details are shown when the user asks for them.
    void presentError(
        const std::string& message, const std::string& informative, const std::string& details = {});

    /// Calls the function, which may run alerts one after the other: now, when no alert is shown and nothing
    /// waits, otherwise later, from the event loop. So the alerts of two calls never mix. When
    /// the event loop ends before the first alert was answered, the function waits again, for another event
    /// loop.
    void inTurn(std::function<void()> function);

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
