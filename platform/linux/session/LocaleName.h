/// Converts locale names from the environment's form to the date library's.
#pragma once

#include <string>
#include <string_view>

namespace tolvane::platform {

/// "de_DE.UTF-8@euro" becomes de_DE, and "sr_RS@latin" becomes sr_Latn_RS. The codeset and modifiers other
/// than scripts and the Valencian variant are dropped, since they do not affect dates. An empty name, "C" and
/// "POSIX" (with or without a codeset) and invalid names become en_US_POSIX.
std::string icuLocaleName(std::string_view environmentName);

} // namespace tolvane::platform
