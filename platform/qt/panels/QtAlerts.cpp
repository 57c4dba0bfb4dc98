#include "platform/qt/panels/QtAlerts.h"

#include "platform/qt/panels/AlertBox.h"

#include <algorithm>
#include <utility>

namespace tolvane::platform {

QtAlerts::QtAlerts() {
    next_.setSingleShot(true);
    QObject::connect(&next_, &QTimer::timeout, &next_, [this] { beginTurn(); });
}

QtAlerts::~QtAlerts() = default;

std::size_t QtAlerts::runModal(const Alert& alert) {
    if (running_ == 0 && !isTaken_) {
        isEnding_ = false;
    }
    AlertBox box(alert);
    if (isEnding_) {
        return box.answer();
    }
    bool isAnswered = false;
    QObject::connect(&box, &QDialog::finished, &box, [&isAnswered] { isAnswered = true; });
    box.setWindowModality(Qt::ApplicationModal);
    ++running_;
    box.exec();
    --running_;
    // A box whose event loop ended by itself says that all of them do.
    isEnding_ = !isAnswered;
    hasAnswers_ = hasAnswers_ || isAnswered;
    if (!waiting_.empty()) {
        next_.start();
    }
    return box.answer();
}

void QtAlerts::presentError(
    const std::string& message, const std::string& informative, const std::string& details) {
    add(Error{{message, informative, AlertStyle::warning, {"OK"}}, details});
}

void QtAlerts::whenFree(std::function<void()> function) {
    add(Function{std::move(function), true});
}

bool QtAlerts::hasWaiting() const {
    return std::ranges::any_of(waiting_, [](const Turn& turn) { return !isOptional(turn); });
}

bool QtAlerts::hasOptional() const {
    return std::ranges::any_of(waiting_, &QtAlerts::isOptional);
}

bool QtAlerts::isOptional(const Turn& turn) {
    const auto* const function = std::get_if<Function>(&turn);
    return function != nullptr && function->isOptional;
}

void QtAlerts::add(Turn turn) {
    waiting_.push_back(std::move(turn));
    beginTurn();
}

// Called whenever a turn may begin, which need not be so.
void QtAlerts::beginTurn() {
    if (isTaken_ || running_ > 0 || waiting_.empty()) {
        return;
    }
    isTaken_ = true;
    isEnding_ = false;
    hasAnswers_ = false;
    const Turn turn = std::move(waiting_.front());
    waiting_.pop_front();
    if (const auto* const error = std::get_if<Error>(&turn)) {
        show(*error);
    } else {
        std::get<Function>(turn).call();
        if (isEnding_ && !hasAnswers_ && !isOptional(turn)) {
            waiting_.push_front(turn);
        }
        endTurn();
    }
}

void QtAlerts::endTurn() {
    isTaken_ = false;
    // A function waits for answers, and is not to do so within the end of another turn.
    if (!waiting_.empty() && std::holds_alternative<Error>(waiting_.front())) {
        beginTurn();
    } else {
        next_.start();
    }
}

void QtAlerts::show(const Error& error) {
    shown_ = std::make_unique<AlertBox>(error.alert);
    if (!error.details.empty()) {
        shown_->addDetails(error.details);
    }
    shown_->setWindowModality(Qt::ApplicationModal);
    QObject::connect(shown_.get(), &QDialog::finished, shown_.get(), [this] {
        // The box is still ending; it may be destroyed only after.
        shown_.release()->deleteLater();
        endTurn();
    });
    shown_->show();
}

} // namespace tolvane::platform
