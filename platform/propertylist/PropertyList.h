#pragma once

#include "platform/values/Value.h"

#include <cstddef>
#include <expected>
#include <span>
#include <string>

/// Reading property lists, in whichever of their three forms they are written.
namespace tolvane::platform {

enum class PropertyListForm {
    binary, ///< Begins with the letters "bplist".
    xml,
    text ///< The oldest form: `{ key = value; }`, `( a, b )`, `<0fbd77>`, and files of `key = value;` alone.
};

/// Why bytes are not a property list: the offset, and what was expected there, for people.
struct PropertyListFault {
    std::size_t offset = 0;
    std::string expected;

    friend bool operator==(const PropertyListFault&, const PropertyListFault&) = default;
};

struct PropertyList {
    PropertyListForm form;
    Value value;
};

/// How many arrays and dictionaries may lie within each other.
inline constexpr unsigned deepestPropertyListLevel = 512;

/// Longer lists are refused unread.
inline constexpr std::size_t mostPropertyListBytes = std::size_t{256} << 20U;

/// Parses an untrusted property list in any form, recognised by its content. Returns the whole list or the
/// first fault. Reads no other bytes.
///
/// The values of every form:
///
/// - whole numbers: `std::int64_t`, otherwise `std::uint64_t`; larger ones are refused
/// - fractions: `double`, whatever their width
/// - texts: UTF-8, with U+FFFD for unpaired surrogates
/// - sets: arrays
/// - identifiers of keyed archives: a dictionary with the number "CF$UID", as in XML
/// - several entries with one key: the last
///
/// The text form has only texts, data, arrays and dictionaries. Memory and time are linear in the number of
/// bytes, except for sorting keys; the growth of binary lists by sharing is limited.
std::expected<PropertyList, PropertyListFault> readPropertyList(std::span<const std::byte> bytes);

} // namespace tolvane::platform
