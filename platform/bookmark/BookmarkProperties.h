#pragma once

#include "platform/bookmark/BookmarkStructure.h"

namespace tolvane::platform {

/// Everything that a bookmark tells about its target and the target's volume, under the names by which the
/// platform tells it. Nothing is looked up anywhere, and nothing is made up: what the bookmark does not tell
/// is no entry, and of a set of flags only those are that the set says are known.
///
/// Properties that were stored under a name of their own come under that name.
Dictionary bookmarkProperties(const BookmarkStructure& structure);

} // namespace tolvane::platform
