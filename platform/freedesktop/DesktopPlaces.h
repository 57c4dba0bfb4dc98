/// The places that the desktop's own file panels list beside the folder shown.
#pragma once

#include "platform/values/URL.h"

#include <string>
#include <string_view>
#include <vector>

namespace tolvane::platform {

/// The local items in a list of bookmarks as GTK keeps it: a URI a line, followed by a name at will. Others
/// are left out, and so are lines that cannot be parsed.
std::vector<URL> bookmarkedPlaces(std::string_view list);

/// Those of the mount points that stand for a disk of the user's: below the folders where desktops and
/// administrators mount them. Neither they nor what is mounted there is looked at.
std::vector<URL> placesOfVolumes(const std::vector<std::string>& mountPoints);

/// Home, the folders for documents, downloads and the like that exist, the bookmarks of the user's file
/// manager, then the volumes; each once.
std::vector<URL> desktopPlaces(const std::vector<std::string>& mountPoints);

} // namespace tolvane::platform
