#pragma once

#include <optional>
#include <string_view>

namespace tolvane::platform {

/// The whole text as a number, whatever the locale: digits with or without a point and an exponent, or one of
/// "inf", "infinity" and "nan" in any case, with or without a minus. Nothing for any other text, and for
/// numbers too large for a double or too close to zero.
///
/// Not every standard library has `std::from_chars` for `double`.
std::optional<double> decimalNumber(std::string_view text);

} // namespace tolvane::platform
