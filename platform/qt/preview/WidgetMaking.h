#pragma once

#include <memory>
#include <utility>

namespace tolvane::platform {

/// Makes an object that the parent among the arguments owns, as toolkits have it.
template <typename Object, typename... Arguments>
Object& makeOwned(Arguments&&... arguments) {
    return *std::make_unique<Object>(std::forward<Arguments>(arguments)...).release();
}

} // namespace tolvane::platform
