#include "platform/qt/panels/FileDialogSetup.h"

#include "platform/qt/application/MakeChild.h"
#include "platform/qt/application/WindowPlacement.h"
#include "platform/qt/panels/RawPath.h"
#include "platform/qt/text/VisibleText.h"
#include "platform/values/Utf8.h"

#include <QAbstractItemView>
#include <QDir>
#include <QFileDialog>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QListView>
#include <QScreen>
#include <QShortcut>
#include <QSplitter>
#include <QTreeView>
#include <QUrl>

#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

namespace tolvane::platform {

namespace {

/// Icons and types by the kind of item. Qt's own open listed files to see their contents.
class IconsByKind final : public QFileIconProvider {
public:
    QIcon icon(IconType type) const override { return QFileIconProvider::icon(type); }
    QIcon icon(const QFileInfo& item) const override {
        return QFileIconProvider::icon(item.isDir() ? IconType::Folder : IconType::File);
    }
    QString type(const QFileInfo& item) const override {
        if (item.isSymLink()) {
            return QStringLiteral("Link");
        }
        if (item.isDir()) {
            return QStringLiteral("Folder");
        }
        return item.isFile() ? QStringLiteral("File") : QStringLiteral("Other");
    }
};

/// Keeps the icons for as long as the dialog, and longer than its model of files.
class IconsKeeper final : public QObject {
public:
    explicit IconsKeeper(QObject* parent) : QObject(parent) {}
    IconsByKind icons;
};

/// Qt's views would move what is dragged, rename what is clicked again, and delete.
void leaveItemsAlone(const QFileDialog& dialog) {
    for (QAbstractItemView* const view : folderViewsOf(dialog)) {
        view->setDragDropMode(QAbstractItemView::NoDragDrop);
        view->setDragEnabled(false);
        view->setAcceptDrops(false);
        view->viewport()->setAcceptDrops(false);
        view->setEditTriggers(QAbstractItemView::NoEditTriggers);
        // Its menu would rename and delete.
        view->setContextMenuPolicy(Qt::NoContextMenu);
    }
    for (QShortcut* const shortcut : dialog.findChildren<QShortcut*>()) {
        if (shortcut->key() == QKeySequence(Qt::Key_Delete)) {
            shortcut->setEnabled(false);
        }
    }
}

/// The computer as a whole comes last.
QList<QUrl> sidebarURLs(const std::vector<URL>& places) {
    QList<QUrl> urls;
    for (const URL& place : places) {
        if (isValidUtf8(place.path())) {
            urls.append(QUrl::fromLocalFile(qtPath(place)));
        }
    }
    urls.append(QUrl(QStringLiteral("file:")));
    return urls;
}

/// Qt makes room for the first place only. A long name gets a third of the dialog.
void makeRoomForPlaces(const QFileDialog& dialog) {
    auto& places = *dialog.findChild<QSplitter*>()->findChild<QListView*>();
    const int wanted = places.sizeHintForColumn(0) + 2 * places.frameWidth();
    places.setMinimumWidth(std::min(wanted, dialog.width() / 3));
}

/// Qt 6.8 lists nothing that the system lists after a name that is not UTF-8. An item asked for by its path
/// gets into Qt's list; one that is there already stays as it is.
void listWhatQtMissed(const QFileSystemModel& model, const QString& folder, bool hiddenToo) {
    const auto url = URLOfItemAtPath(folder);
    std::vector<std::string> names;
    bool isComplete = true;
    std::error_code failure;
    std::filesystem::directory_iterator entry(url ? url->path() : std::string(), failure);
    for (; !failure && entry != std::filesystem::directory_iterator(); entry.increment(failure)) {
        std::string name = entry->path().filename().native();
        if (!isValidUtf8(name)) {
            isComplete = false;
        } else if (hiddenToo || !name.starts_with('.')) {
            names.push_back(std::move(name));
        }
    }
    if (isComplete) {
        return;
    }
    for (const std::string& name : names) {
        static_cast<void>(model.index(QDir(folder).filePath(QString::fromStdString(name))));
    }
}

} // namespace

void setUpFileDialog(QFileDialog& dialog, const std::vector<URL>& places) {
    // First, since it makes the widgets for the rest.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setOption(QFileDialog::DontUseCustomDirectoryIcons);
    dialog.setOption(QFileDialog::DontResolveSymlinks);
    dialog.setItemDelegate(&makeChild<VisibleTextDelegate>(&dialog));
    dialog.setIconProvider(&makeChild<IconsKeeper>(&dialog).icons);
    leaveItemsAlone(dialog);
    if (!places.empty()) {
        dialog.setSidebarUrls(sidebarURLs(places));
    }
    const auto& model = *dialog.findChild<QFileSystemModel*>();
    QObject::connect(&model, &QFileSystemModel::directoryLoaded, &dialog, [&](const QString& folder) {
        listWhatQtMissed(model, folder, dialog.filter().testFlag(QDir::Hidden));
    });
    constexpr QSize usualSize(800, 480);
    dialog.resize(sizeWithin(usualSize, dialog.screen()->availableSize()));
    makeRoomForPlaces(dialog);
    // The name gets what the other columns leave.
    QHeaderView& header = *dialog.findChild<QTreeView*>()->header();
    header.setResizeContentsPrecision(0);
    header.setSectionResizeMode(QHeaderView::ResizeToContents);
    header.setSectionResizeMode(0, QHeaderView::Stretch);
}

std::vector<QAbstractItemView*> folderViewsOf(const QFileDialog& dialog) {
    // The other views list places and completions, each with a selection of its own.
    QAbstractItemView* const table = dialog.findChild<QTreeView*>();
    for (QAbstractItemView* const list : dialog.findChildren<QListView*>()) {
        if (list->selectionModel() == table->selectionModel()) {
            return {list, table};
        }
    }
    return {table};
}

} // namespace tolvane::platform
