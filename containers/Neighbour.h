#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tolvane::containers {

/// One form for all that a name can be written in past ASCII; nothing for what is not text.
using ComposedText = std::function<std::optional<std::string>(std::string_view text)>;

/// Whether a path or URL beside a bookmark names another item than the bookmark's path. Absent where the two
/// cannot be compared: for URLs that are not of files, for file reference URLs and relative paths, and for
/// paths that differ past ASCII and have no composed form.
///
/// A slash at the end, the host "localhost", the prefix "/System/Volumes/Data" and "/private" in front of
/// "/tmp", "/var" and "/etc" make no difference.
std::optional<bool> namesAnotherItem(
    std::string_view path, std::string_view neighbour, const ComposedText& composed = {});

} // namespace tolvane::containers
