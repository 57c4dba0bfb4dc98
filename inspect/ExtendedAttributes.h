#pragma once

#include "platform/services/ExtendedAttributeCalls.h"
#include "platform/values/Error.h"
#include "platform/values/URL.h"

#include <cstdint>
#include <string>
#include <vector>

/// Measures the size of a file's extended attributes, without reading their values. Symbolic links are
/// followed.
///
/// The first failing system call is the result (`posixError`). Nothing is retried and there is no partial
/// result: a list that grows between two calls is an error instead of being cut.
namespace tolvane::inspect {

/// The sum of the sizes of all values in bytes, without names. Attributes whose names are not UTF-8 are not
/// counted. An overflow of a signed 64-bit integer is a fatal error.
platform::Result<std::int64_t> totalXattrSize(
    const platform::URL& url, const platform::ExtendedAttributeCalls& calls);

/// The names in the system's order, without those that are not UTF-8. `path` ends in NUL and may be null.
platform::Result<std::vector<std::string>> xattrNames(
    const char* path, const platform::ExtendedAttributeCalls& calls);

/// The size of one attribute's value in bytes; 0 for an empty value.
platform::Result<std::int64_t> xattrValueSize(
    const char* path, const std::string& name, const platform::ExtendedAttributeCalls& calls);

} // namespace tolvane::inspect
