#pragma once

#include "platform/values/Error.h"
#include "platform/values/URL.h"
#include "platform/values/Value.h"

#include <cstdint>

/// The bookmark that a file holds: as an alias file, as bare bookmark data, or, in files from before there
/// were bookmarks, as an alias record in the resource fork, which is an extended attribute.
///
/// Only regular files are opened: links are not followed, FIFOs and devices never opened. No more of a file
/// is read than its header says the bookmark takes, and where the system allows it the access date is kept.
namespace tolvane::platform {

/// Bookmarks that claim to be longer are not read; those with an icon take about a mebibyte. Showing one that
/// was made for the purpose can take 70 times its length.
inline constexpr std::uint64_t longestStoredBookmark = std::uint64_t{16} << 20U;

/// The bookmark in bare form, readable from its first to its last byte. Fails in NSCocoaErrorDomain, with a
/// sentence: 260 where there is no such file, 257 where it may not be read, 259 where it holds no readable
/// bookmark, 256 for anything else.
Result<Data> storedBookmark(const URL& url);

} // namespace tolvane::platform
