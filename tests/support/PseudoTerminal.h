/// A terminal whose screen is the test.
#pragma once

#include "platform/posix/FileDescriptor.h"

#include <optional>
#include <string>

namespace tolvane::tests {

/// Output is not modified: line feeds stay line feeds.
class PseudoTerminal {
public:
    PseudoTerminal();

    /// The end for a program's streams.
    int descriptor() const { return programSide_->number(); }

    /// Everything shown, until the last program on the terminal has ended. Start that first.
    std::string textUntilHangUp();

private:
    std::optional<platform::FileDescriptor> screenSide_;
    std::optional<platform::FileDescriptor> programSide_;
};

} // namespace tolvane::tests
