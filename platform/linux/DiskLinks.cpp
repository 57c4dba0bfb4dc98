#include "platform/linux/DiskLinks.h"

#include <charconv>
#include <filesystem>
#include <set>
#include <system_error>
#include <sys/stat.h>

namespace tolvane::platform {

namespace {

std::set<std::string> entriesOf(const std::string& folder) {
    std::set<std::string> names;
    std::error_code fault;
    // The iterator is moved by hand, since the loop form throws what it meets.
    for (std::filesystem::directory_iterator entry(folder, fault);
         !fault && entry != std::filesystem::directory_iterator(); entry.increment(fault)) {
        names.insert(entry->path().filename().string());
    }
    return names;
}

} // namespace

std::map<std::uint64_t, std::string> diskLinksIn(const std::string& folder) {
    std::map<std::uint64_t, std::string> links;
    for (const std::string& name : entriesOf(folder)) {
        struct stat device{};
        std::string path = folder;
        path.append("/").append(name);
        if (stat(path.c_str(), &device) == 0 && device.st_rdev != 0) {
            links.try_emplace(device.st_rdev, undoneDiskLinkEscapes(name));
        }
    }
    return links;
}

std::string undoneDiskLinkEscapes(std::string_view name) {
    std::string bytes;
    bytes.reserve(name.size());
    while (!name.empty()) {
        unsigned value = 0;
        if (name.size() >= 4 && name.starts_with("\\x")) {
            const auto [stop, fault] = std::from_chars(name.data() + 2, name.data() + 4, value, 16);
            if (fault == std::errc() && stop == name.data() + 4) {
                bytes += static_cast<char>(value);
                name.remove_prefix(4);
                continue;
            }
        }
        bytes += name.front();
        name.remove_prefix(1);
    }
    return bytes;
}

} // namespace tolvane::platform
