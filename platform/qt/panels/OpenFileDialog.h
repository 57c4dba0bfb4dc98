#pragma once

#include "platform/values/URL.h"

#include <QFileDialog>

#include <optional>
#include <vector>

class QAbstractItemView;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace tolvane::platform {

/// The settings of an open panel, made before it is shown.
struct OpenPanelSettings {
    bool allowsMultipleSelection = false;
    bool canChooseDirectories = false;
    bool showsHiddenFiles = false;
    /// Whether a chosen symbolic link is replaced by its target.
    bool resolvesLinks = false;
    /// Where to begin; where the user was last without one.
    std::optional<URL> folder;
    /// Listed beside the folder; Qt's own list without any.
    std::vector<URL> places = {};
};

/// Qt's open panel with our rules: folders can be chosen if the settings allow it (Qt would enter them),
/// links are items, as are sockets and broken links. A separate list has the names that are not UTF-8, which
/// Qt omits. The panel changes nothing on disk.
class OpenFileDialog final : public QFileDialog {
public:
    explicit OpenFileDialog(const OpenPanelSettings& settings, QWidget* parent = nullptr);

    /// The chosen items, at least one unless the dialog was not accepted.
    const std::vector<URL>& chosenURLs() const { return chosen_; }

    void accept() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addUnreadableNames();
    void listUnreadableNames(const QString& folder);
    void enterFolder(const QString& folder);
    void mirrorSelection();
    void updateOpenButton();
    QStringList selectedPaths() const;
    QStringList typedPaths() const;
    void choose(const std::vector<URL>& items);
    void complainAboutAbsence(const QString& path);

    OpenPanelSettings settings_;
    QLineEdit* nameField_;
    QAbstractItemView* list_;
    QPushButton* openButton_;
    QLabel* unreadableLabel_ = nullptr;
    QComboBox* unreadableNames_ = nullptr;
    /// The name field's text as set from the list. While it is unchanged the list decides.
    QString mirrored_;
    std::vector<URL> chosen_;
};

} // namespace tolvane::platform
