// Files of this machine for benchmarks to look at.
#pragma once

#include "platform/URL.h"

#include <cstddef>
#include <string>
#include <vector>

namespace tolvane::bench {

/// The folder that TOLVANE_BENCH_FILES names, or else one that holds thousands of files on most systems.
std::string folderOfFiles();

/// So many of the items in the tree below a folder, or as many as there are.
std::vector<platform::URL> filesBelow(const std::string& folder, std::size_t most);

} // namespace tolvane::bench
