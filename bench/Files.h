/// Local files for benchmarks.
#pragma once

#include "platform/values/URL.h"

#include <cstddef>
#include <string>
#include <vector>

namespace tolvane::bench {

/// The folder in TOLVANE_BENCH_FILES, otherwise one that has thousands of files on most systems.
std::string folderOfFiles();

/// At most so many items of the tree below a folder.
std::vector<platform::URL> filesBelow(const std::string& folder, std::size_t most);

} // namespace tolvane::bench
