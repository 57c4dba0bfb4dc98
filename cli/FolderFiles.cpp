#include "cli/FolderFiles.h"

#include <algorithm>
#include <utility>

namespace tolvane::cli {

using platform::ItemKind;

FolderFiles::FolderFiles(
    std::span<const std::string> names,
    Settings settings,
    const platform::FileContents& contents,
    std::function<platform::Result<std::string>()> currentFolder)
    : rest_(names)
    , settings_(settings)
    , contents_(contents)
    , currentFolder_(std::move(currentFolder)) {}

platform::Result<std::optional<std::string>> FolderFiles::next() {
    while (true) {
        if (pending_.empty()) {
            if (rest_.empty()) {
                return std::nullopt;
            }
            pending_.push_back(entryGiven(rest_.front()));
            rest_ = rest_.subspan(1);
        }
        const Entry entry = std::move(pending_.back());
        pending_.pop_back();
        auto entries = entry.isFolder ? entriesOf(entry) : std::nullopt;
        if (!entries) {
            return entry.name;
        }
        std::ranges::move(*entries, std::back_inserter(pending_));
    }
}

FolderFiles::Entry FolderFiles::entryGiven(const std::string& name) const {
    if (!settings_.recursive) {
        return {name, false, 0};
    }
    const auto url = urlOfName(name, currentFolder_());
    if (!url) {
        return {name, false, 0};
    }
    const auto look = contents_.lookAtTarget(url->path());
    return {name, look && look->kind == ItemKind::folder, look ? look->volume : 0};
}

/// In reverse order; nothing if the folder cannot be listed.
std::optional<std::vector<FolderFiles::Entry>> FolderFiles::entriesOf(const Entry& folder) const {
    const auto url = urlOfName(folder.name, currentFolder_());
    if (!url) {
        return std::nullopt;
    }
    std::vector<Entry> entries;
    const std::string start = folder.name.ends_with('/') ? folder.name : folder.name + "/";
    const auto visited =
        contents_.visitFolder(url->path(), [&](std::string_view name, const platform::ItemLook& item) {
            const bool isFolder =
                item.kind == ItemKind::folder && (settings_.otherVolumes || item.volume == folder.volume);
            if (isFolder || item.kind == ItemKind::regularFile) {
                entries.push_back({start + std::string(name), isFolder, folder.volume});
            }
            return true;
        });
    if (!visited) {
        return std::nullopt;
    }
    std::ranges::sort(entries, std::ranges::greater(), &Entry::name);
    return entries;
}

} // namespace tolvane::cli
