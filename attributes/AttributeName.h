#pragma once

#include <string>
#include <string_view>

namespace tolvane::attributes {

/// An attribute's name as the table of names has it.
///
/// One attribute has several names: Linux puts a prefix before those of a Mac ("user.", "osx."), Samba stores
/// streams as "user.DosStream.NAME:$DATA", SMB clients map characters that are not allowed in stream names to
/// a private area (U+F020 to U+F029) or lose them, and names may end in flags ("#PS"). The order is: the
/// stream's name, the characters, the prefix before a Mac's name, the flags.
struct AttributeName {
    std::string known;
    /// The letters after "#", empty if there are none.
    std::string flags;
    /// Samba's stream: one NUL at the end of the value is not part of it.
    bool isStream = false;
};

AttributeName attributeName(std::string_view name);

/// What the flag letters say, for people: "no export, syncable".
std::string flagLetterNames(std::string_view letters);

} // namespace tolvane::attributes
