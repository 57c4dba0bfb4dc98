#pragma once

#include "platform/bookmark/BookmarkValues.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

/// Values of a bookmark as text within one line and within quotation marks.
namespace tolvane::platform {

/// Appends a number as "0x1a".
void appendHexadecimal(std::string& line, std::uint64_t number);

/// Appends bytes as "<01020304 0506>".
void appendAngleBytes(std::string& line, std::span<const std::byte> bytes);

/// Appends the three words of flags as "{ flags=0x1 valid=0xf requested=0x0 }".
void appendFlags(std::string& line, const BookmarkFlags& flags);

/// Appends text that neither ends the line nor the quotation: quotation marks, backslashes, control
/// characters and the characters that separate lines are escaped as they are in property lists. Other
/// characters stay.
void appendEscaped(std::string& line, std::string_view text);

/// Appends the value of a record: texts, numbers and dates as they are, data whole in angle brackets,
/// an array as "( a, b )" and a dictionary as "{ a = b; c = d }", in the bookmark's order. In these, texts
/// that could be mistaken for something else stand in escaped quotation marks. Records of unknown type are
/// told by type and bytes.
void appendRecord(std::string& line, const BookmarkStructure& structure, const BookmarkRecord& record);

} // namespace tolvane::platform
