#pragma once

class QFileDialog;

namespace tolvane::platform {

/// What the panels have in common: the toolkit's own dialog, never the desktop's, showing links as themselves
/// and names with hidden characters written out, and wide enough for its columns. Nothing that is listed is
/// opened, and nothing can be moved, renamed or deleted.
void setUpFileDialog(QFileDialog& dialog);

} // namespace tolvane::platform
