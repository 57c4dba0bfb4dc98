#pragma once

#include "platform/Error.h"

#include <cstdint>
#include <string_view>

/// Failures in NSCocoaErrorDomain, by the platform's own numbers.
namespace tolvane::platform {

inline constexpr std::int64_t NSFileNoSuchFileError = 4;
inline constexpr std::int64_t NSFileReadUnknownError = 256;
inline constexpr std::int64_t NSFileReadNoPermissionError = 257;
inline constexpr std::int64_t NSFileReadInvalidFileNameError = 258;
inline constexpr std::int64_t NSFileReadCorruptFileError = 259;
inline constexpr std::int64_t NSFileReadNoSuchFileError = 260;
inline constexpr std::int64_t NSFileReadUnsupportedSchemeError = 262;
inline constexpr std::int64_t NSPropertyListReadCorruptError = 3840;

/// With the sentence as its description.
Error cocoaError(std::int64_t code, std::string_view sentence);

} // namespace tolvane::platform
