#pragma once

#include "platform/bookmark/format/BookmarkValues.h"
#include "platform/values/Description.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

/// Values of a bookmark as text that stays within one line and its quotes.
namespace tolvane::platform {

/// Appends a number as "0x1a".
void appendHexadecimal(std::string& line, std::uint64_t number);

/// Appends the three words of flags as "{ flags=0x1 valid=0xf requested=0x0 }".
void appendFlags(std::string& line, const BookmarkFlags& flags);

/// Appends text that ends neither the line nor the quotation: quotation marks, backslashes, control
/// characters and line separators are escaped as in property lists.
void appendEscaped(std::string& line, std::string_view text);

/// Appends the value of a record: texts, numbers and dates as they are, data whole in angle brackets, an
/// array as "( a, b )" and a dictionary as "{ a = b; c = d }", in the bookmark's order. Ambiguous texts in
/// these are quoted. Records of unknown type are written as type and bytes.
void appendRecord(std::string& line, const BookmarkStructure& structure, const BookmarkRecord& record);

} // namespace tolvane::platform
