// The names that the device manager gives to disks, by device number: folders of links such as
// /dev/disk/by-uuid, each link named for a fact about the device that it leads to.
//
// Neither the devices nor what is on them is opened or touched.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace tolvane::platform {

/// The name of the link to each device, with the escapes of names undone (\x20 for a space). Of several
/// links to one device the first in the order of names counts. Empty where there is no such folder.
std::map<std::uint64_t, std::string> diskLinksIn(const std::string& folder);

/// Bytes for names in which \x and two hexadecimal digits stand for what a link's name cannot hold.
std::string undoneDiskLinkEscapes(std::string_view name);

} // namespace tolvane::platform
