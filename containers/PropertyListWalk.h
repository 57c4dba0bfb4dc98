#pragma once

#include "containers/Collector.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace tolvane::containers {

/// How many property lists may lie within each other as data.
inline constexpr unsigned deepestNestedList = 8;

/// True if the text begins like a property list in XML.
bool isLikeXmlList(std::string_view text);

/// Parses a property list and collects every bookmark and alias record in it, at any depth: in its data, in
/// lists and archives that are data of it, and as base-64 or hexadecimal digits in its texts. `where` is what
/// its steps begin with. Returns the kind of list, by its contents: "sharedFileList", "backgroundItems",
/// "loginItems", "dock", "finder", "recentItems", "sidebarLists", "downloads", "folderActions",
/// "timeMachine", "internetLocation", "keyedArchive" or "propertyList"; empty, with a complaint, if it cannot
/// be read.
std::string_view collectFromPropertyList(
    std::span<const std::byte> bytes, const std::string& where, Collector& collector);

} // namespace tolvane::containers
