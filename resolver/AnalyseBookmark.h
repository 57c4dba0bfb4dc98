#pragma once

#include "platform/services/Bookmarks.h"
#include "platform/values/Base64.h"
#include "platform/values/Value.h"

#include <expected>
#include <string>
#include <string_view>

/// Analysing the text of a bookmark, from the pasted text to what is shown of it. No file is looked at.
namespace tolvane::resolver {

/// The message when the text to analyse is not base-64.
inline constexpr std::string_view notAnalysed = "Couldn't analyse Bookmark.";

/// The text without spaces, line feeds and tabs, by which mail and terminals wrap base-64; carriage returns
/// stay.
std::string cleanedBookmarkText(std::string text);

/// The bytes of a cleaned text, or where and why it is not base-64. An empty text has no bytes.
std::expected<platform::Data, platform::Base64Fault> decodedBookmark(std::string_view cleanedText);

/// Where a cleaned text stops being base-64, in words: "Expected at character 5: …".
std::string base64Reason(const platform::Base64Fault& fault);

/// The analysis of a bookmark: all its properties, three line feeds, and its detailed description.
///
/// Each is the platform's debug notation of an optional dictionary with resource keys, meant to be shown so:
///
///     nil
///     Optional([:])
///     Optional([__C.NSURLResourceKey(_rawValue: NSURLBookmarkAllPropertiesKey): {
///         NSURLNameKey = "a.txt";
///     }])
///
/// Values are written by `platform::description`, entries in the dictionary's order.
std::string bookmarkAnalysis(const platform::StoredProperties& properties);

} // namespace tolvane::resolver
