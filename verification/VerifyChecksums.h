#pragma once

#include "attributes/StoredChecksum.h"
#include "platform/services/FileContents.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace tolvane::verification {

enum class Fit {
    fits,
    doesNotFit,
    notComputable, ///< By an algorithm that is not known here.
    notRead,       ///< The content could not be read, or changed meanwhile.
    stopped        ///< The caller had enough.
};

/// "fits", "does not fit", "cannot be computed", "cannot be read" or "stopped".
std::string_view nameOf(Fit fit);

struct Verified {
    std::string name; ///< Of the attribute.
    std::string algorithm;
    Fit fit = Fit::notRead;
    std::string reason; ///< Why the content could not be read; otherwise empty.
};

/// Learns how many bytes were read and how many there were at first; false ends the reading.
using Progress = std::function<bool(std::uint64_t done, std::uint64_t size)>;

/// Reads the content of a regular file once and compares it with all checksums; the only function that reads
/// an inspected file's content besides the preview. A final symbolic link is followed, as it is for
/// attributes. The access date is kept where the system permits that. May be called on any thread. Nothing is
/// read if there is no checksum to be computed.
std::vector<Verified> verifyChecksums(
    std::span<const attributes::StoredChecksum> checksums,
    const std::string& path,
    const platform::FileContents& contents,
    const Progress& progress);

/// One sentence about the result, such as "Checksum user.sha256 (SHA-256): fits the content".
std::string sentenceAbout(const Verified& verified);

} // namespace tolvane::verification
