#pragma once

#include "platform/propertylist/PropertyList.h"

#include <string_view>

namespace tolvane::platform {

/// Reads the XML form: a `plist` element with one value, or a value alone, in UTF-8, UTF-16, ISO-8859-1 or
/// US-ASCII. A document type may name what it likes outside, which is not fetched, but declare no entity.
/// Unknown elements, text between elements and values that are not written as their element demands are
/// refused; attributes, comments and processing instructions are ignored.
std::expected<Value, PropertyListFault> readXMLPropertyList(std::string_view text);

} // namespace tolvane::platform
