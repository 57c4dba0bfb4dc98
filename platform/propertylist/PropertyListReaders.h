#pragma once

#include "platform/propertylist/PropertyList.h"

#include <cstdint>
#include <string_view>

/// The readers of the three forms, for lists of at most `mostPropertyListBytes`.
namespace tolvane::platform {

/// The limit on the size of a binary list's objects when each is written out wherever it is shared: a
/// multiple of the list's length, plus an allowance. An element counts as 32 bytes and its text or data.
inline constexpr std::uint64_t mostPropertyListGrowth = 16;
inline constexpr std::uint64_t propertyListAllowance = std::uint64_t{4} << 20U;

/// Parses the binary form, version 00. Only objects that the top one refers to are read; of others only the
/// offset is checked. Fill may lie between objects, but is no element. Objects that contain themselves, keys
/// that are not texts, and non-ASCII bytes in ASCII texts are refused.
std::expected<Value, PropertyListFault> readBinaryPropertyList(std::span<const std::byte> bytes);

/// Parses the XML form: a `plist` element with one value, or a value alone, in UTF-8, UTF-16, ISO-8859-1 or
/// US-ASCII. External document types are not fetched; declared entities are refused. Unknown elements, text
/// between elements and invalid values are refused; attributes, comments and processing instructions ignored.
std::expected<Value, PropertyListFault> readXMLPropertyList(std::string_view text);

/// Parses the text form in UTF-8: a dictionary, an array, data, a quoted text, or just entries `key = value;`
/// as in files of localised texts. A single unquoted word is not a list.
///
/// Words of ASCII letters, digits and `_ $ / : . -` need no quotes. Comments are those of C++. Quoted texts,
/// in either quotes, have the escapes `\a \b \f \n \r \t \v \" \' \\`, a line break after the backslash, `\U`
/// with one to four hexadecimal digits of a UTF-16 unit, and up to three octal digits of a NextStep
/// character. Every entry ends with a semicolon; an array may have a comma at its end.
std::expected<Value, PropertyListFault> readTextPropertyList(std::string_view text);

} // namespace tolvane::platform
