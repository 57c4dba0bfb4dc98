#pragma once

#include "platform/Value.h"

#include <cstdint>
#include <expected>
#include <string>
#include <string_view>

/// Failures of the platform as values. They cross folders as the second half of a `Result`; exceptions do
/// not.
namespace tolvane::platform {

inline constexpr std::string_view NSPOSIXErrorDomain = "NSPOSIXErrorDomain";
inline constexpr std::string_view NSCocoaErrorDomain = "NSCocoaErrorDomain";
inline constexpr std::string_view NSLocalizedDescriptionKey = "NSLocalizedDescriptionKey";

struct Error {
    std::string domain;
    std::int64_t code = 0;
    Dictionary userInfo;

    /// The text under NSLocalizedDescriptionKey; without one, the domain and the code in words.
    std::string localizedDescription() const;
};

template <typename T>
using Result = std::expected<T, Error>;

/// The error of a system call: domain NSPOSIXErrorDomain, the error number as code, and exactly one entry of
/// user information, the system's own message (`strerror`) under NSLocalizedDescriptionKey, nothing added.
/// Main thread only, as `strerror` is.
Error posixError(int errorNumber);

} // namespace tolvane::platform
