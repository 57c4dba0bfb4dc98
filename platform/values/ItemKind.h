#pragma once

namespace tolvane::platform {

/// What an item of a file system is.
enum class ItemKind {
    regularFile,
    folder,
    symbolicLink,
    fifo,
    socket,
    characterDevice,
    blockDevice,
    unknown,
};

} // namespace tolvane::platform
