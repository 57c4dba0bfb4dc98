/// Properties of a file system by the name of its type.
///
/// Unknown types are taken for local disks, which most are, but not trusted to have permanent file numbers: a
/// number that changes would resolve to another file.
#pragma once

#include <cstdint>
#include <string_view>

namespace tolvane::platform {

/// False for network file systems and those from the host of a virtual machine.
bool isLocalFileSystem(std::string_view type);

/// Whether an item keeps its number for life, also across renames and mounts. FAT, exFAT, most network and
/// user-space file systems and the kernel's own make numbers up on access.
bool hasLastingFileNumbers(std::string_view type);

/// True for the kernel's pseudo file systems and placeholders, which contain no documents.
bool isPseudoFileSystem(std::string_view type);

/// The type for a number from statfs; empty if unknown. If several types share the number, the latest.
std::string_view fileSystemTypeOfMagic(std::uint64_t magic);

/// True for types that mount other file systems when a folder in them is entered.
bool isAutomounter(std::string_view type);

} // namespace tolvane::platform
