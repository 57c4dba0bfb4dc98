#pragma once

#include "platform/model/Window.h"

#include <memory>

namespace tolvane::resolver {

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

    TCWindow(
        Key key,
        const platform::Rect& contentRect,
        platform::WindowStyleMask styleMask,
        platform::BackingStore backing,
        bool defer)
        : platform::Window(key, contentRect, styleMask, backing, defer) {}
};

} // namespace tolvane::resolver
