#include "platform/linux/bookmarks/BookmarkMaker.h"

#include "platform/bookmark/format/BookmarkComposer.h"
#include "platform/linux/volumes/FileSystemKind.h"
#include "platform/linux/volumes/VolumeCrossings.h"
#include "platform/services/URLResources.h"
#include "platform/values/Utf8.h"

#include <cerrno>

namespace tolvane::platform {

namespace {

// A path that changes that often while it is looked at changes all the time.
constexpr int mostAttempts = 4;

Error errorOfWay(const Error& error) {
    switch (error.code) {
    case ENOENT:
    case ENOTDIR:
        return cocoaError(NSFileReadNoSuchFileError, "The item was not found.");
    case EACCES:
    case EPERM:
        return cocoaError(
            NSFileReadNoPermissionError, "A folder on the way to the item may not be searched.");
    case ENAMETOOLONG:
        return cocoaError(NSFileReadInvalidFileNameError, "The path to the item is too long.");
    case ELOOP:
        return cocoaError(NSFileReadUnknownError, "The path contains too many symbolic links.");
    default:
        return cocoaError(
            NSFileReadUnknownError, "The item cannot be accessed: " + error.localizedDescription() + ".");
    }
}

// Whether the URL still leads to the item whose identity it stores, otherwise to the one at its real path.
// Some links of the kernel lead elsewhere than their text says.
Result<bool> isMeant(const ItemStatus& item, const URL& url, const std::string& path) {
    const Value* const kept = url.keptResourceValue(NSURLFileResourceIdentifierKey);
    if (const auto* identifier = kept != nullptr ? kept->as<Data>() : nullptr) {
        return *identifier == resourceIdentifier(item);
    }
    const auto status = statusOfItem(path);
    return status ? Result<bool>(isSameItem(*status, item)) : std::unexpected(status.error());
}

std::uint64_t kindFlag(std::uint32_t mode) {
    switch (kindOfMode(mode)) {
    case ItemKind::regularFile:
        return file_flag::regularFile;
    case ItemKind::folder:
        return file_flag::directory;
    case ItemKind::symbolicLink:
        return file_flag::symbolicLink;
    default:
        return 0;
    }
}

Error errorOfName() {
    return cocoaError(
        NSFileReadInvalidFileNameError,
        "A name on the way to the item is not UTF-8, and a bookmark cannot hold it.");
}

bool areText(const std::vector<std::string>& components) {
    return std::ranges::all_of(components, isValidUtf8);
}

// The numbers of the items on the way, each on its volume; none on volumes that make them up.
std::vector<std::optional<std::int64_t>> lastingNumbers(
    const RealPath& path, const std::vector<VolumeCrossing>& crossings) {
    std::vector<std::optional<std::int64_t>> numbers;
    auto volume = crossings.begin();
    for (std::size_t depth = 1; depth < path.items.size(); ++depth) {
        while (volume + 1 != crossings.end() && (volume + 1)->depth <= depth) {
            ++volume;
        }
        const bool areLasting = hasLastingFileNumbers(volume->mount.type);
        // Stored as signed, bit for bit: some file systems use the highest bit.
        numbers.push_back(
            areLasting ? std::optional(static_cast<std::int64_t>(path.items[depth].fileNumber))
                       : std::nullopt);
    }
    return numbers;
}

// For each depth the identifier of the table for the volume mounted there, or 0.
std::vector<std::uint32_t> volumeDepths(const RealPath& path, const std::vector<VolumeCrossing>& crossings) {
    std::vector<std::uint32_t> depths(path.items.size(), 0);
    depths[0] = table_identifier::rootVolume;
    for (std::size_t i = 1; i + 1 < crossings.size(); ++i) {
        depths[crossings[i].depth] = table_identifier::firstVolumeBetween + static_cast<std::uint32_t>(i - 1);
    }
    depths[crossings.back().depth] = table_identifier::target;
    return depths;
}

} // namespace

Result<Data> BookmarkMaker::bookmarkData(const URL& url) {
    const auto made = contents(url);
    return made ? bookmarkDataOf(*made) : std::unexpected(made.error());
}

Result<Data> bookmarkDataOf(const BookmarkContents& made) {
    auto data = composeBookmark(made);
    if (!data) {
        return std::unexpected(cocoaError(
            NSFileReadUnknownError,
            "A bookmark cannot hold this: " + std::string(data.error().reason) + "."));
    }
    return *std::move(data);
}

Result<BookmarkContents> BookmarkMaker::contents(const URL& url) {
    if (!url.isFileURL()) {
        return std::unexpected(
            cocoaError(NSFileReadUnsupportedSchemeError, "A bookmark requires a file URL."));
    }
    const auto path = url.fileSystemRepresentation();
    if (!path) {
        return std::unexpected(errorOfWay(posixError(ENOENT)));
    }
    if (auto made = contentsInKnownFolder(url, *path)) {
        return *std::move(made);
    }
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        const auto table = mounts_.table();
        if (!table) {
            return std::unexpected(cocoaError(
                NSFileReadUnknownError,
                "The mounted volumes cannot be read: " + table.error().localizedDescription() + "."));
        }
        auto real = realPathOfItem(*path);
        if (!real) {
            return std::unexpected(errorOfWay(real.error()));
        }
        if (!areText(real->components)) {
            return std::unexpected(errorOfName());
        }
        const auto isIt = isMeant(real->items.back(), url, *path);
        if (!isIt) {
            return std::unexpected(errorOfWay(isIt.error()));
        }
        auto made = *isIt ? contentsOf(*real, *table) : std::nullopt;
        if (made && isUnchanged(*real)) {
            keepFolder(*path, *std::move(real), *table, *made);
            return *std::move(made);
        }
    }
    return std::unexpected(
        cocoaError(NSFileReadUnknownError, "The item at the path was replaced or is changing."));
}

