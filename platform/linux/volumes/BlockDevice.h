/// Facts about the disk of a file system, from the kernel's device tree and the device manager. Neither the
/// disk nor its contents are accessed.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace tolvane::platform {

struct BlockDevice {
    bool isInternal = false;  ///< Built in, as far as can be told from how it is attached.
    bool isExternal = false;  ///< Attached by a cable: USB, FireWire, Thunderbolt.
    bool isRemovable = false; ///< The medium can be taken out: SD cards, optical disks, USB sticks.
    bool isDiskImage = false; ///< Not a device at all but a file that is treated as one.

    friend bool operator==(const BlockDevice&, const BlockDevice&) = default;
};

/// The facts of the device with this number, from a folder such as /sys/dev/block. Devices built from others
/// (encrypted, joined, mapped) have the facts of those. All false if nothing is known, as for memory and the
/// network.
BlockDevice blockDeviceInFolder(const std::string& folder, std::uint64_t device);

/// The names of disks by device number, from a folder of links such as /dev/disk/by-uuid, unescaped (\x20 is
/// a space). Of several links to a device the first by name counts. Empty without the folder.
std::map<std::uint64_t, std::string> diskLinksIn(const std::string& folder);

/// Decodes names in which \x and two hexadecimal digits replace characters that a link's name cannot contain.
std::string undoneDiskLinkEscapes(std::string_view name);

} // namespace tolvane::platform
