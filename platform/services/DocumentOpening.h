#pragma once

#include "platform/services/URLResources.h"
#include "platform/values/Error.h"
#include "platform/values/URL.h"

#include <array>
#include <span>
#include <string_view>

namespace tolvane::platform {

class Document;

/// What an opened URL keeps of its item, as far as the item has it: enough to see later whether the item was
/// changed or replaced.
inline constexpr std::array<std::string_view, 3> rememberedKeys{
    NSURLFileResourceIdentifierKey, NSURLCreationDateKey, NSURLAttributeModificationDateKey};

/// The URL to open for one that the user named: it keeps what is remembered of the current item. Fails if
/// there is no item or it cannot be accessed. A final "/" is removed if that names the same item; after a
/// symbolic link it stays, since it then asks for the folder that the link refers to. The URL also keeps the
/// values of `moreKeys`, from the same look: for a single report, which asks for them at once.
Result<URL> identifiedURL(
    const URL& url, const URLResources& resources, std::span<const std::string_view> moreKeys = {});

/// Has a new document read `url` (from `identifiedURL`), make its window controllers and show them.
Result<void> openDocument(Document& document, const URL& url);

/// Has a new document read `url`, likewise, and take over the windows of one that is open. They stay as they
/// are and where they are.
Result<void> openInWindowsOf(Document& open, Document& document, const URL& url);

} // namespace tolvane::platform
