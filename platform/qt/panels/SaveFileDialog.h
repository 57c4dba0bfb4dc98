#pragma once

#include "platform/services/Alert.h"
#include "platform/values/URL.h"

#include <QFileDialog>

#include <functional>
#include <optional>
#include <string>
#include <vector>

class QLineEdit;

namespace tolvane::platform {

/// The settings of a save panel, made before it is shown.
struct SavePanelSettings {
    bool canCreateDirectories = false;
    /// Without the dot; the first completes names. Empty leaves names as they are.
    std::vector<std::string> extensions;
    std::optional<URL> folder;
    std::string name;
    /// Listed beside the folder; Qt's own list without any.
    std::vector<URL> places = {};
};

/// The file name, with the first extension added unless it has one of them after a stem. Case does not count.
QString nameWithExtension(const QString& name, const std::vector<std::string>& extensions);

/// Qt's save panel, with the decisions made here: the name in the field is completed with an extension first,
/// then the user is asked before an item of that name is replaced. The field never holds a
/// hidden character.
class SaveFileDialog final : public QFileDialog {
public:
    explicit SaveFileDialog(SavePanelSettings settings, QWidget* parent = nullptr);

    /// The chosen place; nothing unless the dialog was accepted.
    const std::optional<URL>& chosenURL() const { return chosen_; }

    void accept() override;
    void setVisible(bool visible) override;

private:
    void proposeName();
    void finish(URL destination);
    void complain(const QString& message, const QString& informative);
    void ask(const Alert& alert, std::function<void()> agreed);

    SavePanelSettings settings_;
    QLineEdit* nameField_;
    std::optional<URL> chosen_;
};

} // namespace tolvane::platform
