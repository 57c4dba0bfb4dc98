#pragma once

#include "platform/services/FileManager.h"

namespace tolvane::platform {

/// Returns the dictionary of the system's own file manager, value by value; kinds of values that `Value` does
/// not know are left out. Several threads may use one object.
class MacFileManager final : public FileManager {
public:
    /// A path that the system cannot take as a name fails with NSFileReadInvalidFileNameError.
    Result<Dictionary> attributesOfItemAtPath(std::string_view path) const override;
};

} // namespace tolvane::platform
