#pragma once

#include "platform/values/Value.h"

#include <cstdint>
#include <expected>
#include <string>
#include <string_view>

/// Errors as values. They cross folders in a `Result`; exceptions do not. The codes are the platform's, in
/// NSCocoaErrorDomain.
namespace tolvane::platform {

inline constexpr std::string_view NSPOSIXErrorDomain = "NSPOSIXErrorDomain";
inline constexpr std::string_view NSCocoaErrorDomain = "NSCocoaErrorDomain";
inline constexpr std::string_view NSLocalizedDescriptionKey = "NSLocalizedDescriptionKey";

inline constexpr std::int64_t NSFileNoSuchFileError = 4;
inline constexpr std::int64_t NSFileReadUnknownError = 256;
inline constexpr std::int64_t NSFileReadNoPermissionError = 257;
inline constexpr std::int64_t NSFileReadInvalidFileNameError = 258;
inline constexpr std::int64_t NSFileReadCorruptFileError = 259;
inline constexpr std::int64_t NSFileReadNoSuchFileError = 260;
inline constexpr std::int64_t NSFileReadUnsupportedSchemeError = 262;

struct Error {
    std::string domain;
    std::int64_t code = 0;
    Dictionary userInfo;

    /// The text under NSLocalizedDescriptionKey, otherwise the domain and code.
    std::string localizedDescription() const;
};

template <typename T>
using Result = std::expected<T, Error>;

/// The error of a system call: NSPOSIXErrorDomain, the error number, and the system's message (`strerror`) as
/// the only entry of user information. May be called by several threads, as glibc's `strerror` may.
Error posixError(int errorNumber);

/// An error of NSCocoaErrorDomain with the sentence as its description.
Error cocoaError(std::int64_t code, std::string_view sentence);

} // namespace tolvane::platform
