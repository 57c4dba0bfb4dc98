#pragma once

#include "platform/bookmark/format/BookmarkContents.h"

#include <optional>
#include <string_view>

namespace tolvane::platform {

/// Why no bookmark can be made from contents, in words for people.
struct BookmarkRefusal {
    std::string_view reason;

    friend bool operator==(const BookmarkRefusal&, const BookmarkRefusal&) = default;
};

/// The first reason why no bookmark can be made from these contents, or nothing.
std::optional<BookmarkRefusal> refusalOfContents(const BookmarkContents& contents);

} // namespace tolvane::platform
