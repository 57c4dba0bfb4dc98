#include "platform/linux/volumes/BlockDevice.h"

#include "platform/values/HexDigits.h"

#include <filesystem>
#include <fstream>
#include <set>
#include <system_error>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace tolvane::platform {

namespace {

namespace fs = std::filesystem;

// Devices can be built from other devices. Beyond this depth the tree must contain a cycle.
constexpr int deepestStack = 8;

std::string wordIn(const fs::path& file) {
    std::ifstream stream(file);
    std::string word;
    stream >> word;
    return word;
}

// A partition is in its disk's folder and has no such files of its own.
std::string factOfDisk(const fs::path& device, const char* name) {
    const auto word = wordIn(device / name);
    return word.empty() ? wordIn(device.parent_path() / name) : word;
}

bool isAttachedByCable(std::string_view path) {
    return path.contains("/usb") || path.contains("/fw") || path.contains("/thunderbolt");
}

void add(BlockDevice& whole, const BlockDevice& part) {
    whole.isInternal = whole.isInternal || part.isInternal;
    whole.isExternal = whole.isExternal || part.isExternal;
    whole.isRemovable = whole.isRemovable || part.isRemovable;
    whole.isDiskImage = whole.isDiskImage || part.isDiskImage;
}

BlockDevice deviceAt(const fs::path& path, int depth) {
    BlockDevice answer;
    std::error_code fault;
    const fs::path device = fs::canonical(path, fault);
    if (fault || depth > deepestStack) {
        return answer;
    }
    const std::string text = device.string();
    if (text.contains("/block/loop")) {
        answer.isDiskImage = true;
        return answer;
    }
    if (text.contains("/virtual/")) {
        for (fs::directory_iterator part(device / "slaves", fault);
             !fault && part != fs::directory_iterator(); part.increment(fault)) {
            add(answer, deviceAt(part->path(), depth + 1));
        }
        // Unplugging a single cable removes all of it.
        answer.isInternal = answer.isInternal && !answer.isExternal;
        return answer;
    }
    answer.isExternal = isAttachedByCable(text);
    answer.isInternal = !answer.isExternal;
    answer.isRemovable = factOfDisk(device, "removable") == "1" || factOfDisk(device, "device/type") == "SD";
    return answer;
}

} // namespace

BlockDevice blockDeviceInFolder(const std::string& folder, std::uint64_t device) {
    return deviceAt(
        fs::path(folder) / (std::to_string(major(device)) + ":" + std::to_string(minor(device))), 0);
}

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
