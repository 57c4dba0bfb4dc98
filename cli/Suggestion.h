#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tolvane::cli {

/// The one of the words that a mistyped one most likely stands for: at most two letters too many, missing,
/// wrong or swapped, and fewer than the word has. The first of several as near; nothing when none is.
std::optional<std::string> nearestWord(std::string_view typed, std::span<const std::string> words);

} // namespace tolvane::cli
