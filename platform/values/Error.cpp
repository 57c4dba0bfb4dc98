#include "platform/values/Error.h"

#include <cstring>

namespace tolvane::platform {

std::string Error::localizedDescription() const {
    if (const Value* entry = userInfo.find(NSLocalizedDescriptionKey)) {
        if (const auto* text = entry->as<std::string>()) {
            return *text;
        }
    }
    return domain + " error " + std::to_string(code);
}

Error posixError(int errorNumber) {
    return {
        std::string(NSPOSIXErrorDomain),
        errorNumber,
        {{std::string(NSLocalizedDescriptionKey), std::strerror(errorNumber)}}};
}

Error cocoaError(std::int64_t code, std::string_view sentence) {
    return {std::string(NSCocoaErrorDomain), code, {{std::string(NSLocalizedDescriptionKey), sentence}}};
}

} // namespace tolvane::platform
