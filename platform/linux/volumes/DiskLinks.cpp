#include "platform/linux/volumes/DiskLinks.h"

#include "platform/values/HexDigits.h"

#include <filesystem>
#include <set>
#include <system_error>
#include <sys/stat.h>

namespace tolvane::platform {

std::map<std::uint64_t, std::string> diskLinksIn(const std::string& folder) {
    std::set<std::filesystem::path> paths;
    std::error_code fault;
    // The iterator is incremented by hand, since a range-based loop throws on errors.
    for (std::filesystem::directory_iterator entry(folder, fault);
         !fault && entry != std::filesystem::directory_iterator(); entry.increment(fault)) {
        paths.insert(entry->path());
    }
    std::map<std::uint64_t, std::string> links;
    for (const std::filesystem::path& path : paths) {
        struct stat device{};
        if (stat(path.c_str(), &device) == 0 && device.st_rdev != 0) {
            links.try_emplace(device.st_rdev, undoneDiskLinkEscapes(path.filename().native()));
        }
    }
    return links;
}

std::string undoneDiskLinkEscapes(std::string_view name) {
    constexpr std::size_t escapeLength = 4;
    std::string bytes;
    while (!name.empty()) {
        const bool mayBeEscape = name.starts_with("\\x") && name.size() >= escapeLength;
        const int high = mayBeEscape ? valueOfHexDigit(name[2]) : -1;
        const int low = mayBeEscape ? valueOfHexDigit(name[3]) : -1;
        const bool isEscape = high >= 0 && low >= 0;
        bytes += isEscape ? static_cast<char>(high * 16 + low) : name.front();
        name.remove_prefix(isEscape ? escapeLength : 1);
    }
    return bytes;
}

} // namespace tolvane::platform
