// Resolves any bookmark on volumes that have something at about every second path.
#include "fuzz/Fuzz.h"
#include "platform/CocoaError.h"
#include "platform/bookmark/BookmarkResolution.h"

#include <functional>
#include <string>
#include <vector>

namespace {

using namespace tolvane;

// Whether there is an item, what it is and its number depend on the path alone.
class AnyVolumes final : public platform::MountedVolumes {
public:
    AnyVolumes() {
        volumes_.resize(3);
        volumes_[0].mountPoint = "/";
        volumes_[1].mountPoint = "/Volumes/Disk";
        volumes_[2].mountPoint = "/mnt";
        for (std::size_t i = 0; i < volumes_.size(); ++i) {
            volumes_[i].id = i + 1;
            volumes_[i].device = i / 2 + 1;
            volumes_[i].name = "Test Disk";
        }
    }

    const std::vector<platform::MountedVolume>& volumes() const override { return volumes_; }

    std::optional<std::string> uuid(const platform::MountedVolume& volume) const override {
        return volume.id == 1 ? std::optional<std::string>("11111111-2222-3333-4444-555555555555")
                              : std::nullopt;
    }

    std::optional<std::int64_t> capacity(const platform::MountedVolume& volume) const override {
        return volume.id == 2 ? std::optional<std::int64_t>(494'384'795'648) : std::nullopt;
    }

    platform::Result<platform::MountedItem> itemAt(const std::string& path) const override {
        fuzz::require(path.starts_with('/') && !path.contains('\0'), "paths are absolute and whole");
        fuzz::require(++calls_ < mostCalls, "no more is looked at than the bookmark is long");
        const std::size_t any = std::hash<std::string>{}(path);
        if (any % 2 == 0) {
            return std::unexpected(platform::cocoaError(
                any % 4 == 0 ? platform::NSFileReadNoSuchFileError : platform::NSFileReadNoPermissionError,
                path));
        }
        return platform::MountedItem{
            any / 2 % 4, any / 8 % 4, static_cast<platform::MountedItemKind>(any / 32 % 4),
            platform::Date(700'000'000.5)};
    }

    platform::Result<std::vector<platform::FolderEntry>> entriesOf(
        const std::string& folder, std::size_t most) const override {
        if (folder.size() > longestSearched || most < 4) {
            return std::unexpected(platform::cocoaError(platform::NSFileReadUnknownError, folder));
        }
        return std::vector<platform::FolderEntry>{
            {"a", 1, true}, {"note.txt", 412'399, false}, {"b", 2, true}, {"c", 3, false}};
    }

private:
    static constexpr std::size_t mostCalls = 100'000;
    static constexpr std::size_t longestSearched = 12;

    std::vector<platform::MountedVolume> volumes_;
    mutable std::size_t calls_ = 0;
};

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const AnyVolumes volumes;
    const auto resolved = platform::resolveBookmarkData(fuzz::bytesOf(data, size), volumes);
    if (resolved) {
        fuzz::require(resolved->url && resolved->url->path().starts_with('/'), "a target has a path");
        fuzz::require(
            resolved->match.item == platform::ItemMatch::path || resolved->isStale,
            "what is found elsewhere is stale");
    } else {
        fuzz::require(!resolved.error().localizedDescription().empty(), "a failure has its sentence");
    }
    return 0;
}
