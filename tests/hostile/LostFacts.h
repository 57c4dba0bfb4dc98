// The texts that a report still has when a source of its facts fails: each function removes those that the
// failure costs, and no others.
#pragma once

#include "tests/oracle/ReportText.h"

namespace tolvane::tests {

inline constexpr const char* noBookmarkText = "(couldn't get bookmark)";

/// The extended attributes cannot be listed or measured: the file manager is not asked either.
Fields withoutAttributeSizes(Fields fields);

/// The file manager's dictionary fails.
Fields withoutDictionary(Fields fields);

/// No bookmark is made, so none is resolved.
Fields withoutBookmark(Fields fields);

/// The bookmark just made leads nowhere.
Fields withoutResolution(Fields fields);

/// Compares the expected fields one by one, so that the message is short.
void expectFields(const Fields& seen, const Fields& expected);

} // namespace tolvane::tests
