#pragma once

#include "platform/services/StatusFactSource.h"

namespace tolvane::platform {

/// Facts from one statx, and from one faccessat for each kind of access. The kernel answers for compression,
/// encryption, verity, direct access and the three protections (immutable, append only, no dump) as far as
/// the volume's driver does; other flags and the project number would need the item to be opened.
class LinuxStatusFactSource final : public StatusFactSource {
public:
    Result<StatusFacts> factsOfItemAtPath(const std::string& path) const override;
};

} // namespace tolvane::platform
