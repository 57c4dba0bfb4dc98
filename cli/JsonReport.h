#pragma once

#include "details/ViewController.h"
#include "inspect/SizeData.h"

#include <string>

namespace tolvane::cli {

/// One JSON object in one line, without a line end: the text of every field of the window under its outlet's
/// name, in the window's order, and under "facts" the same facts with their types.
///
/// Facts that are not known are null. Sizes are bytes; "permissions" is a number, not octal digits; dates are
/// ISO 8601 in UTC with nine digits of fraction; "extendedAttributes" maps names to lower-case hexadecimal;
/// "pathBytes" holds the path's bytes in hexadecimal where the path is no UTF-8, and is null elsewhere. With
/// `ascii` everything past ASCII is escaped, as a terminal needs it.
std::string jsonReport(const details::ViewController& window, const inspect::SizeData& sizes, bool ascii);

} // namespace tolvane::cli
