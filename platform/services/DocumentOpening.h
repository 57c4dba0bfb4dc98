#pragma once

#include "platform/services/URLResources.h"
#include "platform/values/Error.h"
#include "platform/values/URL.h"

namespace tolvane::platform {

class Document;

/// The URL to open for one that the user named: it keeps the identity of the current item. Fails if there is
/// no item or it cannot be accessed. A final "/" is removed if that names the same item; after a symbolic
/// link it stays, since it then asks for the folder that the link refers to.
Result<URL> identifiedURL(const URL& url, const URLResources& resources);

/// Has a new document read `url` (from `identifiedURL`), make its window controllers and show them.
Result<void> openDocument(Document& document, const URL& url);

} // namespace tolvane::platform
