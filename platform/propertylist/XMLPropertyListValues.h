#pragma once

#include "platform/values/Value.h"

#include <optional>
#include <string_view>

/// The values of elements in XML property lists; nothing for invalid text. White space around numbers and
/// dates is ignored.
namespace tolvane::platform {

/// Decimal, or hexadecimal after 0x, with or without a sign, within 64 bits.
std::optional<Value> integerInPropertyList(std::string_view text);

/// Decimal, or "nan", "inf" and "infinity" in any case, with or without a sign, within a double's range.
std::optional<Value> realInPropertyList(std::string_view text);

/// YYYY-MM-DDTHH:MM:SSZ, for valid dates. Years past 9999 have five digits, those before 0 a sign.
std::optional<Value> dateInPropertyList(std::string_view text);

/// Base-64 with padding, with white space anywhere.
std::optional<Value> dataInPropertyList(std::string_view text);

} // namespace tolvane::platform
