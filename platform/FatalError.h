#pragma once

#include <string_view>

/// The one way out for conditions that the design holds impossible: an unconnected outlet, a value of the
/// wrong kind in an attribute dictionary, a size that overflows. They are faults of the program or of the
/// platform below it, never of the user's input, so going on would show figures that nobody can trust.
namespace tolvane::platform {

/// Writes one line ("tolvane: fatal: " and the reason) to standard error and aborts the process.
/// Nothing is unwound or saved.
[[noreturn]] void fatalError(std::string_view reason);

} // namespace tolvane::platform
