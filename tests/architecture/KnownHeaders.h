#pragma once

#include <string_view>

namespace tolvane::architecture {

/// Whether `<name>` is a header of the C++23 standard library. The C library's own `<name.h>` headers are
/// not: C++ has its spellings of them.
bool isStandardHeader(std::string_view name);

/// Whether `<name>` is a header of POSIX or of Linux, as the C library and the kernel install them.
bool isSystemHeader(std::string_view name);

/// Whether `name` is a macro that tells platforms apart, such as the one that says "this is Linux".
bool isPlatformMacro(std::string_view name);

} // namespace tolvane::architecture
