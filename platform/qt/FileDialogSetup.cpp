#include "platform/qt/FileDialogSetup.h"

#include "platform/qt/MakeChild.h"
#include "platform/qt/VisibleText.h"

#include <QFileDialog>
#include <QHeaderView>
#include <QTreeView>

namespace tolvane::platform {

void setUpFileDialog(QFileDialog& dialog) {
    // First of all: it makes the widgets that the rest is about.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setOption(QFileDialog::DontUseCustomDirectoryIcons);
    dialog.setOption(QFileDialog::DontResolveSymlinks);
    dialog.setItemDelegate(&makeChild<VisibleTextDelegate>(&dialog));
    dialog.resize(800, 480);
    // The name gets what the other columns leave.
    QHeaderView& header = *dialog.findChild<QTreeView*>(QStringLiteral("treeView"))->header();
    header.setResizeContentsPrecision(0);
    header.setSectionResizeMode(QHeaderView::ResizeToContents);
    header.setSectionResizeMode(0, QHeaderView::Stretch);
}

} // namespace tolvane::platform
