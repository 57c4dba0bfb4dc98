#include "platform/bookmark/BookmarkResolution.h"

#include "platform/CocoaError.h"
#include "platform/Utf8.h"
#include "platform/bookmark/BookmarkReader.h"
#include "platform/bookmark/NumberSearch.h"
#include "platform/bookmark/VolumeRecognition.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace tolvane::platform {

namespace {

// Bits of the file flags.
constexpr std::uint64_t regularFileBit = 0x1;
constexpr std::uint64_t directoryBit = 0x2;
constexpr std::uint64_t symbolicLinkBit = 0x4;

// No system call takes a longer one, and what is done for each component of a path need not be counted.
constexpr std::size_t longestPath = 4'095;

std::vector<std::string> componentsOf(std::string_view path) {
    std::vector<std::string> components;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find('/'), path.size());
        if (end > 0) {
            components.emplace_back(path.substr(0, end));
        }
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return components;
}

bool isName(const std::string& component) {
    return !component.empty() && !component.contains('/') && !component.contains('\0');
}

bool isStep(const NumberedComponent& component) {
    return component.name == "." || component.name == "..";
}

std::string pathBelow(const std::string& mountPoint, std::span<const NumberedComponent> components) {
    std::string path = mountPoint == "/" ? std::string() : mountPoint;
    for (const NumberedComponent& component : components) {
        path += "/" + component.name;
    }
    return path.empty() ? "/" : path;
}

std::optional<MountedItemKind> storedKind(const std::optional<BookmarkFlags>& flags) {
    constexpr std::uint64_t kindBits = regularFileBit | directoryBit | symbolicLinkBit;
    if (!flags || (flags->valid & kindBits) != kindBits) {
        return std::nullopt;
    }
    switch (flags->values & kindBits) {
    case regularFileBit:
        return MountedItemKind::regularFile;
    case directoryBit:
        return MountedItemKind::folder;
    case symbolicLinkBit:
        return MountedItemKind::symbolicLink;
    default:
        return std::nullopt;
    }
}

/// An item at the path, and the volume that the path was tried on.
struct Candidate {
    MountedVolume volume;
    MountedItem item;
};

class Resolution {
public:
    Resolution(const BookmarkContents& contents, const MountedVolumes& mounted)
        : contents_(contents)
        , mounted_(mounted) {}

    Result<ResolvedBookmark> run() {
        if (const std::optional<Error> refusal = takePath()) {
            return std::unexpected(*refusal);
        }
        RecognisedVolumes recognised = recognisedVolumes(contents_.volume, mounted_);
        match_.volume = recognised.match;
        if (recognised.match == VolumeMatch::notNamed) {
            return asItStands();
        }
        if (recognised.volumes.empty()) {
            return std::unexpected(cocoaError(NSFileNoSuchFileError, sentenceOfMissingVolume()));
        }
        if (std::optional<std::string> refusal = takeBelowMountPoint()) {
            return std::unexpected(cocoaError(NSFileReadCorruptFileError, *refusal));
        }
        return onVolumes(recognised.volumes);
    }

private:
    /// Joins components and numbers.
    std::optional<Error> takePath() {
        if (!contents_.pathComponents) {
            return cocoaError(NSFileReadCorruptFileError, "The bookmark tells no path.");
        }
        std::size_t length = 0;
        for (const std::string& name : *contents_.pathComponents) {
            length += 1 + name.size();
            if (length > longestPath) {
                return cocoaError(
                    NSFileReadInvalidFileNameError, "The path of the bookmark is longer than any path here.");
            }
            if (!isName(name)) {
                return cocoaError(
                    NSFileReadCorruptFileError,
                    "The path of the bookmark has a component that no item can have as its name.");
            }
            components_.push_back({name, std::nullopt});
        }
        if (contents_.fileIDs && contents_.fileIDs->size() == components_.size()) {
            for (std::size_t i = 0; i < components_.size(); ++i) {
                if (const std::optional<std::int64_t> number = (*contents_.fileIDs)[i]) {
                    components_[i].fileNumber = static_cast<std::uint64_t>(*number);
                }
            }
        }
        if (!components_.empty() && components_.back().fileNumber) {
            match_.storedNumber = (*contents_.fileIDs)[components_.size() - 1];
        }
        match_.storedCreationDate = contents_.creationDate;
        return std::nullopt;
    }

