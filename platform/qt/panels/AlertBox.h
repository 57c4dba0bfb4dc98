#pragma once

#include "platform/services/Alert.h"

#include <QMessageBox>

#include <cstddef>
#include <string>

namespace tolvane::platform {

/// An alert as a dialog. Its texts may contain untrusted names: they are plain text, with hidden characters
/// written out, wrapped and cut in the middle. Line feeds begin new lines in the informative text only, so
/// that a name in the message cannot pose as a sentence of the program. An exact
/// informative text is shown whole, in a field that scrolls and from which it can be copied.
class AlertBox final : public QMessageBox {
public:
    /// Return presses the first button, Escape and closing the cancel button. Without buttons there is an
    /// "OK".
    explicit AlertBox(const Alert& alert, QWidget* parent = nullptr);

    /// Adds lines in a box that the user opens and scrolls.
    void addDetails(const std::string& details);

    /// The index of the button that ended the box, otherwise of the cancel button.
    std::size_t answer() const;

private:
    void showExactly(const std::string& text);

    std::size_t cancelButton_ = 0;
};

} // namespace tolvane::platform
