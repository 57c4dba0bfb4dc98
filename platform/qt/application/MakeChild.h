#pragma once

#include <memory>
#include <utility>

namespace tolvane::platform {

/// Makes an object owned by the parent among the arguments, as usual in Qt.
template <typename Object, typename... Arguments>
Object& makeChild(Arguments&&... arguments) {
    return *std::make_unique<Object>(std::forward<Arguments>(arguments)...).release();
}

} // namespace tolvane::platform