    /// Leaves the components below the stored mount point, or answers why there are none.
    std::optional<std::string> takeBelowMountPoint() {
        const std::vector<std::string> above = componentsOf(contents_.volume.path.value_or("/"));
        const bool isBelow =
            above.size() <= components_.size()
            && std::ranges::equal(
                above, std::span(components_).first(above.size()), {}, {}, &NumberedComponent::name);
        if (!isBelow) {
            return "The path of the bookmark does not lie on the volume that it tells of.";
        }
        components_.erase(
            components_.begin(), components_.begin() + static_cast<std::ptrdiff_t>(above.size()));
        return std::nullopt;
    }

    /// What is at the path where the volume was mounted then is the target, whatever its number. Another
    /// place may show only a folder of the volume, or the bookmark may have been made where one was, so that
    /// the path is another there: its number has to tell, or there is nothing better to be found.
    Result<ResolvedBookmark> onVolumes(const std::vector<MountedVolume>& volumes) {
        std::vector<Candidate> candidates;
        for (const MountedVolume& volume : volumes) {
            if (const std::optional<Candidate> candidate = atPath(volume)) {
                candidates.push_back(*candidate);
            }
        }
        const auto first = [&](auto isGood) {
            const auto found = std::ranges::find_if(candidates, isGood);
            return found == candidates.end() ? nullptr : &*found;
        };
        const Candidate* candidate =
            first([&](const Candidate& each) { return match_.storedNumber && hasStoredNumber(each.item); });
        if (candidate == nullptr) {
            candidate = first([&](const Candidate& each) { return isWhereItWas(each.volume); });
        }
        if (candidate != nullptr) {
            return resolvedAtPath(*candidate);
        }
        if (auto resolved = byNumbersOn(volumes)) {
            return *std::move(resolved);
        }
        candidate = first([](const Candidate& each) { return each.volume.isWhole; });
        if (candidate != nullptr) {
            return resolvedAtPath(*candidate);
        }
        return std::unexpected(notFound(pathBelow(volumes.front().mountPoint, components_)));
    }

    bool isWhereItWas(const MountedVolume& volume) const {
        return volume.mountPoint == contents_.volume.path;
    }

    /// In the place of then and in one that shows the whole volume; in the others only without such a one,
    /// since they show nothing else.
    std::optional<ResolvedBookmark> byNumbersOn(const std::vector<MountedVolume>& volumes) {
        const auto whole = std::ranges::find_if(volumes, &MountedVolume::isWhole);
        for (auto volume = volumes.begin(); volume != volumes.end(); ++volume) {
            if (volume == whole || whole == volumes.end() || isWhereItWas(*volume)) {
                if (auto resolved = byNumbers(*volume, components_)) {
                    return resolved;
                }
            }
        }
        return std::nullopt;
    }

    Result<ResolvedBookmark> asItStands() {
        MountedVolume everything;
        everything.mountPoint = "/";
        const std::string path = pathBelow(everything.mountPoint, components_);
        const Result<MountedItem> item = itemAt(path);
        if (item) {
            return resolvedAtPath({everything, *item});
        }
        // The numbers count on the volume of the deepest folder that is there.
        for (std::size_t depth = components_.size(); depth-- > 0;) {
            const auto folder = mounted_.itemAt(pathBelow("/", std::span(components_).first(depth)));
            if (folder) {
                if (auto resolved = byNumbersBelow(folder->volume)) {
                    return *std::move(resolved);
                }
                break;
            }
        }
        return std::unexpected(notFound(path));
    }

    std::optional<ResolvedBookmark> byNumbersBelow(std::uint64_t volumeID) {
        const std::vector<MountedVolume>& volumes = mounted_.volumes();
        const auto volume = std::ranges::find(volumes, volumeID, &MountedVolume::id);
        if (volume == volumes.end()) {
            return std::nullopt;
        }
        const std::vector<std::string> above = componentsOf(volume->mountPoint);
        if (above.size() >= components_.size()
            || !std::ranges::equal(
                above, std::span(components_).first(above.size()), {}, {}, &NumberedComponent::name)) {
            return std::nullopt;
        }
        const auto below = std::span(components_).subspan(above.size());
        return byNumbers(*volume, {below.begin(), below.end()});
    }

    std::optional<Candidate> atPath(const MountedVolume& volume) {
        const Result<MountedItem> item = itemAt(pathBelow(volume.mountPoint, components_));
        if (!item || item->volume != volume.id) {
            return std::nullopt;
        }
        // A single file can be mounted too; the top of its volume is another item.
        const std::optional<MountedItemKind> kind = storedKind(contents_.fileFlags);
        if (components_.empty() && kind && item->kind != *kind) {
            return std::nullopt;
        }
        return Candidate{volume, *item};
    }

