#include "platform/bookmark/resolution/NumberSearch.h"

#include "platform/bookmark/resolution/FolderReaders.h"
#include "platform/bookmark/resolution/LocalTime.h"

#include <algorithm>
#include <cmath>

namespace tolvane::platform {

namespace {

/// Two systems may convert one time stamp to doubles that differ in the last bits.
constexpr double sameMoment = 1e-6;

std::string parentOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == 0 ? "/" : path.substr(0, slash);
}

class Search {
public:
    Search(
        const MountedVolume& volume,
        const NumberedItem& wanted,
        const MountedVolumes& mounted,
        std::size_t& remaining,
        unsigned mostThreads)
        : volume_(volume)
        , wanted_(wanted)
        , mounted_(mounted)
        , remaining_(remaining)
        , mostThreads_(mostThreads) {}

    NumberSearchResult run(const std::vector<NumberedComponent>& components) {
        std::string folder;
        if (std::optional<std::string> found = alongPath(components, folder)) {
            return {std::move(found), false, false};
        }
        NumberSearchResult result{std::nullopt, true, false};
        if (!folder.empty()) {
            result.path = outward(folder);
        }
        result.wasCutShort = wasCutShort_;
        return result;
    }

private:
    /// Stores the deepest folder reached in `folder`; nothing if even the mount point is missing.
    std::optional<std::string> alongPath(
        const std::vector<NumberedComponent>& components, std::string& folder) {
        std::size_t depth = deepestKept(components, folder);
        while (!folder.empty() && depth < components.size()) {
            const bool isLast = depth + 1 == components.size();
            std::optional<std::string> next = entryFor(components[depth], folder, isLast);
            if (!next || isLast) {
                return next;
            }
            folder = *std::move(next);
            ++depth;
        }
        return std::nullopt;
    }

    /// The deepest folder that still has its number: its number of components, and its path.
    std::size_t deepestKept(const std::vector<NumberedComponent>& components, std::string& folder) {
        std::vector<std::string> paths{volume_.mountPoint};
        for (const NumberedComponent& component : components) {
            paths.push_back(pathOfEntry(paths.back(), component.name));
        }
        for (std::size_t depth = components.size() - 1; depth > 0; --depth) {
            if (components[depth - 1].fileNumber
                && isFolderHere(mounted_.itemAt(paths[depth]), components[depth - 1].fileNumber)) {
                folder = paths[depth];
                return depth;
            }
        }
        folder = isFolderHere(mounted_.itemAt(volume_.mountPoint), std::nullopt) ? volume_.mountPoint : "";
        return 0;
    }

    /// The entry with the component's number; of several hard links the one with the stored name.
    std::optional<std::string> entryFor(
        const NumberedComponent& component, const std::string& folder, bool isLast) {
        if (!component.fileNumber) {
            return std::nullopt;
        }
        const std::vector<FolderEntry> entries = entriesOf(folder, *component.fileNumber);
        for (const bool keptItsName : {true, false}) {
            for (const FolderEntry& entry : entries) {
                const bool isCandidate = entry.fileNumber == *component.fileNumber
                                         && (entry.name == component.name) == keptItsName;
                std::string path = isCandidate ? pathOfEntry(folder, entry.name) : std::string();
                if (!isCandidate) {
                    continue;
                }
                const Result<MountedItem> item = mounted_.itemAt(path);
                if (isLast ? isWanted(item) : isFolderHere(item, component.fileNumber)) {
                    return path;
                }
            }
        }
        return std::nullopt;
    }

    std::optional<std::string> outward(const std::string& start) {
        std::string searched;
        for (std::string folder = start;; folder = parentOf(folder)) {
            if (std::optional<std::string> found = treeBelow(folder, searched)) {
                return found;
            }
            if (folder == volume_.mountPoint || folder == "/" || remaining_ == 0) {
                return std::nullopt;
            }
            searched = folder;
        }
    }

    /// Searches level by level, so that nearer items are found first.
    std::optional<std::string> treeBelow(const std::string& top, const std::string& searched) {
        FolderReaders folders(mounted_, wanted_.fileNumber, mostThreads_);
        folders.add(top);
        while (!folders.empty()) {
            if (remaining_ == 0) {
                wasCutShort_ = true;
                return std::nullopt;
            }
            FolderLook look = folders.next(remaining_);
            take(look.wasRead ? std::optional(look.count) : std::nullopt);
            for (EntryLook& each : look.entries) {
                if (each.entry.fileNumber == wanted_.fileNumber && isWanted(each.item)) {
                    return std::move(each.path);
                }
                if (each.entry.mayBeFolder && each.path != searched && remaining_ > 0
                    && isFolderHere(each.item, std::nullopt)) {
                    folders.add(std::move(each.path));
                }
            }
        }
        return std::nullopt;
    }

    std::vector<FolderEntry> entriesOf(const std::string& folder, std::uint64_t fileNumber) {
        if (remaining_ == 0) {
            wasCutShort_ = true;
            return {};
        }
        Result<FolderEntries> read = mounted_.entriesOf(folder, fileNumber, remaining_);
        take(read ? std::optional(read->count) : std::nullopt);
        return read ? std::move(read->entries) : std::vector<FolderEntry>();
    }

    /// Takes account of a folder that was read, with so many entries, or could not be read.
    void take(std::optional<std::size_t> count) {
        remaining_ -= std::min(remaining_, count.value_or(0));
        wasCutShort_ = wasCutShort_ || !count || remaining_ == 0;
    }

    bool isHere(const MountedItem& item) const { return item.volume == volume_.id; }

    /// An inaccessible item, or one whose path is too long, may be the target.
    bool isThere(const Result<MountedItem>& item) {
        wasCutShort_ = wasCutShort_ || (!item && item.error().code != NSFileReadNoSuchFileError);
        return item.has_value();
    }

    bool isFolderHere(const Result<MountedItem>& item, std::optional<std::uint64_t> fileNumber) {
        return isThere(item) && isHere(*item) && item->kind == ItemKind::folder
               && (!fileNumber || item->fileNumber == *fileNumber);
    }

    bool isWanted(const Result<MountedItem>& item) {
        return isThere(item) && isHere(*item) && item->fileNumber == wanted_.fileNumber
               && (!wanted_.kind || item->kind == *wanted_.kind) && item->creationDate
               && (wanted_.isDateLocal ? isLocalTimeOf(wanted_.creationDate, *item->creationDate)
                                       : areSameMoment(*item->creationDate, wanted_.creationDate));
    }

    static bool areSameMoment(const Date& a, const Date& b) {
        return std::abs(a.timeIntervalSinceReferenceDate() - b.timeIntervalSinceReferenceDate()) < sameMoment;
    }

    const MountedVolume& volume_;
    const NumberedItem& wanted_;
    const MountedVolumes& mounted_;
    std::size_t& remaining_;
    unsigned mostThreads_;
    bool wasCutShort_ = false;
};

} // namespace

NumberSearchResult findByNumbers(
    const MountedVolume& volume,
    const std::vector<NumberedComponent>& components,
    const NumberedItem& wanted,
    const MountedVolumes& mounted,
    std::size_t& remaining,
    unsigned mostThreads) {
    return Search(volume, wanted, mounted, remaining, mostThreads).run(components);
}

} // namespace tolvane::platform
