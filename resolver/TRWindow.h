#pragma once

#include "platform/model/Window.h"

#include <memory>

namespace tolvane::resolver {

/// A window for storyboards to name, like any other.
class TRWindow final : public platform::Window {
public:
    /// Hands everything on unchanged.
    static std::shared_ptr<TRWindow> initWithContentRect(
        const platform::Rect& contentRect,
        platform::WindowStyleMask styleMask,
        platform::BackingStore backing,
        bool defer) {
        return std::make_shared<TRWindow>(Key{}, contentRect, styleMask, backing, defer);
    }

    using platform::Window::Window;
};

/// Another window for storyboards to name. It is a window like any other, too.
class TCWindow final : public platform::Window {
public:
    /// Hands everything on unchanged.
    static std::shared_ptr<TCWindow> initWithContentRect(
        const platform::Rect& contentRect,
        platform::WindowStyleMask styleMask,
        platform::BackingStore backing,
        bool defer) {
        return std::make_shared<TCWindow>(Key{}, contentRect, styleMask, backing, defer);
    }

    using platform::Window::Window;
};

} // namespace tolvane::resolver
