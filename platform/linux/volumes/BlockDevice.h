/// Facts from the kernel's device tree about the device of a file system. Neither the device nor its contents
/// are accessed.
#pragma once

#include <cstdint>
#include <string>

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

} // namespace tolvane::platform
