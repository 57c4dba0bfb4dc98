/// The device manager's names for disks by device number: folders of links such as /dev/disk/by-uuid.
///
/// Neither the devices nor their contents are opened.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace tolvane::platform {

/// The name of the link to each device, unescaped (\x20 is a space). Of several links to one device the first
/// by name is used. Empty if there is no such folder.
std::map<std::uint64_t, std::string> diskLinksIn(const std::string& folder);

/// Decodes names in which \x and two hexadecimal digits replace characters that a link's name cannot contain.
std::string undoneDiskLinkEscapes(std::string_view name);

} // namespace tolvane::platform
