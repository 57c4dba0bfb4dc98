#include "platform/bookmark/SectionMap.h"

namespace tolvane::platform {

SectionMap::SectionMap(std::size_t sectionLength)
    : claimed_(sectionLength)
    , starts_(sectionLength)
    , numbers_(sectionLength / leastPieceLength + 1) {}

bool SectionMap::claim(std::size_t offset, std::size_t length, std::uint32_t number) {
    for (std::size_t i = offset; i < offset + length; ++i) {
        if (claimed_[i]) {
            return false;
        }
        claimed_[i] = true;
    }
    starts_[offset] = true;
    numbers_[offset / leastPieceLength] = number;
    return true;
}

std::optional<std::uint32_t> SectionMap::pieceStartingAt(std::size_t offset) const {
    if (!starts_[offset]) {
        return std::nullopt;
    }
    return numbers_[offset / leastPieceLength];
}

} // namespace tolvane::platform
