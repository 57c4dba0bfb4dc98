#pragma once

#include <QDialog>
#include <QMetaObject>

#include <functional>
#include <memory>

namespace tolvane::platform {

/// One dialog on the screen and the handler that waits for its answer. The handler is called once at most,
/// and let go of as soon as it was called or can no longer be: when the dialog is closed in any way, when the
/// window that it belongs to takes it along, and when this session ends. Since a handler may keep its panel
/// alive, and the panel this session, whoever makes panels ends the open ones before the program ends.
class PanelSession {
public:
    using Handler = std::function<void(bool accepted)>;

    PanelSession() = default;
    PanelSession(const PanelSession&) = delete;
    PanelSession& operator=(const PanelSession&) = delete;
    ~PanelSession();

    /// Shows the dialog and takes it over; a parent that it has may still destroy it. Ends what was shown
    /// before. The handler finds the dialog still there.
    void begin(std::unique_ptr<QDialog> dialog, Handler handler);

    /// Removes the dialog without an answer. The handler is let go of, so this session may be gone after.
    void end();

    /// Null when nothing is shown.
    QDialog* dialog() const { return dialog_; }

private:
    void answer(int result);

    QDialog* dialog_ = nullptr;
    Handler handler_;
    QMetaObject::Connection finished_;
    QMetaObject::Connection destroyed_;
};

} // namespace tolvane::platform
