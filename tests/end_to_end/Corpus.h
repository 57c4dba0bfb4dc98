// Items of every kind that a file system has, made for the tests.
#pragma once

#include "tests/support/TemporaryFolder.h"

#include <string>
#include <vector>

namespace tolvane::tests {

/// Each of these adds items to the folder and answers their paths.
std::vector<std::string> addKinds(const TemporaryFolder& folder);
std::vector<std::string> addPermissions(const TemporaryFolder& folder);
std::vector<std::string> addContents(const TemporaryFolder& folder);
std::vector<std::string> addDates(const TemporaryFolder& folder);
std::vector<std::string> addOddNames(const TemporaryFolder& folder);

/// Attributes of many sizes and names; nothing when the file system takes none from users. `largest` is the
/// size in bytes of the largest value, and so are all values together at most by and by.
std::vector<std::string> addAttributes(const TemporaryFolder& folder, std::size_t largest);

/// Names that programs stumble over, as bytes and without a slash. In several encodings.
std::vector<std::string> oddNames();

} // namespace tolvane::tests
