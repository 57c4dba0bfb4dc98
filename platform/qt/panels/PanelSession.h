#pragma once

#include <QDialog>
#include <QMetaObject>

#include <functional>
#include <memory>

namespace tolvane::platform {

/// An open dialog and the handler that waits for its answer. The handler is called at most once, and released
/// after that or when it can no longer be called: the dialog is closed, its window is destroyed, or this
/// session ends. A handler may keep its panel alive, and so this session; makers of panels end the open ones.
class PanelSession {
public:
    using Handler = std::function<void(bool accepted)>;

    PanelSession() = default;
    PanelSession(const PanelSession&) = delete;
    PanelSession& operator=(const PanelSession&) = delete;
    ~PanelSession() { end(); }

    /// Shows the dialog and takes ownership, after ending the previous one; a parent may still destroy it. It
    /// exists while the handler runs.
    void begin(std::unique_ptr<QDialog> dialog, Handler handler);

    /// Removes the dialog without an answer and releases the handler, which may destroy this session.
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
