#pragma once

#include "platform/propertylist/PropertyList.h"

#include <string_view>

namespace tolvane::platform {

/// Reads the text form in UTF-8: a dictionary, an array, data or a quoted text; or entries `key = value;`
/// alone, as files of localised texts have them. A word alone is no list, or else every word would be one.
///
/// Words need no quotes when they have only the letters and digits of ASCII and `_ $ / : . -`. Comments are
/// those of C++. Quoted texts, in either quotes, know the escapes `\a \b \f \n \r \t \v \" \' \\`, a line
/// break after the backslash, `\U` with one to four hexadecimal digits of a UTF-16 unit, and up to three
/// octal digits of a NextStep character. Every entry ends with a semicolon; the last element of an array may
/// have a comma after it.
std::expected<Value, PropertyListFault> readTextPropertyList(std::string_view text);

} // namespace tolvane::platform
