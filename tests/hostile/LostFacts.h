// What a details window still shows when one of its sources fails: each of these takes away from the texts of
// an undisturbed window what that failure takes away, and nothing else.
#pragma once

#include "tests/end_to_end/ReportText.h"

namespace tolvane::tests {

inline constexpr const char* noBookmarkText = "(couldn't get bookmark)";

/// No resource values: all sizes are 0, and nothing is asked of the file manager.
Fields withoutResourceSizes(Fields fields);

/// The extended attributes cannot be listed, or one not be measured: the file manager is not asked either.
Fields withoutAttributeSizes(Fields fields);

/// The file manager answers nothing.
Fields withoutDictionary(Fields fields);

/// The type cannot be told; no text at all where the kind of the item is not known either.
Fields withoutType(Fields fields);

/// No bookmark is made, and so none is resolved.
Fields withoutBookmark(Fields fields);

/// The bookmark just made leads nowhere.
Fields withoutResolution(Fields fields);

} // namespace tolvane::tests
