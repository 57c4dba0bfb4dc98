#pragma once

#include "platform/values/Value.h"

#include <span>
#include <string>

/// The platform's standard description of values: old property-list style, the one rendering that the details
/// window and the bookmark resolver share.
///
///     {
///         "user.note" = <68656c6c 6f>;
///         list =     (
///             1,
///             "two words"
///         );
///     }
///
/// Collections write one entry per line, indented by four blanks per level. A nested collection repeats its
/// indent before its bracket. Entries are in the dictionary's order.
namespace tolvane::platform {

/// Describes a value. A text, date or URL on its own is not quoted; inside a collection a leaf is quoted
/// unless it consists of A-Z, a-z and 0-9 only. In quotes, the quote, the backslash and control characters
/// are escaped, and UTF-16 units past ASCII are written \U and four lower-case digits. Bytes that are not
/// UTF-8 become U+FFFD. Data is always whole, in angle brackets, in groups of four bytes.
std::string description(const Value& value);
std::string description(const Dictionary& dictionary);

/// Appends bytes as "<01020304 0506>".
void appendAngleBytes(std::string& out, std::span<const std::byte> bytes);

} // namespace tolvane::platform
