#pragma once

#include "platform/values/Value.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::containers {

/// The flags that a known kind of list (PropertyListWalk.h) keeps for an item, in words: "hidden", "daemon",
/// "not enabled". `around` are the dictionaries around the item's bookmark, the nearest last. Flags whose
/// meaning is not known are left out, but for bits beside known ones: these are a number, "0x40".
std::vector<std::string> itemFlags(
    std::string_view kind, std::span<const platform::Dictionary* const> around);

} // namespace tolvane::containers
