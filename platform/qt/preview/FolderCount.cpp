#include "platform/qt/preview/FolderCount.h"

#include <utility>
#include <vector>

namespace tolvane::platform {

FileAnswer<void> countFolder(
    const FileContents& files,
    const std::string& path,
    std::uint64_t volume,
    const std::function<bool(const FolderCount&)>& report,
    std::uint64_t limit) {
    constexpr std::uint64_t itemsBetweenReports = 5000;
    FolderCount count;
    bool isWanted = true;
    bool isBeyondLimit = false;
    std::vector<std::string> waiting;
    std::string folder = path;
    bool isFirst = true;
    const auto visit = [&](std::string_view name, const ItemLook& item) {
        if (count.items == limit) {
            isBeyondLimit = true;
            return false;
        }
        ++count.items;
        if (isFirst) {
            ++count.entries;
        }
        if (item.kind == ItemKind::folder) {
            ++count.folders;
            if (item.volume == volume) {
                waiting.push_back(folder + '/' + std::string(name));
            } else {
                ++count.otherVolumes;
            }
        } else if (item.kind == ItemKind::regularFile) {
            count.size += item.size;
        }
        isWanted = count.items % itemsBetweenReports != 0 || report(count);
        return isWanted;
    };
    while (true) {
        // A link that has replaced a subfolder is not followed: no slash comes after it.
        const auto visited = files.visitFolder(isFirst ? folder + '/' : folder, visit);
        if (!visited && isFirst) {
            return visited;
        }
        if (!visited) {
            ++count.unreadableFolders;
        }
        if (!isWanted) {
            return {};
        }
        isFirst = false;
        if (isBeyondLimit || waiting.empty()) {
            break;
        }
        folder = std::move(waiting.back());
        waiting.pop_back();
    }
    count.isComplete = !isBeyondLimit;
    report(count);
    return {};
}

} // namespace tolvane::platform
