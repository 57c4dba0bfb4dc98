#pragma once

#include "platform/values/URL.h"

#include <functional>
#include <vector>

class QAbstractItemView;
class QFileDialog;

namespace tolvane::platform {

/// Returns the places that a new panel lists beside the folder.
using PlacesOfDesktop = std::function<std::vector<URL>()>;

inline std::vector<URL> noPlaces() {
    return {};
}

/// Prepares both panels: Qt's own dialog, not the desktop's, showing links as links and hidden characters
/// written out, and wide enough for its columns and places. Listed items are never opened, and cannot be
/// moved, renamed or deleted. Items beside a name that is not UTF-8 are listed. Places whose names are not
/// UTF-8 are left out.
void setUpFileDialog(QFileDialog& dialog, const std::vector<URL>& places = {});

/// The two views of the folder, a list and a table; they share one selection.
std::vector<QAbstractItemView*> folderViewsOf(const QFileDialog& dialog);

} // namespace tolvane::platform