    Result<MountedItem> itemAt(const std::string& path) {
        Result<MountedItem> item = mounted_.itemAt(path);
        if (!item && item.error().domain == NSCocoaErrorDomain
            && item.error().code == NSFileReadNoPermissionError) {
            denial_ = item.error();
        }
        return item;
    }

    std::optional<ResolvedBookmark> byNumbers(
        const MountedVolume& volume, const std::vector<NumberedComponent>& components) {
        if (components.empty() || !components.back().fileNumber || !contents_.creationDate
            || std::ranges::any_of(components, isStep)) {
            return std::nullopt;
        }
        const NumberedItem wanted{
            *components.back().fileNumber, *contents_.creationDate, storedKind(contents_.fileFlags)};
        const NumberSearchResult found =
            findByNumbers(volume, components, wanted, mounted_, entriesRemaining_);
        searchWasCutShort_ = searchWasCutShort_ || found.wasCutShort;
        if (!found.path) {
            return std::nullopt;
        }
        const Result<MountedItem> item = mounted_.itemAt(*found.path);
        if (!item) {
            return std::nullopt;
        }
        match_.item = found.wasSearched ? ItemMatch::search : ItemMatch::fileNumbers;
        return resolved(*found.path, *item, true);
    }

    bool hasStoredNumber(const MountedItem& item) const {
        return !match_.storedNumber || static_cast<std::uint64_t>(*match_.storedNumber) == item.fileNumber;
    }

    ResolvedBookmark resolvedAtPath(const Candidate& candidate) {
        match_.item = ItemMatch::path;
        return resolved(
            pathBelow(candidate.volume.mountPoint, components_), candidate.item,
            !hasStoredNumber(candidate.item));
    }

    ResolvedBookmark resolved(const std::string& path, const MountedItem& item, bool isStale) {
        match_.actualNumber = static_cast<std::int64_t>(item.fileNumber);
        match_.actualCreationDate = item.creationDate;
        return {URL::fileURLWithPath(path), isStale, match_};
    }

    std::string sentenceOfMissingVolume() const {
        std::string sentence = "The volume of the bookmark is not mounted here";
        if (contents_.volume.name) {
            sentence += ": \u201C" + *contents_.volume.name + "\u201D";
        }
        if (contents_.volume.uuid) {
            sentence += ", UUID " + *contents_.volume.uuid;
        }
        return sentence + ".";
    }

    Error notFound(const std::string& path) const {
        if (denial_) {
            return *denial_;
        }
        if (components_.empty()) {
            return cocoaError(
                NSFileNoSuchFileError,
                "The bookmark leads to an item that was mounted on its own, and is not mounted now.");
        }
        std::string sentence = "Nothing is at " + shownText(path);
        if (!match_.storedNumber || !contents_.creationDate) {
            sentence += ", and the bookmark tells too little to find the item elsewhere.";
        } else if (searchWasCutShort_) {
            sentence += ", and the item was not found in the part of the volume that could be searched.";
        } else {
            sentence += ", and the item is nowhere else on the volume.";
        }
        return cocoaError(NSFileNoSuchFileError, sentence);
    }

    const BookmarkContents& contents_;
    const MountedVolumes& mounted_;
    std::vector<NumberedComponent> components_;
    BookmarkMatch match_;
    std::optional<Error> denial_;
    std::size_t entriesRemaining_ = mostEntriesSearched;
    bool searchWasCutShort_ = false;
};

} // namespace

Result<ResolvedBookmark> resolveBookmark(const BookmarkContents& contents, const MountedVolumes& mounted) {
    return Resolution(contents, mounted).run();
}

Result<ResolvedBookmark> resolveBookmarkData(std::span<const std::byte> data, const MountedVolumes& mounted) {
    const auto structure = readBookmark(data);
    if (!structure) {
        return std::unexpected(cocoaError(
            NSFileReadCorruptFileError, "This is no bookmark: at byte "
                                            + std::to_string(structure.error().offset) + ", expected "
                                            + std::string(structure.error().expected) + "."));
    }
    if (structure->header.isAliasFile()) {
        return std::unexpected(cocoaError(
            NSFileReadCorruptFileError, "These are the contents of an alias file, not bookmark data."));
    }
    return resolveBookmark(bookmarkContents(*structure), mounted);
}

} // namespace tolvane::platform
