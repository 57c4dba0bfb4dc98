#include "platform/bookmark/resolution/BookmarkResolution.h"

#include "platform/bookmark/format/AliasBookmark.h"
#include "platform/bookmark/resolution/NumberSearch.h"
#include "platform/bookmark/resolution/VolumeRecognition.h"
#include "platform/values/Pieces.h"
#include "platform/values/Utf8.h"

namespace tolvane::platform {

namespace {

// System calls accept no longer path, and the work per component stays bounded.
constexpr std::size_t longestPath = 4'095;

std::vector<std::string> componentsOf(std::string_view path) {
    const auto components = nonEmptyPieces(path, '/');
    return {components.begin(), components.end()};
}

bool isName(const std::string& component) {
    return !component.empty() && !component.contains('/') && !component.contains('\0');
}

bool isStep(const NumberedComponent& component) {
    return component.name == "." || component.name == "..";
}

std::string pathBelow(const std::string& mountPoint, std::span<const NumberedComponent> components) {
    std::string path = mountPoint == "/" ? std::string() : mountPoint;
    std::size_t length = path.size();
    for (const NumberedComponent& component : components) {
        length += 1 + component.name.size();
    }
    path.reserve(length);
    for (const NumberedComponent& component : components) {
        path.append("/").append(component.name);
    }
    return path.empty() ? "/" : path;
}

std::optional<ItemKind> storedKind(const std::optional<BookmarkFlags>& flags) {
    constexpr std::uint64_t kindBits =
        file_flag::regularFile | file_flag::directory | file_flag::symbolicLink;
    if (!flags || (flags->valid & kindBits) != kindBits) {
        return std::nullopt;
    }
    switch (flags->values & kindBits) {
    case file_flag::regularFile:
        return ItemKind::regularFile;
    case file_flag::directory:
        return ItemKind::folder;
    case file_flag::symbolicLink:
        return ItemKind::symbolicLink;
    default:
        return std::nullopt;
    }
}

/// An item at the path, and the volume on which the path was tried.
struct Candidate {
    const MountedVolume* volume;
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
    using Volumes = std::vector<const MountedVolume*>;

    /// The path of a bookmark that contains a file URL only.
    std::optional<std::vector<std::string>> componentsOfURL() const {
        const auto url = contents_.url ? URL::fromText(*contents_.url) : std::nullopt;
        const auto path = url && url->isFileURL() ? url->fileSystemRepresentation() : std::nullopt;
        return path ? std::optional(componentsOf(*path)) : std::nullopt;
    }

