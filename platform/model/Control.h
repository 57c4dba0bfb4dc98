#pragma once

namespace tolvane::platform {

/// What a view can hold and an outlet can point at. The concrete controls are models: they keep exactly what
/// they were given and notify observers of changes; a desktop widget only mirrors them.
class Control {
public:
    Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    virtual ~Control() = default;
};

/// The scrolling frame around a text view. It has no state of its own: its widget keeps the scroll position.
class ScrollView final : public Control {};

} // namespace tolvane::platform
