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
};

} // namespace tolvane::platform
