// The texts that a report still has when a source of its facts fails: each function removes those that the
// failure costs, and no others.
#pragma once

#include "tests/oracle/ReportText.h"

namespace tolvane::tests {

inline constexpr const char* noBookmarkText = "(couldn't get bookmark)";

/// No resource values: all sizes are 0, and the file manager is not asked.
Fields withoutResourceSizes(Fields fields);

/// The extended attributes cannot be listed or measured: the file manager is not asked either.
Fields withoutAttributeSizes(Fields fields);

/// The file manager's dictionary fails.
Fields withoutDictionary(Fields fields);

/// The type identifier is missing; so is the whole text if the kind of the item is unknown too.
Fields withoutType(Fields fields);

/// No bookmark is made, so none is resolved.
Fields withoutBookmark(Fields fields);

/// The bookmark just made leads nowhere.
Fields withoutResolution(Fields fields);

/// Compares the expected fields one by one, so that the message is short.
void expectFields(const Fields& seen, const Fields& expected);

} // namespace tolvane::tests
