#pragma once

#include "platform/Error.h"
#include "platform/ExtendedAttributeCalls.h"
#include "platform/URL.h"

#include <cstdint>
#include <string>
#include <vector>

/// Measures how many bytes a file's extended attributes hold. Values are never read, names serve only to ask
/// for sizes. A symbolic link is followed: its target's attributes are measured.
///
/// The first failing system call is the answer (`posixError`); nothing is tried again and no partial figure
/// is given, so a list that grew between its two calls fails rather than being cut.
namespace tolvane::inspect {

/// The sum of the value sizes of all attributes, in bytes; names do not count, and an attribute whose name is
/// not UTF-8 is not counted. A sum past a signed 64-bit integer is a fatal error.
platform::Result<std::int64_t> totalXattrSize(
    const platform::URL& url, const platform::ExtendedAttributeCalls& calls);

/// The names in the order in which the system lists them; names that are not UTF-8 are left out. `path` ends
/// in NUL and may be null.
platform::Result<std::vector<std::string>> xattrNames(
    const char* path, const platform::ExtendedAttributeCalls& calls);

/// The size of one attribute's value in bytes; 0 for an empty value.
platform::Result<std::int64_t> xattrValueSize(
    const char* path, const std::string& name, const platform::ExtendedAttributeCalls& calls);

} // namespace tolvane::inspect
