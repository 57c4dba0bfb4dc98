#include "verification/VerifyChecksums.h"

#include "platform/values/Error.h"
#include "verification/ContentDigest.h"

#include <algorithm>
#include <memory>
#include <optional>

namespace tolvane::verification {

using platform::FileAnswer;
using platform::ItemLook;

namespace {

constexpr std::size_t pieceSize = std::size_t{1} << 18U;

std::string reasonOf(const std::error_code& error) {
    return platform::posixError(error.value()).localizedDescription();
}

/// Why reading ended before its time.
struct Ending {
    Fit fit;
    std::string reason;
};

std::optional<Ending> read(
    const std::string& path,
    const platform::FileContents& contents,
    const Progress& progress,
    std::span<const std::unique_ptr<ContentDigest>> digests) {
    const auto before = contents.lookAtTarget(path);
    if (!before) {
        return Ending{Fit::notRead, reasonOf(before.error())};
    }
    const auto file = contents.openForReading(path);
    if (!file) {
        return Ending{Fit::notRead, reasonOf(file.error())};
    }
    std::vector<std::byte> piece(pieceSize);
    std::uint64_t done = 0;
    while (true) {
        if (!progress(done, before->size)) {
            return Ending{Fit::stopped, {}};
        }
        const auto count = (*file)->read(done, piece);
        if (!count) {
            return Ending{Fit::notRead, reasonOf(count.error())};
        }
        for (const auto& digest : digests) {
            if (digest != nullptr) {
                digest->add(std::span(piece).first(*count));
            }
        }
        done += *count;
        if (*count < piece.size()) {
            break;
        }
    }
    const auto after = contents.lookAtTarget(path);
    if (!after || *after != *before || done != before->size) {
        return Ending{Fit::notRead, "The file changed while it was read"};
    }
    return std::nullopt;
}

} // namespace

std::string_view nameOf(Fit fit) {
    switch (fit) {
    case Fit::fits:
        return "fits";
    case Fit::doesNotFit:
        return "does not fit";
    case Fit::notComputable:
        return "cannot be computed";
    case Fit::notRead:
        return "cannot be read";
    case Fit::stopped:
        return "stopped";
    }
    return {};
}

std::vector<Verified> verifyChecksums(
    std::span<const attributes::StoredChecksum> checksums,
    const std::string& path,
    const platform::FileContents& contents,
    const Progress& progress) {
    std::vector<std::unique_ptr<ContentDigest>> digests;
    for (const attributes::StoredChecksum& checksum : checksums) {
        digests.push_back(digestFor(checksum.algorithm, checksum.digest.size()));
    }
    const bool isAny = std::ranges::any_of(digests, [](const auto& digest) { return digest != nullptr; });
    const auto ending = isAny ? read(path, contents, progress, digests) : std::nullopt;
    std::vector<Verified> results;
    for (std::size_t i = 0; i < checksums.size(); ++i) {
        Verified result{checksums[i].name, std::string(checksums[i].algorithm), Fit::notComputable, {}};
        if (digests[i] != nullptr && ending) {
            result.fit = ending->fit;
            result.reason = ending->reason;
        } else if (digests[i] != nullptr) {
            result.fit = digests[i]->finish() == checksums[i].digest ? Fit::fits : Fit::doesNotFit;
        }
        results.push_back(std::move(result));
    }
    return results;
}

std::string sentenceAbout(const Verified& verified) {
    const std::string start = verified.algorithm + " in " + verified.name + ": ";
    switch (verified.fit) {
    case Fit::fits:
        return start + "fits the content";
    case Fit::doesNotFit:
        return start + "does not fit the content";
    case Fit::notComputable:
        return start + "cannot be computed here";
    case Fit::notRead:
        return start + "the content cannot be read: " + verified.reason;
    case Fit::stopped:
        return start + "stopped";
    }
    return start;
}

} // namespace tolvane::verification
