#include "details/ItemChange.h"

#include "platform/services/DocumentOpening.h"

#include <cerrno>

namespace tolvane::details {

ItemChange changeOf(const platform::URL& item, const platform::URLResources& resources) {
    const auto now = resources.resourceValuesForKeys(item.withoutKeptValues(), platform::rememberedKeys);
    if (!now) {
        const auto& [domain, code, userInfo] = now.error();
        const bool isGone = domain == platform::NSPOSIXErrorDomain && (code == ENOENT || code == ENOTDIR);
        return isGone ? ItemChange::gone : ItemChange::inaccessible;
    }
    const auto differs = [&](std::string_view key) {
        const platform::Value* const before = item.keptResourceValue(key);
        const platform::Value* const after = now->find(key);
        return before != nullptr && (after == nullptr || *before != *after);
    };
    // Numbers of deleted items are used again, creation dates are not.
    if (differs(platform::NSURLFileResourceIdentifierKey) || differs(platform::NSURLCreationDateKey)) {
        return ItemChange::replaced;
    }
    return differs(platform::NSURLAttributeModificationDateKey) ? ItemChange::changed : ItemChange::none;
}

std::string_view noteOf(ItemChange change) {
    switch (change) {
    case ItemChange::changed:
        return "The item has changed since. Reload (F5) shows it as it is now.";
    case ItemChange::replaced:
        return "Another item has taken its place since. Reload (F5) shows that one.";
    case ItemChange::gone:
        return "The item is no longer there.";
    case ItemChange::inaccessible:
        return "The item can no longer be accessed.";
    case ItemChange::none:
        break;
    }
    return {};
}

} // namespace tolvane::details
