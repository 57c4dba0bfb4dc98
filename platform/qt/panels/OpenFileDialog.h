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
    /// Whether a chosen symbolic link stands for the item that it leads to.
    bool resolvesLinks = false;
    /// Where to begin; where the user was last without one.
    std::optional<URL> folder;
    /// Listed beside the folder; Qt's own list without any.
    std::vector<URL> places = {};
};

/// Qt's open panel, with the decisions made here: folders are chosen as files are where the settings say so
/// (Qt would enter them), links are themselves, and every item counts, even a socket or a broken link. A list
/// of its own offers the items whose names are not UTF-8, which Qt leaves out. Nothing on disk can be changed
/// from within the panel.
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
    /// What the name field was last set to from the list. As long as it says so the list decides.
    QString mirrored_;
    std::vector<URL> chosen_;
};

} // namespace tolvane::platform
