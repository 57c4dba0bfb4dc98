#include "platform/values/ByteCursor.h"

#include <ranges>

namespace tolvane::platform {

std::span<const std::byte> ByteCursor::take(std::size_t count) {
    if (failed() || count > bytes_.size() - position_) {
        failedAt_ = failedAt_.value_or(position_);
        return {};
    }
    return bytes_.subspan(std::exchange(position_, position_ + count), count);
}

void ByteCursor::seek(std::size_t position) {
    if (failed() || position > bytes_.size()) {
        failedAt_ = failedAt_.value_or(position_);
        return;
    }
    position_ = position;
}

std::uint64_t ByteCursor::littleEndian(std::size_t width) {
    std::uint64_t number = 0;
    for (const std::byte byte : std::views::reverse(take(width))) {
        number = (number << 8U) | std::to_integer<std::uint64_t>(byte);
    }
    return number;
}

std::uint64_t ByteCursor::bigEndian(std::size_t width) {
    std::uint64_t number = 0;
    for (const std::byte byte : take(width)) {
        number = (number << 8U) | std::to_integer<std::uint64_t>(byte);
    }
    return number;
}

} // namespace tolvane::platform
