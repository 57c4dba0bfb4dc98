#pragma once

#include "platform/model/ActionTarget.h"

#include <QPointer>
#include <QWidget>

class QPlainTextEdit;

namespace tolvane::platform {

/// Copies what is selected. A text that is only to be read is copied whole when nothing in it is.
void copySelectionOrAll(QPlainTextEdit& text);

/// The commands of the Edit menu that concern text ("undo:", "redo:", "cut:", "copy:", "paste:",
/// "selectAll:"), carried out by the text in which the keyboard was last in one window.
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
