#include "platform/qt/windows/DroppedFiles.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace tolvane::platform {

std::vector<URL> fileURLsInList(std::string_view list) {
    std::vector<URL> urls;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find_first_of("\r\n"), list.size());
        const std::string_view line = list.substr(0, end);
        list.remove_prefix(std::min(end + 1, list.size()));
        if (line.empty() || line.starts_with('#')) {
            continue;
        }
        if (auto url = localFileURL(line)) {
            urls.push_back(*std::move(url));
        }
    }
    return urls;
}

} // namespace tolvane::platform
