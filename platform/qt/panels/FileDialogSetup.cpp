#include "platform/qt/panels/FileDialogSetup.h"

#include "platform/qt/application/MakeChild.h"
#include "platform/qt/application/WindowPlacement.h"
#include "platform/qt/panels/RawPath.h"
#include "platform/qt/text/VisibleText.h"
#include "platform/values/Utf8.h"

#include <QAbstractItemView>
#include <QFileDialog>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QHeaderView>
#include <QListView>
#include <QScreen>
#include <QShortcut>
#include <QTreeView>
#include <QUrl>

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
    constexpr QSize usualSize(800, 480);
    dialog.resize(sizeWithin(usualSize, dialog.screen()->availableSize()));
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
