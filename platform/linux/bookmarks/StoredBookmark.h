#pragma once

#include "platform/values/Error.h"
#include "platform/values/URL.h"
#include "platform/values/Value.h"

#include <cstdint>

/// The bookmark in a file: an alias file, bare bookmark data, or an alias record from before there were
/// bookmarks, which is the whole file or lies in the resource fork, an extended attribute.
///
/// Only regular files are opened, without following links. No more is read than the header states, and the
/// access date is kept where the system allows it.
namespace tolvane::platform {

/// Longer bookmarks are not read; those with an icon take about a mebibyte. Showing a crafted one can take 70
/// times its length.
inline constexpr std::uint64_t longestStoredBookmark = std::uint64_t{16} << 20U;

/// The complete bookmark in bare form. Fails in NSCocoaErrorDomain, with a sentence: 260 if there is no file,
/// 257 if it may not be read, 259 if it has no readable bookmark, 256 otherwise.
Result<Data> storedBookmark(const URL& url);

} // namespace tolvane::platform
