#include "platform/qt/QtAlerts.h"

#include "platform/qt/AlertBox.h"

#include <utility>

namespace tolvane::platform {

QtAlerts::QtAlerts() = default;

QtAlerts::~QtAlerts() = default;

std::size_t QtAlerts::runModal(const Alert& alert) {
    AlertBox box(alert);
    box.setWindowModality(Qt::ApplicationModal);
    box.exec();
    return box.answer();
}

void QtAlerts::presentError(
    const std::string& message, const std::string& informative, const std::string& details) {
    waiting_.push_back({{message, informative, AlertStyle::warning, {"OK"}}, details});
    if (!shown_) {
        showNextError();
    }
}

void QtAlerts::showNextError() {
    if (waiting_.empty()) {
        return;
    }
    shown_ = std::make_unique<AlertBox>(waiting_.front().alert);
    if (const std::string& details = waiting_.front().details; !details.empty()) {
        shown_->addDetails(details);
    }
    waiting_.pop_front();
    shown_->setWindowModality(Qt::ApplicationModal);
    QObject::connect(shown_.get(), &QDialog::finished, shown_.get(), [this] {
        // The box is still ending; it may be destroyed only after.
        shown_.release()->deleteLater();
        showNextError();
    });
    shown_->show();
}

} // namespace tolvane::platform
