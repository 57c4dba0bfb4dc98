#pragma once

#include <vector>

class QAbstractItemView;
class QFileDialog;

namespace tolvane::platform {

/// Prepares what the panels have in common: Qt's own dialog, never the desktop's, showing links as themselves
/// and names with hidden characters written out, and wide enough for its columns. Listed items are never
/// opened, and cannot be moved, renamed or deleted.
void setUpFileDialog(QFileDialog& dialog);

/// The two views of the folder, a list and a table; they share one selection.
std::vector<QAbstractItemView*> folderViewsOf(const QFileDialog& dialog);

} // namespace tolvane::platform
