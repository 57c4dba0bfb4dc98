#pragma once

#include "platform/values/Error.h"

#include <cstddef>
#include <span>
#include <string_view>

namespace tolvane::platform {

/// Input of the terminal program.
class InputStream {
public:
    virtual ~InputStream() = default;

    /// Reads the available bytes, waiting for at least one; 0 at the end of the input.
    virtual Result<std::size_t> read(std::span<char> buffer) = 0;
};

/// Output of the terminal program, unbuffered.
class OutputStream {
public:
    virtual ~OutputStream() = default;

    /// Writes all bytes or fails with the system's error, also for a closed pipe.
    virtual Result<void> write(std::string_view bytes) = 0;

    /// True if the output is a terminal, which would act on control characters.
    virtual bool isTerminal() const = 0;
};

} // namespace tolvane::platform
