// Windows as those see them who cannot see: the accessibility bus, read by a screen reader's own library.
#pragma once

#include "tests/desktop/Desktop.h"

#include <string>
#include <vector>

namespace tolvane::tests {

/// A program for this that is not installed; empty when all are there.
std::string missingAccessibilityProgram();

/// What a desktop takes for its programs to be on the accessibility bus.
DesktopSetup accessibleDesktop();

struct AccessibleObject {
    std::string role;
    std::string name;
    std::string text; ///< Empty where it has none.
};

/// Everything in all windows of the desktop program, as it is just now; nothing while it cannot be read.
std::vector<AccessibleObject> accessibleObjects(const Desktop& desktop);

} // namespace tolvane::tests
