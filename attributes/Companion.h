#pragma once

#include "attributes/Explanation.h"

#include <optional>
#include <span>
#include <vector>

namespace tolvane::attributes {

/// Explains each extended attribute in a companion file ("._name", AppleDouble), which systems and archives
/// that keep none store beside the file: Finder information and resource fork under their attributes' names,
/// then the others in the file's order. Nothing if the bytes are no such file. If its attributes are damaged,
/// `damage` says where.
struct Companion {
    std::vector<Explanation> attributes;
    std::optional<std::string> damage;
};

std::optional<Companion> explainCompanion(std::span<const std::byte> bytes, const Questions& questions = {});

} // namespace tolvane::attributes
