#pragma once

#include "platform/model/Window.h"

#include <memory>

namespace tolvane::resolver {

/// A window for storyboards to name. It is a window like any other.
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

    TRWindow(
        Key key,
        const platform::Rect& contentRect,
        platform::WindowStyleMask styleMask,
        platform::BackingStore backing,
        bool defer)
        : platform::Window(key, contentRect, styleMask, backing, defer) {}
};

} // namespace tolvane::resolver
