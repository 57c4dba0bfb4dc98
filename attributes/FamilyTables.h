/// The table of names, in parts.
#pragma once

#include "attributes/Family.h"

#include <span>

namespace tolvane::attributes {

/// What desktop programs and services of Linux write.
std::span<const Family> desktopFamilies();
/// What the kernel and file systems of Linux know, and what containers keep.
std::span<const Family> linuxFamilies();
/// What cluster file systems keep.
std::span<const Family> clusterFamilies();
/// What comes from Windows and DOS.
std::span<const Family> windowsFamilies();
/// What comes from Macs.
std::span<const Family> macFamilies();

} // namespace tolvane::attributes
