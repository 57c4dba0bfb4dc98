#pragma once

#include <vector>

class QAbstractItemView;
class QFileDialog;

namespace tolvane::platform {

/// Prepares both panels: Qt's own dialog, not the desktop's, showing links as links and hidden characters
/// written out. Listed items are never opened, and cannot be moved, renamed or deleted.
void setUpFileDialog(QFileDialog& dialog);

/// The two views of the folder, a list and a table; they share one selection.
std::vector<QAbstractItemView*> folderViewsOf(const QFileDialog& dialog);

} // namespace tolvane::platform
