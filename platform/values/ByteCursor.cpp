#include "platform/values/ByteCursor.h"

namespace tolvane::platform {

void ByteCursor::seek(std::size_t position) {
    if (failed() || position > bytes_.size()) {
        failedAt_ = failedAt_.value_or(position_);
        return;
    }
    position_ = position;
}

} // namespace tolvane::platform
