#pragma once

#include "platform/values/ItemKind.h"

#include <cstdint>

namespace tolvane::platform {

/// The kind of item for a mode as in st_mode.
ItemKind kindOfMode(std::uint32_t mode);

} // namespace tolvane::platform
