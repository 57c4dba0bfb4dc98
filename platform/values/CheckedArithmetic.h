#pragma once

#include <cstdint>
#include <string_view>

/// Arithmetic on byte counts. An overflow is a fatal error that names what was computed: a size never wraps
/// or saturates.
namespace tolvane::platform {

/// a + b, or a fatal error naming `what`.
std::int64_t checkedAdd(std::int64_t a, std::int64_t b, std::string_view what);

/// a - b, or a fatal error naming `what`.
std::int64_t checkedSubtract(std::int64_t a, std::int64_t b, std::string_view what);

} // namespace tolvane::platform
