#pragma once

#include <algorithm>
#include <cstddef>
#include <expat.h>

namespace tolvane::platform {

/// How many bytes of its input are before what the parser is at; 0 where it does not know.
inline std::size_t expatOffset(XML_Parser parser) {
    // Newer versions of expat deprecate the call in favour of one that Debian 12's does not have. Both count
    // in 64 bits where a long has them.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    return static_cast<std::size_t>(std::max<XML_Index>(XML_GetCurrentByteIndex(parser), 0));
#pragma GCC diagnostic pop
}

} // namespace tolvane::platform
