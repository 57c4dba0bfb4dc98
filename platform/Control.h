#pragma once

namespace tolvane::platform {

/// What a view can hold and an outlet can point at. The concrete controls are models: they keep exactly what
/// they were given and tell observers of changes; a desktop widget only mirrors them.
class Control {
public:
    Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    virtual ~Control() = default;
};

} // namespace tolvane::platform
