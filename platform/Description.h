#pragma once

#include "platform/Value.h"

#include <string>
#include <string_view>

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
/// Collections write one entry a line, indented by four blanks a level; a collection inside another brings
/// its own indent along, hence the blanks before its bracket. Entries come in the dictionary's order.
namespace tolvane::platform {

/// Describes a value. Alone, a text stands as it is and a date or URL without quotes; inside a collection a
/// leaf is quoted unless it is one or more of A-Z, a-z and 0-9. Inside quotes the quote, the backslash and
/// control characters are escaped, and each UTF-16 unit past ASCII is written \U and four lower-case digits.
/// Bytes that are not UTF-8 count as U+FFFD. Data is always whole, in angle brackets, four bytes a group.
std::string description(const Value& value);
std::string description(const Dictionary& dictionary);

} // namespace tolvane::platform
