#pragma once

#include "platform/bookmark/resolution/MountedVolumes.h"
#include "platform/linux/volumes/MountTable.h"
#include "platform/linux/volumes/VolumeFacts.h"

#include <memory>

/// The mounted volumes and what is on them, for finding the target of a bookmark.
///
/// Items are never opened, folders only read. Network volumes are accessed only to search for an item on
/// them. Several threads may use one object.
namespace tolvane::platform {

class LinuxMountedVolumes final : public MountedVolumes {
public:
    /// The mounts of the table, and that of "/" if the table lacks it. The facts outlive the object.
    LinuxMountedVolumes(std::shared_ptr<const MountTable> table, VolumeFacts& facts);

    const std::shared_ptr<const MountTable>& table() const { return table_; }

    /// Single files can be mount points too; their only path is that of the volume.
    const std::vector<MountedVolume>& volumes() const override { return volumes_; }

    /// Of a network volume only what is known without asking it.
    std::optional<std::string> uuid(const MountedVolume& volume) const override;

    std::optional<std::int64_t> capacity(const MountedVolume& volume) const override;

    std::optional<Date> creationDate(const MountedVolume& volume) const override;

    /// Fails in NSCocoaErrorDomain: 257 without permission, 260 when nothing is there, 256 otherwise.
    Result<MountedItem> itemAt(const std::string& path) const override;

    /// Fails likewise.
    Result<FolderEntries> entriesOf(
        const std::string& folder, std::uint64_t fileNumber, std::size_t most) const override;

private:
    const Mount* mountOf(const MountedVolume& volume) const;
    void add(const Mount& mount);

    std::shared_ptr<const MountTable> table_;
    VolumeFacts& facts_;
    std::optional<Mount> hiddenRoot_;
    std::vector<MountedVolume> volumes_;
};

} // namespace tolvane::platform
