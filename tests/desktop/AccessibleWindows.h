// Windows as screen readers see them: the accessibility bus, read by a screen reader's library.
#pragma once

#include "tests/desktop/DesktopTest.h"

#include <string>
#include <vector>

namespace tolvane::tests {

struct AccessibleObject {
    std::string role;
    std::string name; ///< Without the places for line breaks.
    std::string text;
};

/// Whether an object has this name, and a role and a text that contain these.
bool hasObject(
    const std::vector<AccessibleObject>& objects,
    const std::string& role,
    const std::string& name,
    const std::string& text = {});

class AccessibleDesktopTest : public DesktopTest {
protected:
    void SetUp() override;
    DesktopSetup setup() const override;

    /// Everything in all windows of the desktop program at this moment; empty if it cannot be read.
    std::vector<AccessibleObject> accessibleObjects();

    /// Waits until an object's name contains this text.
    [[nodiscard]] bool waitForName(const std::string& text);
};

} // namespace tolvane::tests
