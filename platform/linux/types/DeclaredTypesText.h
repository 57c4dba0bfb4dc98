#pragma once

#include <string_view>

/// The table of declared types as text. The build makes the definition from
/// platform/linux/types/data/uti.tsv, byte for byte, for TypeTable::parse. It lives as long as the process.
///
/// The first line is a header; every other line is a type in four cells separated by tabs:
///
///   identifier   the type's identifier as shown
///   extensions   its file name extensions, lower case, without the dot, preferred one first
///   mime-types   its MIME types
///   conforms-to  the identifiers of its direct parents, which have lines of their own
///
/// The entries of a cell are separated by commas without blanks; an empty cell has none.
namespace tolvane::platform {

extern const std::string_view declaredTypesText;

} // namespace tolvane::platform
