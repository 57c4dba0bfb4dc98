#pragma once

#include <optional>
#include <string_view>

namespace tolvane::containers {

/// Whether a path or URL beside a bookmark names another item than the bookmark's path. Absent where the two
/// cannot be compared: for URLs that are not of files, for file reference URLs and relative paths, and for
/// paths that differ past ASCII, since one name has several forms there.
///
/// A slash at the end, the host "localhost", the prefix "/System/Volumes/Data" and "/private" in front of
/// "/tmp",
/// "/var" and "/etc" make no difference.
std::optional<bool> namesAnotherItem(std::string_view path, std::string_view neighbour);

} // namespace tolvane::containers
