// Names of locales: from the form that the environment uses to the one that the date library knows.
#pragma once

#include <string>
#include <string_view>

namespace tolvane::platform {

/// "de_DE.UTF-8@euro" is de_DE and "sr_RS@latin" is sr_Latn_RS. The codeset says nothing about dates and is
/// left out; so are modifiers other than those for a script and the Valencian variant. An empty name, "C" and
/// "POSIX", with a codeset or without, are en_US_POSIX, and so is what cannot be the name of a locale.
std::string icuLocaleName(std::string_view environmentName);

} // namespace tolvane::platform
