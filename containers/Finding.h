#pragma once

#include "platform/values/Value.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::containers {

enum class FindingKind {
    bookmark, ///< Bookmark data in any form.
    alias,    ///< An alias record.
    url,      ///< The address in an internet location file.
    origin,   ///< Where an item of the Trash came from.
};

/// One bookmark, alias record, address or origin in a container, and what it says. Nothing that it names has
/// been looked at. Unknown facts are absent.
struct Finding {
    FindingKind kind = FindingKind::bookmark;

    /// The steps from the container's root: "/items[0]/Bookmark". Empty if it is the whole container.
    std::string where;

    platform::Data
        bytes; ///< Of the bookmark or alias record, joined where it is stored in parts; else empty.

    /// False if the bytes could not be read; the first warning then says why.
    bool isReadable = true;

    std::optional<std::uint32_t> version; ///< The version word of a bookmark, or 2 or 3.
    std::optional<std::string> path;      ///< Bytes.
    std::optional<std::string> url;       ///< Of bookmarks that have one in place of a path.
    std::optional<std::string> volumeName;
    std::optional<std::string> volumeUUID;
    std::optional<platform::Date> created;
    std::optional<platform::Date>
        createdLocal; ///< The local time as if it were UTC; in aliases of version 2.

    std::optional<std::string> name;      ///< What the container calls the item, otherwise its own name.
    std::optional<std::string> neighbour; ///< A path or URL of the same item beside it.

    /// Whether the neighbour names another item; absent where there is none, or where the two cannot be
    /// compared.
    std::optional<bool> mismatch;

    /// What the container's flags say of the item, in words; only of kinds of lists that are known.
    std::vector<std::string> flags;

    std::vector<std::string> warnings;
};

} // namespace tolvane::containers
