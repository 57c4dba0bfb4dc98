#include "platform/qt/panels/PanelSession.h"

#include <utility>

namespace tolvane::platform {

void PanelSession::begin(std::unique_ptr<QDialog> dialog, Handler handler) {
    end();
    QDialog* shown = dialog.release();
    dialog_ = shown;
    handler_ = std::move(handler);
    finished_ = QObject::connect(shown, &QDialog::finished, shown, [this](int result) { answer(result); });
    // A destroyed parent takes the dialog along; no answer can come.
    destroyed_ = QObject::connect(shown, &QObject::destroyed, shown, [this] {
        dialog_ = nullptr;
        end();
    });
    shown->show();
    if (shown->windowModality() == Qt::NonModal) {
        shown->raise();
        shown->activateWindow();
    }
}

void PanelSession::end() {
    QObject::disconnect(finished_);
    QObject::disconnect(destroyed_);
    // Let go of last, because it may be what keeps this session alive.
    const Handler released = std::exchange(handler_, nullptr);
    const std::unique_ptr<QDialog> dialog(std::exchange(dialog_, nullptr));
}

void PanelSession::answer(int result) {
    QObject::disconnect(finished_);
    QObject::disconnect(destroyed_);
    const Handler handler = std::exchange(handler_, nullptr);
    // The dialog is still at work on its end; it may be destroyed only after.
    std::exchange(dialog_, nullptr)->deleteLater();
    if (handler) {
        handler(result == QDialog::Accepted);
    }
}

} // namespace tolvane::platform
