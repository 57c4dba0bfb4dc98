#pragma once

#include <QPalette>

namespace tolvane::platform {

/// Gives the program's windows dark colours where the desktop prefers them but its theme for Qt is light, as
/// on desktops that Qt knows no theme for. Main thread only.
class DarkColors {
public:
    DarkColors() = default;
    DarkColors(const DarkColors&) = delete;
    DarkColors& operator=(const DarkColors&) = delete;
    ~DarkColors() = default;

    /// A theme that is dark already is left alone. Without the preference its own colours come back.
    void setPreferred(bool preferred);

private:
    bool areApplied_ = false;
    QPalette lightToolTips_;
};

} // namespace tolvane::platform
