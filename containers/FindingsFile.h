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
/// A field that a spreadsheet would run as a formula begins with an apostrophe, and so does one that begins
/// with an apostrophe itself: without the first one a field is exactly what was found.
std::string findingsAsCsv(
    std::string_view file, std::string_view container, std::span<const Finding> findings);

} // namespace tolvane::containers
