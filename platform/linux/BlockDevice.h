// What the kernel tells of the device that a file system is on, from its tree of devices: nothing of this
// touches the device or what is on it.
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

/// Of the device with this number, looked up in a folder such as /sys/dev/block. Devices that are made of
/// others (encrypted, joined, mapped) are what those are. All false where nothing is known, which is also the
/// case for memory and the network.
BlockDevice blockDeviceInFolder(const std::string& folder, std::uint64_t device);

} // namespace tolvane::platform
