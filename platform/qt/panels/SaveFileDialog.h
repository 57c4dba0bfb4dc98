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
    /// What the text to be saved is about.
    std::optional<URL> subject = {};
    /// Listed beside the folder; Qt's own list without any.
    std::vector<URL> places = {};
};

/// The file name, with the first extension unless it has one of them. Case does not count.
QString nameWithExtension(const QString& name, const std::vector<std::string>& extensions);

/// Qt's save panel with our rules: the name gets an extension, unless all files are listed, then the user is
/// asked before an existing item is replaced. The field never has a hidden character.
class SaveFileDialog final : public QFileDialog {
public:
    explicit SaveFileDialog(SavePanelSettings settings, QWidget* parent = nullptr);

    /// The chosen place; nothing unless the dialog was accepted.
    const std::optional<URL>& chosenURL() const { return chosen_; }

    void accept() override;
    void setVisible(bool visible) override;

private:
    void proposeName();
    void askBeforeReplacing(const URL& item, const QString& name);
    void finish(URL destination);
    void complain(const QString& message, const QString& informative);
    void ask(const Alert& alert, std::function<void()> agreed);

    SavePanelSettings settings_;
    QLineEdit* nameField_;
    std::optional<URL> chosen_;
};

} // namespace tolvane::platform
