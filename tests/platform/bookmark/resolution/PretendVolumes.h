// Volumes that exist in memory only, with whatever numbers and dates a test wants, counted as they are asked.
#pragma once

#include "platform/bookmark/resolution/MountedVolumes.h"
#include "platform/values/Error.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tolvane::tests {

class PretendVolumes final : public platform::MountedVolumes {
public:
    struct Facts {
        platform::MountedVolume volume;
        std::optional<std::string> uuid;
        std::optional<std::int64_t> capacity;
        std::optional<platform::Date> creationDate;
    };

    /// Mounts a volume, with a folder for its topmost one. Its id is its place in the list, from 1.
    Facts& mount(const std::string& mountPoint, std::uint64_t device) {
        Facts facts;
        facts.volume.id = mounted_.size() + 1;
        facts.volume.device = device;
        facts.volume.mountPoint = mountPoint;
        mounted_.push_back(facts);
        addFolder(mountPoint, 2);
        return mounted_.back();
    }

    /// Adds an item, on the volume whose mount point is the nearest above it.
    void add(const std::string& path, std::uint64_t number, platform::ItemKind kind, double created) {
        items_[path] = {volumeOf(path), number, kind, platform::Date(created)};
    }
    void addFile(const std::string& path, std::uint64_t number, double created) {
        add(path, number, platform::ItemKind::regularFile, created);
    }
    void addFolder(const std::string& path, std::uint64_t number) {
        add(path, number, platform::ItemKind::folder, 0);
    }

    /// Moves an item with everything below it.
    void move(const std::string& from, const std::string& to) {
        std::map<std::string, platform::MountedItem> moved;
        for (auto item = items_.begin(); item != items_.end();) {
            if (item->first == from || item->first.starts_with(from + "/")) {
                moved.emplace(to + item->first.substr(from.size()), item->second);
                item = items_.erase(item);
            } else {
                ++item;
            }
        }
        items_.merge(moved);
    }

    void remove(const std::string& path) { items_.erase(path); }
    platform::MountedItem& item(const std::string& path) { return items_.at(path); }

    std::set<std::string> denied; ///< Folders that cannot be read, nor anything in them looked at.
    mutable std::size_t entriesGiven = 0;
    mutable std::vector<std::string> foldersRead;
    mutable std::vector<std::string> askedForUUID;

    const std::vector<platform::MountedVolume>& volumes() const override {
        volumes_.clear();
        for (const Facts& facts : mounted_) {
            volumes_.push_back(facts.volume);
        }
        return volumes_;
    }

    std::optional<std::string> uuid(const platform::MountedVolume& volume) const override {
        askedForUUID.push_back(volume.mountPoint);
        return mounted_.at(volume.id - 1).uuid;
    }

    std::optional<std::int64_t> capacity(const platform::MountedVolume& volume) const override {
        return mounted_.at(volume.id - 1).capacity;
    }

    std::optional<platform::Date> creationDate(const platform::MountedVolume& volume) const override {
        return mounted_.at(volume.id - 1).creationDate;
    }

    platform::Result<platform::MountedItem> itemAt(const std::string& path) const override {
        for (const std::string& folder : denied) {
            if (path.starts_with(folder + "/")) {
                return std::unexpected(
                    platform::cocoaError(platform::NSFileReadNoPermissionError, "Denied: " + path));
            }
        }
        const auto found = items_.find(path);
        if (found == items_.end()) {
            return std::unexpected(
                platform::cocoaError(platform::NSFileReadNoSuchFileError, "Nothing here."));
        }
        return found->second;
    }

    platform::Result<platform::FolderEntries> entriesOf(
        const std::string& folder, std::uint64_t fileNumber, std::size_t most) const override {
        const std::scoped_lock lock(*counting_);
        foldersRead.push_back(folder);
        if (denied.contains(folder)) {
            return std::unexpected(
                platform::cocoaError(platform::NSFileReadNoPermissionError, "Denied: " + folder));
        }
        platform::FolderEntries found;
        const std::string prefix = folder == "/" ? folder : folder + "/";
        for (auto item = items_.lower_bound(prefix);
             item != items_.end() && item->first.starts_with(prefix) && found.count < most; ++item) {
            const std::string name = item->first.substr(prefix.size());
            if (name.empty() || name.contains('/')) {
                continue;
            }
            const bool isFolder = item->second.kind == platform::ItemKind::folder;
            if (isFolder || item->second.fileNumber == fileNumber) {
                found.entries.push_back({name, item->second.fileNumber, isFolder, found.count});
            }
            ++found.count;
        }
        entriesGiven += found.count;
        return found;
    }

private:
    std::uint64_t volumeOf(const std::string& path) const {
        std::uint64_t volume = 0;
        std::size_t longest = 0;
        for (const Facts& facts : mounted_) {
            const std::string& point = facts.volume.mountPoint;
            const bool isAbove = point == "/" || path == point || path.starts_with(point + "/");
            if (isAbove && point.size() >= longest) {
                longest = point.size();
                volume = facts.volume.id;
            }
        }
        return volume;
    }

    std::vector<Facts> mounted_;
    mutable std::vector<platform::MountedVolume> volumes_;
    std::map<std::string, platform::MountedItem> items_;
    std::unique_ptr<std::mutex> counting_ = std::make_unique<std::mutex>(); ///< Can be moved with the rest.
};

} // namespace tolvane::tests
