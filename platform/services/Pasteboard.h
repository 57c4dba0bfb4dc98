#pragma once

#include <span>
#include <string>

namespace tolvane::platform {

/// A place from which other programs paste.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;

    /// Empties the pasteboard.
    virtual void clearContents() = 0;

    /// Adds texts as plain UTF-8 text. False when the system did not take them.
    virtual bool writeObjects(std::span<const std::string> texts) = 0;
};

} // namespace tolvane::platform
