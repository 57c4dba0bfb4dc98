#include "platform/macos/facts/MacFileManager.h"

#include "platform/macos/foundation/FoundationCalls.h"
#include "platform/macos/values/Conversions.h"

namespace tolvane::platform {

using macos::Owned;

Result<Dictionary> MacFileManager::attributesOfItemAtPath(std::string_view path) const {
    const Owned<CFStringRef> name(
        path.contains('\0') ? nullptr
                            : CFStringCreateWithFileSystemRepresentation(nullptr, std::string(path).c_str()));
    if (!name) {
        return std::unexpected(cocoaError(NSFileReadInvalidFileNameError, "The path is no name of an item."));
    }
    Owned<CFErrorRef> error;
    const Owned<CFDictionaryRef> attributes(macos::copyAttributesOfItemAtPath(name.get(), error.out()));
    if (!attributes) {
        return std::unexpected(macos::errorOf(error));
    }
    return macos::dictionaryOf(attributes.get());
}

} // namespace tolvane::platform