    /// Joins components and numbers.
    std::optional<Error> takePath() {
        const auto namesOfURL = contents_.pathComponents ? std::nullopt : componentsOfURL();
        const auto& names = contents_.pathComponents ? contents_.pathComponents : namesOfURL;
        if (!names) {
            return contents_.url ? cocoaError(
                                       NSFileReadUnsupportedSchemeError,
                                       "The bookmark contains no path, only a URL that is not a file's: "
                                           + *contents_.url)
                                 : cocoaError(NSFileReadCorruptFileError, "The bookmark contains no path.");
        }
        components_.reserve(std::min(names->size(), longestPath));
        std::size_t length = 0;
        for (const std::string& name : *names) {
            length += 1 + name.size();
            if (length > longestPath) {
                return cocoaError(
                    NSFileReadInvalidFileNameError, "The path in the bookmark is too long for this system.");
            }
            if (!isName(name)) {
                return cocoaError(
                    NSFileReadCorruptFileError, "The path in the bookmark contains an invalid file name.");
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

    /// Keeps the components below the stored mount point; returns a message if there are none.
    std::optional<std::string> takeBelowMountPoint() {
        const std::vector<std::string> above = componentsOf(contents_.volume.path.value_or("/"));
        const bool isBelow =
            above.size() <= components_.size()
            && std::ranges::equal(
                above, std::span(components_).first(above.size()), {}, {}, &NumberedComponent::name);
        if (!isBelow) {
            return "The path and the volume in the bookmark do not match.";
        }
        components_.erase(
            components_.begin(), components_.begin() + static_cast<std::ptrdiff_t>(above.size()));
        return std::nullopt;
    }

    /// On the volume's old mount point, the item at the path is the target, whatever its number. Another
    /// mount point may show only a folder of the volume, or the old one did, so that the same path is another
    /// item: then its number must match, unless nothing better is found.
    Result<ResolvedBookmark> onVolumes(const Volumes& volumes) {
        std::vector<Candidate> candidates;
        for (const MountedVolume* const volume : volumes) {
            if (const std::optional<Candidate> candidate = atPath(*volume)) {
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
            candidate = first([&](const Candidate& each) { return isWhereItWas(*each.volume); });
        }
        if (candidate != nullptr) {
            return resolvedAtPath(*candidate);
        }
        if (auto resolved = byNumbersOn(volumes)) {
            return *std::move(resolved);
        }
        candidate = first([](const Candidate& each) { return each.volume->isWhole; });
        if (candidate != nullptr) {
            return resolvedAtPath(*candidate);
        }
        return std::unexpected(notFound(pathBelow(volumes.front()->mountPoint, components_)));
    }

    bool isWhereItWas(const MountedVolume& volume) const {
        return volume.mountPoint == contents_.volume.path;
    }

    /// Tries the old mount point and those that show the whole volume; the others only if there are none of
    /// these, since they show nothing else.
    std::optional<ResolvedBookmark> byNumbersOn(const Volumes& volumes) {
        const auto whole = std::ranges::find_if(volumes, &MountedVolume::isWhole);
        for (auto volume = volumes.begin(); volume != volumes.end(); ++volume) {
            if (volume == whole || whole == volumes.end() || isWhereItWas(**volume)) {
                if (auto resolved = byNumbers(**volume, components_)) {
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
            return resolvedAtPath({&everything, *item});
        }
        // The numbers are valid on the volume of the deepest existing folder.
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
        // A single file can be mounted too; the root of its volume is another item.
        const std::optional<ItemKind> kind = storedKind(contents_.fileFlags);
        if (components_.empty() && kind && item->kind != *kind) {
            return std::nullopt;
        }
        return Candidate{&volume, *item};
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
        const std::optional<Date>& date = dateToMatch();
        if (components.empty() || !components.back().fileNumber || !date
            || std::ranges::any_of(components, isStep)) {
            return std::nullopt;
        }
        const NumberedItem wanted{
            *components.back().fileNumber, *date, storedKind(contents_.fileFlags), !contents_.creationDate};
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

    const std::optional<Date>& dateToMatch() const {
        return contents_.creationDate ? contents_.creationDate : contents_.localCreationDate;
    }

    bool hasStoredNumber(const MountedItem& item) const {
        return !match_.storedNumber || static_cast<std::uint64_t>(*match_.storedNumber) == item.fileNumber;
    }

    ResolvedBookmark resolvedAtPath(const Candidate& candidate) {
        match_.item = ItemMatch::path;
        return resolved(
            pathBelow(candidate.volume->mountPoint, components_), candidate.item,
            !hasStoredNumber(candidate.item));
    }

    ResolvedBookmark resolved(const std::string& path, const MountedItem& item, bool isStale) {
        match_.actualNumber = static_cast<std::int64_t>(item.fileNumber);
        match_.actualCreationDate = item.creationDate;
        return {URL::fileURLWithPath(path), isStale, match_};
    }

    std::string sentenceOfMissingVolume() const {
        std::string sentence = "The bookmark's volume is not mounted";
        if (contents_.volume.name) {
            sentence += ": \u201C" + *contents_.volume.name + "\u201D";
        }
        if (contents_.volume.uuid) {
            sentence += ", UUID " + *contents_.volume.uuid;
        }
        sentence += ".";
        if (contents_.diskImagePath) {
            sentence += " It was mounted from the disk image " + shownText(*contents_.diskImagePath) + ".";
        }
        return sentence;
    }

    Error notFound(const std::string& path) const {
        if (denial_) {
            return *denial_;
        }
        if (components_.empty()) {
            return cocoaError(
                NSFileNoSuchFileError, "The bookmark's item was a mount point that is not mounted now.");
        }
        std::string sentence = "Nothing is at " + shownText(path);
        if (!match_.storedNumber || !dateToMatch()) {
            sentence += ", and the bookmark stores too little to search for the item.";
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
    const auto structure = readBookmarkOrAlias(data);
    if (!structure) {
        return std::unexpected(cocoaError(NSFileReadCorruptFileError, structure.error().sentence()));
    }
    if (structure->header.isAliasFile()) {
        return std::unexpected(cocoaError(
            NSFileReadCorruptFileError, "These are the contents of an alias file, not bookmark data."));
    }
    return resolveBookmark(targetContents(*structure), mounted);
}

} // namespace tolvane::platform
