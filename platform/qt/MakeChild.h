#pragma once

#include <memory>
#include <utility>

namespace tolvane::platform {

/// Makes an object that its parent owns: the arguments come first, the parent is the constructor's last.
template <typename T, typename Parent, typename... Arguments>
T& makeChild(Parent* parent, Arguments&&... arguments) {
    return *std::make_unique<T>(std::forward<Arguments>(arguments)..., parent).release();
}

} // namespace tolvane::platform
