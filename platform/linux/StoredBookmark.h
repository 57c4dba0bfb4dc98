// The bookmark that a file holds: as an alias file, as bare bookmark data, or, in files from before there
// were bookmarks, as an alias record in the resource fork that came along as an extended attribute.
//
// Only regular files are opened; a link is not followed, and a FIFO or a device never gets to know that
// anybody was there. Of a file no more is read than its header says the bookmark takes, and where the system
// allows it the date of last access stays as it was.
#pragma once

#include "platform/Error.h"
#include "platform/URL.h"
#include "platform/Value.h"

#include <cstdint>

namespace tolvane::platform {

/// Bookmarks that claim to be longer are not read; those with an icon take about a mebibyte. Showing one that
/// was made for the purpose can take 70 times its length.
inline constexpr std::uint64_t longestStoredBookmark = std::uint64_t{16} << 20U;

/// The bookmark in bare form, sound from its first to its last byte. Fails in NSCocoaErrorDomain, with a
/// sentence: 260 where there is no such file, 257 where it may not be read, 259 where what is there holds no
/// bookmark that can be read, 256 for anything else.
Result<Data> storedBookmark(const URL& url);

} // namespace tolvane::platform
