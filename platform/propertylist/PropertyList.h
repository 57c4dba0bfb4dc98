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

/// Why bytes are not a property list: where, and what was expected there, in words for people.
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

/// Reads a property list of unknown origin. Its form is recognised by its content. Returns the whole list or
/// the first fault, and touches no byte outside of those given.
///
/// What the values become, in every form:
///
/// - whole numbers: `std::int64_t`, and `std::uint64_t` for those that only fit there; larger ones are
/// refused;
/// - fractions: `double`, however wide they were;
/// - texts: UTF-8, in which U+FFFD stands for each surrogate that lacks its other half;
/// - sets: arrays;
/// - the identifiers of keyed archives: a dictionary of the one number "CF$UID", as XML writes them;
/// - of several entries with one key: the last.
///
/// The text form knows texts, data, arrays and dictionaries only. Memory and time are linear in the number of
/// bytes, but for the sorting of keys: how much a binary list may grow by sharing objects is limited.
std::expected<PropertyList, PropertyListFault> readPropertyList(std::span<const std::byte> bytes);

} // namespace tolvane::platform
