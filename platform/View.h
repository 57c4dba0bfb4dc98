#pragma once

#include "platform/Control.h"

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace tolvane::platform {

class Window;

/// A controller's view: it owns the controls that the outlets point at, and keeps the window that it is in
/// alive.
class View {
public:
    /// Null for a view that is in no window.
    Window* window() const { return window_.get(); }
    void setWindow(std::shared_ptr<Window> window) { window_ = std::move(window); }

    /// What a front end shows the view with. It lives as long as the view and is let go of before the
    /// controls, which it refers to.
    void setFrontEnd(std::shared_ptr<void> frontEnd) { frontEnd_ = std::move(frontEnd); }

    /// Makes room for this many further controls at once.
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
