// A terminal of which the test is the screen.
#pragma once

#include "platform/linux/FileDescriptor.h"

#include <optional>
#include <string>

namespace tolvane::tests {

/// What is written to the terminal comes out as it was written: line feeds are not turned into line ends of
/// another kind.
class PseudoTerminal {
public:
    PseudoTerminal();

    /// The end that a program gets as one of its streams.
    int descriptor() const { return programSide_->number(); }

    /// What was shown, read until the last program that had the terminal has ended. Start it before.
    std::string textUntilHangUp();

private:
    std::optional<platform::FileDescriptor> screenSide_;
    std::optional<platform::FileDescriptor> programSide_;
};

} // namespace tolvane::tests
