#pragma once

#include "platform/Error.h"
#include "platform/URL.h"
#include "platform/URLResources.h"

#include <memory>

namespace tolvane::platform {

class Document;

/// The URL to open for a user's one: it keeps the identity of the item that is there now. Fails when nothing
/// is there or it cannot be looked at. A path that ends in "/" is opened without it where that names the
/// same item, and as it stands where it does not: after a symbolic link the slash asks for the folder that
/// the link leads to.
Result<URL> identifiedURL(const URL& url, const URLResources& resources);

/// Has a new document read what is at `url`, which `identifiedURL` gave, make its window controllers and show
/// their windows.
Result<void> openDocument(Document& document, const URL& url);

} // namespace tolvane::platform
