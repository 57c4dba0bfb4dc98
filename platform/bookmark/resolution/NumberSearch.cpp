#include "platform/bookmark/resolution/NumberSearch.h"

#include <algorithm>
#include <cmath>
#include <deque>

namespace tolvane::platform {

namespace {

/// Two systems may convert one time stamp to doubles that differ in the last bits.
constexpr double sameMoment = 1e-6;

std::string joined(const std::string& folder, const std::string& name) {
    return (folder == "/" ? std::string() : folder) + "/" + name;
}

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
        std::size_t& remaining)
        : volume_(volume)
        , wanted_(wanted)
        , mounted_(mounted)
        , remaining_(remaining) {}

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
            paths.push_back(joined(paths.back(), component.name));
        }
        for (std::size_t depth = components.size() - 1; depth > 0; --depth) {
            if (components[depth - 1].fileNumber
                && isFolderHere(paths[depth], components[depth - 1].fileNumber)) {
                folder = paths[depth];
                return depth;
            }
        }
        folder = isFolderHere(volume_.mountPoint, std::nullopt) ? volume_.mountPoint : "";
        return 0;
    }

    /// The entry with the component's number; of several hard links the one with the stored name.
    std::optional<std::string> entryFor(
        const NumberedComponent& component, const std::string& folder, bool isLast) {
        if (!component.fileNumber) {
            return std::nullopt;
        }
        const std::vector<FolderEntry> entries = entriesOf(folder);
        for (const bool keptItsName : {true, false}) {
            for (const FolderEntry& entry : entries) {
                const bool isCandidate = entry.fileNumber == *component.fileNumber
                                         && (entry.name == component.name) == keptItsName;
                std::string path = isCandidate ? joined(folder, entry.name) : std::string();
                if (isCandidate && (isLast ? isWanted(path) : isFolderHere(path, component.fileNumber))) {
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
        std::deque<std::string> folders{top};
        while (!folders.empty()) {
            const std::string folder = std::move(folders.front());
            folders.pop_front();
            for (const FolderEntry& entry : entriesOf(folder)) {
                std::string path = joined(folder, entry.name);
                if (entry.fileNumber == wanted_.fileNumber && isWanted(path)) {
                    return path;
                }
                if (entry.mayBeFolder && path != searched && remaining_ > 0
                    && isFolderHere(path, std::nullopt)) {
                    folders.push_back(std::move(path));
                }
            }
        }
        return std::nullopt;
    }

    std::vector<FolderEntry> entriesOf(const std::string& folder) {
        if (remaining_ == 0) {
            wasCutShort_ = true;
            return {};
        }
        Result<std::vector<FolderEntry>> entries = mounted_.entriesOf(folder, remaining_);
        if (!entries) {
            wasCutShort_ = true;
            return {};
        }
        remaining_ -= std::min(remaining_, entries->size());
        wasCutShort_ = wasCutShort_ || remaining_ == 0;
        return *std::move(entries);
    }

    bool isHere(const MountedItem& item) const { return item.volume == volume_.id; }

    /// An inaccessible item, or one whose path is too long, may be the target.
    std::optional<MountedItem> itemAt(const std::string& path) {
        const Result<MountedItem> item = mounted_.itemAt(path);
        wasCutShort_ = wasCutShort_ || (!item && item.error().code != NSFileReadNoSuchFileError);
        return item ? std::optional(*item) : std::nullopt;
    }

    bool isFolderHere(const std::string& path, std::optional<std::uint64_t> fileNumber) {
        const std::optional<MountedItem> item = itemAt(path);
        return item && isHere(*item) && item->kind == ItemKind::folder
               && (!fileNumber || item->fileNumber == *fileNumber);
    }

    bool isWanted(const std::string& path) {
        const std::optional<MountedItem> item = itemAt(path);
        return item && isHere(*item) && item->fileNumber == wanted_.fileNumber
               && (!wanted_.kind || item->kind == *wanted_.kind) && item->creationDate
               && areSameMoment(*item->creationDate, wanted_.creationDate);
    }

    static bool areSameMoment(const Date& a, const Date& b) {
        return std::abs(a.timeIntervalSinceReferenceDate() - b.timeIntervalSinceReferenceDate()) < sameMoment;
    }

    const MountedVolume& volume_;
    const NumberedItem& wanted_;
    const MountedVolumes& mounted_;
    std::size_t& remaining_;
    bool wasCutShort_ = false;
};

} // namespace

NumberSearchResult findByNumbers(
    const MountedVolume& volume,
    const std::vector<NumberedComponent>& components,
    const NumberedItem& wanted,
    const MountedVolumes& mounted,
    std::size_t& remaining) {
    return Search(volume, wanted, mounted, remaining).run(components);
}

} // namespace tolvane::platform
