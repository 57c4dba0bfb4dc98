#pragma once

#include "platform/model/ActionTarget.h"

#include <QPointer>
#include <QWidget>

class QPlainTextEdit;

namespace tolvane::platform {

/// Copies the selection; of a read-only text without one, all.
void copySelectionOrAll(QPlainTextEdit& text);

/// The Edit menu's commands for text ("undo:", "redo:", "cut:", "copy:", "paste:", "selectAll:"), carried out
/// by the text in the window that had the keyboard last.
class TextCommands final : public ActionTarget {
public:
    /// `window` outlives this object.
    explicit TextCommands(QWidget& window);

    std::function<void(Sender)> actionForSelector(std::string_view selector) override;
    bool isActionEnabled(std::string_view selector) override;

private:
    QPointer<QWidget> text_;
    QObject connection_;
};

} // namespace tolvane::platform
