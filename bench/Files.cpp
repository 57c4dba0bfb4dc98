#include "bench/Files.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace tolvane::bench {

std::string folderOfFiles() {
    const char* const chosen = std::getenv("TOLVANE_BENCH_FILES");
    return chosen != nullptr && *chosen != '\0' ? chosen : "/usr/share";
}

std::vector<platform::URL> filesBelow(const std::string& folder, std::size_t most) {
    std::vector<platform::URL> urls;
    std::error_code fault;
    using Walk = std::filesystem::recursive_directory_iterator;
    for (Walk item(folder, std::filesystem::directory_options::skip_permission_denied, fault);
         !fault && item != Walk() && urls.size() < most; item.increment(fault)) {
        urls.push_back(platform::URL::fileURLWithPath(item->path().string()));
    }
    return urls;
}

} // namespace tolvane::bench
