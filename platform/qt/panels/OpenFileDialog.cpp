#include "platform/qt/panels/OpenFileDialog.h"

#include "platform/qt/application/MakeChild.h"
#include "platform/qt/panels/AlertBox.h"
#include "platform/qt/panels/FileDialogSetup.h"
#include "platform/qt/panels/RawPath.h"
#include "platform/qt/text/VisibleText.h"
#include "platform/values/Utf8.h"

#include <QAbstractItemView>
#include <QByteArray>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QEvent>
#include <QFileSystemModel>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace tolvane::platform {

namespace {

QDir::Filters filterFor(const OpenPanelSettings& settings) {
    // Links that lead nowhere, sockets and devices are "system" items to Qt.
    const QDir::Filters shown = QDir::AllEntries | QDir::AllDirs | QDir::System | QDir::NoDotAndDotDot;
    return settings.showsHiddenFiles ? shown | QDir::Hidden : shown;
}

/// The item with the links on its path, and itself, followed; the item as it is when that leads nowhere.
URL followed(const URL& item) {
    std::error_code failure;
    const auto target = std::filesystem::canonical(item.path(), failure);
    return failure ? item : URL::fileURLWithPath(target.native());
}

/// The names in the folder that are not UTF-8, sorted.
std::vector<std::string> unreadableNamesIn(const std::string& folder, bool hiddenToo) {
    std::vector<std::string> names;
    std::error_code failure;
    std::filesystem::directory_iterator entry(folder, failure);
    for (; !failure && entry != std::filesystem::directory_iterator(); entry.increment(failure)) {
        std::string name = entry->path().filename().native();
        if (!isValidUtf8(name) && (hiddenToo || !name.starts_with('.'))) {
            names.push_back(std::move(name));
        }
    }
    std::ranges::sort(names);
    return names;
}

} // namespace

OpenFileDialog::OpenFileDialog(const OpenPanelSettings& settings, QWidget* parent)
    : QFileDialog(parent)
    , settings_(settings) {
    setUpFileDialog(*this, settings.places);
    setOption(QFileDialog::ReadOnly);
    setWindowTitle(QStringLiteral("Open"));
    setAcceptMode(QFileDialog::AcceptOpen);
    setFileMode(settings.allowsMultipleSelection ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
    setFilter(filterFor(settings));

    nameField_ = findChild<QLineEdit*>();
    list_ = folderViewsOf(*this).front();
    openButton_ = findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open);
    // All files are shown, so there is nothing to choose from. Qt can set this label's text but not hide it,
    // so these two go by the names that Qt gives them.
    for (const auto* name : {"fileTypeLabel", "fileTypeCombo"}) {
        if (auto* const choice = findChild<QWidget*>(QLatin1String(name))) {
            choice->hide();
        }
    }
    addUnreadableNames();

    QObject::connect(nameField_, &QLineEdit::textChanged, this, [this] { updateOpenButton(); });
    QObject::connect(
        list_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] { mirrorSelection(); });
    if (auto* model = qobject_cast<QFileSystemModel*>(list_->model())) {
        QObject::connect(model, &QFileSystemModel::rootPathChanged, this, [this](const QString& folder) {
            enterFolder(folder);
        });
    }
    openButton_->installEventFilter(this);
    if (settings.folder) {
        setDirectory(qtPath(*settings.folder));
    }
    enterFolder(directory().absolutePath());
}

void OpenFileDialog::addUnreadableNames() {
    auto* grid = qobject_cast<QGridLayout*>(layout());
    unreadableLabel_ = &makeChild<QLabel>(QStringLiteral("Names that are not UTF-8:"), this);
    unreadableNames_ = &makeChild<QComboBox>(this);
    unreadableNames_->setObjectName(QStringLiteral("unreadableNames"));
    unreadableNames_->setItemDelegate(&makeChild<VisibleTextDelegate>(unreadableNames_));
    unreadableNames_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    unreadableLabel_->setBuddy(unreadableNames_);
    const int row = grid->rowCount();
    grid->addWidget(unreadableLabel_, row, 0);
    grid->addWidget(unreadableNames_, row, 1);
    QObject::connect(unreadableNames_, &QComboBox::activated, this, [this] {
        list_->clearSelection();
        nameField_->clear();
        updateOpenButton();
    });
}

void OpenFileDialog::listUnreadableNames(const QString& folder) {
    unreadableNames_->clear();
    const auto url = URLOfItemAtPath(folder);
    const auto names =
        url ? unreadableNamesIn(url->path(), settings_.showsHiddenFiles) : std::vector<std::string>{};
    unreadableNames_->addItem(QStringLiteral("%1 in this folder").arg(names.size()), QByteArray());
    for (const std::string& name : names) {
        unreadableNames_->addItem(
            visibleText(QString::fromStdString(shownText(name))), QByteArray::fromStdString(name));
    }
    unreadableLabel_->setVisible(!names.empty());
    unreadableNames_->setVisible(!names.empty());
}

