#pragma once

#include "attributes/Family.h"

#include <cstddef>
#include <span>

namespace tolvane::attributes {

/// Adds the fields of a Windows security descriptor. Its offsets count from the start of the bytes; `base` is
/// where it begins in them.
Outcome addSecurityDescriptor(std::span<const std::byte> bytes, std::size_t base, Answer& answer);

} // namespace tolvane::attributes
