#pragma once

#include "containers/Collector.h"

#include <string>
#include <string_view>

namespace tolvane::containers {

/// Longer runs of digits are left out.
inline constexpr std::size_t longestTextRun = std::size_t{24} << 20U;

/// Collects bookmarks that are written in a text as base-64 or hexadecimal digits in one run. Where one
/// begins is added to `where` as "@" and its offset unless it is the whole text. Time is linear in the text's
/// length.
void collectFromText(
    std::string_view text, const std::string& where, Collector& collector, const Label& label = {});

/// The bytes that a text of base-64 or hexadecimal digits alone stands for; white space is ignored. Nothing
/// for other texts.
std::optional<platform::Data> bytesOfDigits(std::string_view text);

} // namespace tolvane::containers
