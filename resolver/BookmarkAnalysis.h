#pragma once

#include "platform/Value.h"

#include <optional>
#include <string>

namespace tolvane::resolver {

/// The analysis of a bookmark: the answers to the question for all its properties and to that for its
/// detailed description, three line feeds between them.
///
/// An answer is written as the platform's debug notation of an optional dictionary with resource keys, and is
/// meant to be seen that way:
///
///     nil
///     Optional([:])
///     Optional([__C.NSURLResourceKey(_rawValue: NSURLBookmarkAllPropertiesKey): {
///         NSURLNameKey = "a.txt";
///     }])
///
/// Values stand there as `platform::description` gives them, entries in the dictionary's order.
std::string bookmarkAnalysis(
    const std::optional<platform::Dictionary>& allProperties,
    const std::optional<platform::Dictionary>& detailedDescription);

} // namespace tolvane::resolver
