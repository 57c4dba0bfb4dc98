#pragma once

#include "platform/values/Value.h"

#include <cstddef>
#include <optional>

/// Keyed archives: property lists in which objects refer to each other by number.
namespace tolvane::platform {

/// The objects of an archive as plain values.
struct UnarchivedObjects {
    /// What the archive's "$top" names, most often "root".
    Dictionary top;

    // References that could not be replaced, each of which stands where it was: {"CF$UID": number}.
    std::size_t cyclic = 0;  ///< To an object that contains the reference.
    std::size_t missing = 0; ///< To an object, or class, that the archive does not have.
    std::size_t leftOut = 0; ///< Beyond the limits on depth and size.
};

/// How many objects may lie within each other.
inline constexpr unsigned deepestArchivedObject = 256;

/// Replaces the references in a keyed archive; nothing if the list is not one.
///
/// Arrays, sets and dictionaries, texts, data, dates and identifiers become values of these types. A URL
/// becomes its text, a relative one "part -- base". Keys that are identifiers or whole numbers become texts;
/// others "$" and the entry's number. Any other object is a dictionary of what it contains, with the name of
/// its class as "$class".
///
/// An object is copied wherever it is referred to. Their size is limited like that of binary property lists,
/// so that memory and time are linear in the size of the list.
std::optional<UnarchivedObjects> unarchivedObjects(const Value& list);

} // namespace tolvane::platform