// Nothing when no look at the folder is kept or can be used: then all is looked at. The look was taken before
// the item is looked at; that it is true afterwards, with the same item there, makes all of it true at one
// moment.
std::optional<BookmarkContents> BookmarkMaker::contentsInKnownFolder(
    const URL& url, const std::string& path) {
    const std::size_t slash = path.rfind('/');
    std::string name = path.substr(slash + 1);
    const auto look = knownFolders_.at(std::string_view(path).substr(0, slash));
    if (!look || name.empty() || name == "." || name == ".." || !isValidUtf8(name)) {
        return std::nullopt;
    }
    const auto item = statusOfItem(path);
    const Value* const identity = url.keptResourceValue(NSURLFileResourceIdentifierKey);
    const auto* const meant = identity != nullptr ? identity->as<Data>() : nullptr;
    if (!item || item->mountID != look->way.items.back().mountID
        || (meant != nullptr && *meant != resourceIdentifier(*item))) {
        return std::nullopt;
    }
    BookmarkContents contents = look->contents;
    contents.pathComponents->back() = std::move(name);
    if (auto& number = contents.fileIDs->back()) {
        number = static_cast<std::int64_t>(item->fileNumber);
    }
    contents.creationDate = item->creationDate;
    contents.fileFlags->values = kindFlag(item->mode);
    if (!isUnchangedBelowRoot(look->way)) {
        return std::nullopt;
    }
    const auto still = statusOfItem(path);
    const bool isTrue = still && isSameItem(*still, *item) && mounts_.table() == look->table;
    return isTrue ? std::optional(std::move(contents)) : std::nullopt;
}

// Only where the path says itself where the folder is, and where the item is on the folder's volume.
void BookmarkMaker::keepFolder(
    const std::string& path,
    RealPath real,
    std::shared_ptr<const MountTable> table,
    const BookmarkContents& contents) {
    const std::size_t depth = real.components.size();
    if (depth == 0 || path != real.textDownTo(depth) || !real.items.back().mountID
        || real.items[depth - 1].mountID != real.items[depth].mountID) {
        return;
    }
    real.components.pop_back();
    real.items.pop_back();
    knownFolders_.keep({path.substr(0, path.rfind('/')), std::move(real), std::move(table), contents});
}

// Nothing when the mounts on the way are not in the table.
std::optional<BookmarkContents> BookmarkMaker::contentsOf(
    const RealPath& path, const std::shared_ptr<const MountTable>& table) {
    const auto crossings = volumeCrossings(path, *table);
    if (!crossings) {
        return std::nullopt;
    }
    const ItemStatus& item = path.items.back();
    BookmarkContents contents;
    contents.pathComponents = path.components;
    contents.fileIDs = lastingNumbers(path, *crossings);
    contents.creationDate = item.creationDate;
    contents.volume = volumes_.whole(table, crossings->back().mount);
    std::uint64_t flags = kindFlag(item.mode);
    if (flags == file_flag::directory && crossings->back().depth == path.components.size()) {
        flags |= file_flag::volume;
        contents.fileName = contents.volume.name;
    }
    contents.fileFlags = BookmarkFlags{flags, plainFileFlagMask, 0};
    if (crossings->size() > 1) {
        contents.rootVolume = volumes_.whole(table, crossings->front().mount);
        contents.rootVolume->wasBoot = false; // stored for the target's volume alone
        for (std::size_t i = 1; i + 1 < crossings->size(); ++i) {
            contents.volumesBetween.push_back(volumes_.whole(table, (*crossings)[i].mount));
        }
        contents.volumeDepths = volumeDepths(path, *crossings);
    }
    contents.options = bookmark_option::withoutImplicitSecurityScope;
    addHome(contents, path);
    return contents;
}

// The home folder is recognised by its identity, since its path may contain links.
void BookmarkMaker::addHome(BookmarkContents& contents, const RealPath& path) {
    const auto account = account_.account();
    if (!account || path.components.empty()) {
        return;
    }
    const auto home = statusOfItem(account->home + "/");
    if (!home) {
        return;
    }
    for (std::size_t depth = 0; depth < path.components.size(); ++depth) {
        if (isSameItem(path.items[depth], *home)) {
            contents.componentsBelowHome = static_cast<std::int64_t>(path.components.size() - depth);
            contents.userName = account->name;
            contents.userID = account->id;
        }
    }
}

} // namespace tolvane::platform
