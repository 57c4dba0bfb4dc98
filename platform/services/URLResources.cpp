#include "platform/services/URLResources.h"

namespace tolvane::platform {

std::optional<std::string> URLResourceValues::typeIdentifier() const {
    const Value* value = values_.find(NSURLTypeIdentifierKey);
    const auto* text = value != nullptr ? value->as<std::string>() : nullptr;
    return text != nullptr ? std::optional(*text) : std::nullopt;
}

std::optional<std::int64_t> URLResourceValues::integer(std::string_view key) const {
    const Value* value = values_.find(key);
    return value != nullptr ? value->exactInt64() : std::nullopt;
}

} // namespace tolvane::platform
