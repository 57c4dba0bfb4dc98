// Property lists in each form, written by code that has nothing in common with what reads them.
#pragma once

#include "platform/values/Value.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tolvane::tests {

/// A binary list of objects in bytes of their own, the first on top, unless told otherwise. Its numbers are
/// of so many bytes.
struct BinaryObjects {
    std::vector<std::string> objects;
    std::size_t referenceSize = 1;
    std::size_t offsetSize = 2;
    std::size_t top = 0;

    std::string list() const;
};

/// So many bytes of a number, the most significant one first.
std::string bigEndian(std::uint64_t number, std::size_t width);

/// A marker with a count in it or after it.
std::string marker(unsigned kind, std::size_t count);

/// An array (kind 0xA) of objects by their numbers; or a set (0xC), or a dictionary (0xD) of keys and then
/// values.
std::string container(
    unsigned kind, const std::vector<std::size_t>& references, std::size_t referenceSize = 1);

/// The binary form. Equal texts and data are shared; a NaN loses its sign and payload. Nothing for kinds that
/// property lists do not have.
std::optional<std::string> binaryPropertyList(const platform::Value& value);

/// The XML form; nothing for what it cannot hold, such as control characters and fractions of a second.
std::optional<std::string> xmlPropertyList(const platform::Value& value);

/// The text form; nothing for anything but texts, data, arrays and dictionaries.
std::optional<std::string> textPropertyList(const platform::Value& value);

} // namespace tolvane::tests
