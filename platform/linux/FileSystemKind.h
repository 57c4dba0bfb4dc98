// What the type of a file system says about it, by the name that the kernel lists it under.
//
// A type that is not known here is taken for one on a disk of this machine, which most are, but is not
// trusted to keep its file numbers: a number that is not lasting would lead to another file.
#pragma once

#include <cstdint>
#include <string_view>

namespace tolvane::platform {

/// False for what comes over a network, or from the host of a virtual machine.
bool isLocalFileSystem(std::string_view type);

/// Whether an item keeps its number as long as it exists, also when it is renamed or mounted again. Those of
/// FAT, exFAT, most network and user-space file systems, and of the kernel's own views are made up when an
/// item is met.
bool hasLastingFileNumbers(std::string_view type);

/// The kernel's views of itself, and what only stands for something else: nobody keeps documents there.
bool isPseudoFileSystem(std::string_view type);

/// The type that statfs tells by this number; empty for one that is not known. Several types share a number,
/// and then it is the latest of them.
std::string_view fileSystemTypeOfMagic(std::uint64_t magic);

/// Mounts other file systems when a folder in it is entered.
bool isAutomounter(std::string_view type);

} // namespace tolvane::platform