void OpenFileDialog::enterFolder(const QString& folder) {
    // A name left over from the former folder would now mean another item.
    nameField_->clear();
    mirrored_.clear();
    listUnreadableNames(folder);
    updateOpenButton();
}

QStringList OpenFileDialog::selectedPaths() const {
    QStringList paths;
    for (const QModelIndex& index : list_->selectionModel()->selectedRows()) {
        if (index.parent() == list_->rootIndex()) {
            paths.append(index.data(QFileSystemModel::FilePathRole).toString());
        }
    }
    return paths;
}

void OpenFileDialog::mirrorSelection() {
    // While the user types, Qt selects what the text means; that is not to change the text.
    if (nameField_->hasFocus() && nameField_->text() != mirrored_) {
        updateOpenButton();
        return;
    }
    const QStringList paths = selectedPaths();
    QStringList names;
    for (const QString& path : paths) {
        const QString name = path.mid(path.lastIndexOf(u'/') + 1);
        names.append(paths.size() == 1 ? name : u'"' + name + u'"');
    }
    {
        // Qt would select what it takes the text to mean.
        const QSignalBlocker blocker(nameField_);
        nameField_->setText(names.join(u' '));
    }
    // The field may not take every character as it is.
    mirrored_ = nameField_->text();
    if (!paths.isEmpty()) {
        unreadableNames_->setCurrentIndex(0);
    }
    updateOpenButton();
}

void OpenFileDialog::updateOpenButton() {
    const bool hasChoice =
        !nameField_->text().isEmpty() || unreadableNames_->currentIndex() > 0 || !selectedPaths().empty();
    openButton_->setEnabled(hasChoice);
}

bool OpenFileDialog::eventFilter(QObject* watched, QEvent* event) {
    // Qt disables its button for names that it would not open; here such names get an explanation.
    if (watched == openButton_ && event->type() == QEvent::EnabledChange) {
        updateOpenButton();
    }
    return QFileDialog::eventFilter(watched, event);
}

QStringList OpenFileDialog::typedPaths() const {
    const QString text = nameField_->text();
    const QString folder = directory().absolutePath();
    const QString whole = pathOfFieldText(text, folder);
    if (!settings_.allowsMultipleSelection || !text.contains(u'"') || URLOfItemAtPath(whole)) {
        return {whole};
    }
    QStringList paths;
    const QStringList pieces = text.split(u'"');
    for (qsizetype i = 1; i < pieces.size(); i += 2) {
        paths.append(pathOfFieldText(pieces.at(i), folder));
    }
    return paths;
}

void OpenFileDialog::accept() {
    std::vector<URL> items;
    const QByteArray unreadable = unreadableNames_->currentData().toByteArray();
    const bool listDecides = nameField_->text().isEmpty() || nameField_->text() == mirrored_;
    if (nameField_->text().isEmpty() && !unreadable.isEmpty()) {
        if (const auto folder = URLOfItemAtPath(directory().absolutePath())) {
            choose({URL::fileURLWithPath(absolutePath(unreadable.toStdString(), folder->path()))});
        }
        return;
    }
    for (const QString& path : listDecides ? selectedPaths() : typedPaths()) {
        if (path.isEmpty()) {
            continue;
        }
        const auto item = URLOfItemAtPath(path);
        if (!item) {
            complainAboutAbsence(path);
            return;
        }
        items.push_back(*item);
    }
    choose(items);
}

void OpenFileDialog::choose(const std::vector<URL>& items) {
    if (items.empty()) {
        return;
    }
    if (!settings_.canChooseDirectories) {
        const auto folder = std::ranges::find_if(items, [](const URL& item) { return isFolder(item); });
        if (folder != items.end()) {
            setDirectory(qtPath(*folder));
            return;
        }
    }
    chosen_.clear();
    for (const URL& item : items) {
        chosen_.push_back(settings_.resolvesLinks ? followed(item) : item);
    }
    // Not Qt's own acceptance, which would decide all this again in its way.
    done(QDialog::Accepted);
}

void OpenFileDialog::complainAboutAbsence(const QString& path) {
    const QString name = path.mid(path.lastIndexOf(u'/') + 1);
    const Alert alert{
        QStringLiteral("%1 was not found.").arg(u'“' + (name.isEmpty() ? path : name) + u'”').toStdString(),
        "Check the name, or choose an item from the list.",
        AlertStyle::warning,
        {"OK"}};
    AlertBox& box = makeChild<AlertBox>(alert, this);
    box.setAttribute(Qt::WA_DeleteOnClose);
    box.open();
}

} // namespace tolvane::platform
