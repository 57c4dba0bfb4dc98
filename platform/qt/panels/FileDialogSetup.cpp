#include "platform/qt/panels/FileDialogSetup.h"

#include "platform/qt/MakeChild.h"
#include "platform/qt/text/VisibleText.h"

#include <QAbstractItemView>
#include <QAction>
#include <QFileDialog>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QHeaderView>
#include <QRegularExpression>
#include <QShortcut>
#include <QTreeView>

namespace tolvane::platform {

namespace {

/// Tells items by what they are. The toolkit's own icons and types come from what is in the files, which it
/// opens for that while they are merely listed.
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

/// The toolkit's lists would move what is dragged, rename what is pressed again, and delete.
void leaveItemsAlone(QFileDialog& dialog) {
    for (auto* view :
         dialog.findChildren<QAbstractItemView*>(QRegularExpression(QStringLiteral("^(list|tree)View$")))) {
        view->setDragDropMode(QAbstractItemView::NoDragDrop);
        view->setDragEnabled(false);
        view->setAcceptDrops(false);
        view->viewport()->setAcceptDrops(false);
        view->setEditTriggers(QAbstractItemView::NoEditTriggers);
        view->setContextMenuPolicy(Qt::NoContextMenu);
    }
    for (QShortcut* const shortcut : dialog.findChildren<QShortcut*>()) {
        if (shortcut->key() == QKeySequence(Qt::Key_Delete)) {
            shortcut->setEnabled(false);
        }
    }
    for (const char* const name : {"qt_rename_action", "qt_delete_action"}) {
        if (auto* const action = dialog.findChild<QAction*>(QLatin1String(name))) {
            action->setEnabled(false);
        }
    }
}

} // namespace

void setUpFileDialog(QFileDialog& dialog) {
    // First of all: it makes the widgets that the rest is about.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setOption(QFileDialog::DontUseCustomDirectoryIcons);
    dialog.setOption(QFileDialog::DontResolveSymlinks);
    dialog.setItemDelegate(&makeChild<VisibleTextDelegate>(&dialog));
    dialog.setIconProvider(&makeChild<IconsKeeper>(&dialog).icons);
    leaveItemsAlone(dialog);
    dialog.resize(800, 480);
    // The name gets what the other columns leave.
    QHeaderView& header = *dialog.findChild<QTreeView*>(QStringLiteral("treeView"))->header();
    header.setResizeContentsPrecision(0);
    header.setSectionResizeMode(QHeaderView::ResizeToContents);
    header.setSectionResizeMode(0, QHeaderView::Stretch);
}

} // namespace tolvane::platform
