#pragma once

#include "platform/services/Alert.h"

#include <QMessageBox>

#include <cstddef>
#include <string>

namespace tolvane::platform {

/// An alert as a dialog. Its texts may hold file names and other words of strangers: they are shown as plain
/// text, hidden characters are written out, and long ones are wrapped and cut in the middle. Line feeds in
/// the informative text begin new lines; in the message they are written out, so that a name cannot pose as a
/// sentence of this program. An exact informative text is shown whole, in a field that scrolls and from which
/// it can be copied.
class AlertBox final : public QMessageBox {
public:
    /// Return presses the first button; Escape and closing press the one that stands for no answer. Without
    /// buttons there is an "OK".
    explicit AlertBox(const Alert& alert, QWidget* parent = nullptr);

    /// Adds lines of any number in a box of their own, which the user opens and scrolls.
    void addDetails(const std::string& details);

    /// The index of the button that ended the box; when none did, of the one that stands for no answer.
    std::size_t answer() const;

private:
    void showExactly(const std::string& text);

    std::size_t cancelButton_ = 0;
};

} // namespace tolvane::platform
