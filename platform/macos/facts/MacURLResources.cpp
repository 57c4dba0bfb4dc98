#include "platform/macos/facts/MacURLResources.h"

#include "platform/macos/values/Conversions.h"

#include <array>
#include <cerrno>
#include <utility>
#include <vector>

namespace tolvane::platform {

namespace {

using macos::Owned;

/// Null for a key that has no counterpart.
CFStringRef systemKey(std::string_view key) {
    const std::array<std::pair<std::string_view, CFStringRef>, 6> keys{{
        {NSURLFileSizeKey, kCFURLFileSizeKey},
        {NSURLTotalFileSizeKey, kCFURLTotalFileSizeKey},
        {NSURLTypeIdentifierKey, kCFURLTypeIdentifierKey},
        {NSURLFileResourceIdentifierKey, kCFURLFileResourceIdentifierKey},
        {NSURLCreationDateKey, kCFURLCreationDateKey},
        {NSURLAttributeModificationDateKey, kCFURLAttributeModificationDateKey},
    }};
    for (const auto& [ours, theirs] : keys) {
        if (ours == key) {
            return theirs;
        }
    }
    return nullptr;
}

Result<Owned<CFDictionaryRef>> askedOfSystem(const URL& url, std::vector<const void*>& keys) {
    const Owned<CFURLRef> item = macos::fileURLOf(url);
    if (!item) {
        return std::unexpected(posixError(EINVAL));
    }
    const Owned<CFArrayRef> list(
        CFArrayCreate(nullptr, keys.data(), static_cast<CFIndex>(keys.size()), &kCFTypeArrayCallBacks));
    if (!list) {
        return std::unexpected(posixError(ENOMEM));
    }
    Owned<CFErrorRef> error;
    Owned<CFDictionaryRef> values(CFURLCopyResourcePropertiesForKeys(item.get(), list.get(), error.out()));
    if (!values) {
        return std::unexpected(macos::errorOf(error));
    }
    return values;
}

} // namespace

Result<Dictionary> MacURLResources::resourceValuesForKeys(
    const URL& url, std::span<const std::string_view> keys) const {
    Dictionary values;
    std::vector<std::string_view> missing;
    std::vector<const void*> systemKeys;
    for (const auto key : keys) {
        if (const Value* kept = url.keptResourceValue(key)) {
            values.set(key, *kept);
        } else if (const CFStringRef asked = systemKey(key)) {
            missing.push_back(key);
            systemKeys.push_back(asked);
        }
    }
    if (missing.empty()) {
        return values;
    }
    const auto answer = askedOfSystem(url, systemKeys);
    if (!answer) {
        return std::unexpected(answer.error());
    }
    for (std::size_t index = 0; index < missing.size(); ++index) {
        if (auto value = macos::valueOf(CFDictionaryGetValue(answer->get(), systemKeys[index]))) {
            values.set(missing[index], *std::move(value));
        }
    }
    return values;
}

} // namespace tolvane::platform
