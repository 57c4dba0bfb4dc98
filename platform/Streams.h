#pragma once

#include "platform/Error.h"

#include <cstddef>
#include <span>
#include <string_view>

namespace tolvane::platform {

/// Where a terminal program reads bytes.
class InputStream {
public:
    virtual ~InputStream() = default;

    /// Reads what is there, waiting for at least one byte; 0 at the end of the input.
    virtual Result<std::size_t> read(std::span<char> buffer) = 0;
};

/// Where a terminal program writes bytes. Nothing is held back.
class OutputStream {
public:
    virtual ~OutputStream() = default;

    /// Writes all bytes, or fails with the system's error; a closed pipe is such an error.
    virtual Result<void> write(std::string_view bytes) = 0;

    /// True when what is written is shown on a terminal, which would act on control characters.
    virtual bool isTerminal() const = 0;
};

} // namespace tolvane::platform
