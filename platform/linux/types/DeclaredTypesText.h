#pragma once

#include <string_view>

/// The table of declared types as text, so that a program finds it without looking for a file.
///
/// The build makes the definition from platform/linux/types/data/uti.tsv, byte for byte. The text lives as
/// long as the process, so views into it never end; TypeTable::parse is what reads it.
///
/// The first line is a header, every further line one type in four cells between tabs:
///
///   identifier   the type's identifier, in the spelling that is shown;
///   extensions   the file name extensions that belong to it, lower case and without the dot, preferred one
///   first; mime-types   the MIME types that belong to it; conforms-to  the identifiers of its direct
///   parents, each of which has a line of its own.
///
/// Entries of one cell are separated by commas without blanks; an empty cell holds none.
namespace tolvane::platform {

extern const std::string_view declaredTypesText;

} // namespace tolvane::platform
