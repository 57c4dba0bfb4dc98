#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tolvane::attributes {

/// An extended attribute in a companion file.
struct CompanionAttribute {
    std::string name;                 ///< Bytes, UTF-8 as a rule.
    std::span<const std::byte> value; ///< In the file's bytes.
};

struct Companion {
    std::vector<CompanionAttribute> attributes;
    std::optional<std::string> damage; ///< Where the attributes are damaged, if they are.
};

/// The extended attributes in a companion file ("._name", AppleDouble), which systems and archives that keep
/// none store beside the file: Finder information and resource fork under their attributes' names, then the
/// others in the file's order. Nothing if the bytes are no such file. The values may overlap; together they
/// are at most five times as long as the file.
std::optional<Companion> companionAttributes(std::span<const std::byte> bytes);

} // namespace tolvane::attributes
