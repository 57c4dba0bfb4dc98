#pragma once

#include "containers/Finding.h"

#include <span>
#include <string>
#include <string_view>

/// The findings of a container as the text of a file, in the container's order.
namespace tolvane::containers {

/// A line for each finding with the object that `writeFindingJson` writes. `file` is the container's name as
/// bytes.
std::string findingsAsJson(
    std::string_view file, std::string_view container, std::span<const Finding> findings);

/// Comma-separated values as in RFC 4180: a line of names, then one for each finding, with the same facts as
/// in JSON. Warnings are lines of one field. Absent facts are empty; bytes that are not UTF-8 become U+FFFD.
std::string findingsAsCsv(
    std::string_view file, std::string_view container, std::span<const Finding> findings);

} // namespace tolvane::containers
