#pragma once

#include "platform/values/Error.h"
#include "platform/values/URL.h"
#include "platform/values/Value.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tolvane::platform {

/// Size of the item's data in bytes, integer. Only regular files and symbolic links have one.
inline constexpr std::string_view NSURLFileSizeKey = "NSURLFileSizeKey";
/// Size of all forks in bytes, integer: the data and a resource fork. Absent where the file size is.
inline constexpr std::string_view NSURLTotalFileSizeKey = "NSURLTotalFileSizeKey";
/// Uniform type identifier, text.
inline constexpr std::string_view NSURLTypeIdentifierKey = "NSURLTypeIdentifierKey";
/// When the item was created, date. Only where the file system keeps that.
inline constexpr std::string_view NSURLCreationDateKey = "NSURLCreationDateKey";
/// When the item's data or attributes were last modified, date.
inline constexpr std::string_view NSURLAttributeModificationDateKey = "NSURLAttributeModificationDateKey";
/// 16 bytes of data in the machine's byte order: the file number, then the device number.
inline constexpr std::string_view NSURLFileResourceIdentifierKey = "NSURLFileResourceIdentifierKey";

/// Returns resource values of the item itself: a final symbolic link is not followed. The terminal program
/// asks from several threads at a time.
class URLResources {
public:
    virtual ~URLResources() = default;

    /// The values of those keys that the item has, from one look at the item. Values that the URL stores are
    /// returned instead; if it stores all of them the item is not accessed. Fails if it cannot be accessed.
    virtual Result<Dictionary> resourceValuesForKeys(
        const URL& url, std::span<const std::string_view> keys) const = 0;
};

/// Typed access to resource values. A value of the wrong type counts as absent.
class URLResourceValues {
public:
    explicit URLResourceValues(Dictionary values) : values_(std::move(values)) {}

    std::optional<std::int64_t> fileSize() const { return integer(NSURLFileSizeKey); }
    std::optional<std::int64_t> totalFileSize() const { return integer(NSURLTotalFileSizeKey); }
    std::optional<std::string> typeIdentifier() const {
        const Value* value = values_.find(NSURLTypeIdentifierKey);
        const auto* text = value != nullptr ? value->as<std::string>() : nullptr;
        return text != nullptr ? std::optional(*text) : std::nullopt;
    }

private:
    std::optional<std::int64_t> integer(std::string_view key) const {
        const Value* value = values_.find(key);
        return value != nullptr ? value->exactInt64() : std::nullopt;
    }

    Dictionary values_;
};

} // namespace tolvane::platform
