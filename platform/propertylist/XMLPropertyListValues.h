#pragma once

#include "platform/values/Value.h"

#include <optional>
#include <string_view>

/// What the texts of elements in XML property lists mean. White space around numbers and dates does not
/// count. Nothing for texts that are no such value.
namespace tolvane::platform {

/// Decimal, or hexadecimal after 0x, with or without a sign, within 64 bits.
std::optional<Value> integerInPropertyList(std::string_view text);

/// Decimal, or "nan", "inf" and "infinity" in any case, with or without a sign. Nothing for what a double
/// cannot hold.
std::optional<Value> realInPropertyList(std::string_view text);

/// YYYY-MM-DDTHH:MM:SSZ, for dates that exist. Years past 9999 have five digits, those before the year 0 a
/// sign.
std::optional<Value> dateInPropertyList(std::string_view text);

/// Base-64 with padding, with white space anywhere.
std::optional<Value> dataInPropertyList(std::string_view text);

} // namespace tolvane::platform
