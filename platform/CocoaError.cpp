#include "platform/CocoaError.h"

#include <string>

namespace tolvane::platform {

Error cocoaError(std::int64_t code, std::string_view sentence) {
    return {std::string(NSCocoaErrorDomain), code, {{std::string(NSLocalizedDescriptionKey), sentence}}};
}

} // namespace tolvane::platform
