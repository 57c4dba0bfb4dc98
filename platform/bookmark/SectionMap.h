#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace tolvane::platform {

/// Which bytes of a data section belong to which piece, a piece being a record or a table.
///
/// No byte belongs to two pieces. That is what keeps the reading of hostile bytes linear: however often
/// offsets lead somewhere, all pieces together hold no more elements than the section has bytes for. The map
/// itself takes three quarters of the section's length.
class SectionMap {
public:
    /// Every piece has a type and a length in front, so two of them start at least this far apart.
    static constexpr std::size_t leastPieceLength = 8;

    explicit SectionMap(std::size_t sectionLength);

    /// Gives bytes of the section, at least `leastPieceLength` of them, to a piece and remembers its number.
    /// False when one of them belongs to a piece already; then the map is of no more use.
    bool claim(std::size_t offset, std::size_t length, std::uint32_t number);

    /// The number of the piece that starts at an offset within the section.
    std::optional<std::uint32_t> pieceStartingAt(std::size_t offset) const;

private:
    std::vector<bool> claimed_;
    std::vector<bool> starts_;
    std::vector<std::uint32_t> numbers_; ///< One for each stretch of `leastPieceLength` bytes.
};

} // namespace tolvane::platform
