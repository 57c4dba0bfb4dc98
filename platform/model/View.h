#pragma once

#include "platform/model/Controls.h"

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace tolvane::platform {

class Window;

/// A controller's view: owns the controls that the outlets refer to, and keeps its window alive.
class View {
public:
    /// The view's window, or null.
    Window* window() const { return window_.get(); }
    void setWindow(std::shared_ptr<Window> window) { window_ = std::move(window); }

    /// The front end's objects for this view. They live as long as the view and are destroyed before the
    /// controls to which they refer.
    void setFrontEnd(std::shared_ptr<void> frontEnd) { frontEnd_ = std::move(frontEnd); }

    /// Reserves room for this many more controls.
    void reserveControls(std::size_t count) { controls_.reserve(controls_.size() + count); }

    /// Makes a control that lives as long as the view.
    template <typename T>
    T& addControl() {
        auto control = std::make_unique<T>();
        T& added = *control;
        controls_.push_back(std::move(control));
        return added;
    }

private:
    std::shared_ptr<Window> window_;
    std::vector<std::unique_ptr<Control>> controls_;
    std::shared_ptr<void> frontEnd_; // The last member: it goes first.
};

} // namespace tolvane::platform
