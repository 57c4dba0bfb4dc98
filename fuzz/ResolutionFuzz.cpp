// Resolves any bookmark on volumes that have something at most paths.
#include "fuzz/Fuzz.h"
#include "platform/bookmark/format/AliasBookmark.h"
#include "platform/bookmark/resolution/BookmarkResolution.h"
#include "platform/values/Error.h"

#include <algorithm>
#include <atomic>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace tolvane;

/// Volumes that have something at most paths. Whether, what it is and its number depend only on the path and
/// the bookmark's bytes. Numbers, times and volumes are often the bookmark's, so that all ways to its item
/// occur.
class AnyVolumes final : public platform::MountedVolumes {
public:
    AnyVolumes(const platform::BookmarkContents& contents, std::size_t seed)
        : contents_(contents)
        , seed_(seed)
        , likely_(seed % 3 + 1) {
        volumes_.resize(3);
        volumes_[0].mountPoint = "/";
        const std::string then = contents.volume.path.value_or("");
        const bool canBeMounted = then.starts_with('/') && !then.ends_with('/') && !then.contains('\0');
        volumes_[1].mountPoint = seed % 3 == 0 && canBeMounted ? then : "/Volumes/Disk";
        volumes_[2].mountPoint = "/mnt";
        for (std::size_t i = 0; i < volumes_.size(); ++i) {
            volumes_[i].id = i + 1;
            volumes_[i].device = seed % 5 == 0 ? 1 : i / 2 + 1;
            volumes_[i].isWhole = (seed >> i) % 4 != 0;
            volumes_[i].name = contents.volume.name;
        }
        for (const auto& number : contents.fileIDs.value_or(std::vector<std::optional<std::int64_t>>())) {
            numbers_.push_back(static_cast<std::uint64_t>(number.value_or(0)));
        }
    }

    const std::vector<platform::MountedVolume>& volumes() const override { return volumes_; }

    std::optional<std::string> uuid(const platform::MountedVolume& volume) const override {
        if (isLikely(volume)) {
            return contents_.volume.uuid;
        }
        return volume.id % 2 == 0 ? std::optional<std::string>("11111111-2222-3333-4444-555555555555")
                                  : std::nullopt;
    }

    std::optional<std::int64_t> capacity(const platform::MountedVolume& volume) const override {
        return isLikely(volume) ? contents_.volume.capacity : std::nullopt;
    }

    std::optional<platform::Date> creationDate(const platform::MountedVolume& volume) const override {
        return isLikely(volume) ? contents_.volume.creationDate : std::nullopt;
    }

    platform::Result<platform::MountedItem> itemAt(const std::string& path) const override {
        fuzz::require(path.starts_with('/') && !path.contains('\0'), "paths are absolute and whole");
        fuzz::require(++calls_ < mostCalls, "no more is looked at than the bookmark is long");
        Choices any(std::hash<std::string>{}(path) ^ seed_);
        if (any.among(4) == 0) {
            return std::unexpected(platform::cocoaError(
                any.among(2) == 0 ? platform::NSFileReadNoSuchFileError
                                  : platform::NSFileReadNoPermissionError,
                path));
        }
        const std::uint64_t volume = any.among(4) == 0 ? any.among(4) : likely_;
        const std::uint64_t number = numberFor(any);
        const auto kind = static_cast<platform::ItemKind>(any.among(4));
        const bool isOfThen = contents_.creationDate && any.among(4) != 0;
        return platform::MountedItem{
            volume, number, kind, isOfThen ? *contents_.creationDate : platform::Date(700'000'000.5)};
    }

    platform::Result<platform::FolderEntries> entriesOf(
        const std::string& folder, std::uint64_t fileNumber, std::size_t most) const override {
        constexpr std::ptrdiff_t deepest = 9;
        if (std::ranges::count(folder, '/') > deepest || most < 4) {
            return std::unexpected(platform::cocoaError(platform::NSFileReadUnknownError, folder));
        }
        Choices any(std::hash<std::string>{}(folder) ^ seed_ ^ 1U);
        std::vector<platform::FolderEntry> entries;
        for (const std::string name : {"a", "b", "note.txt"}) {
            entries.push_back({name, numberFor(any), any.among(2) == 0, entries.size()});
        }
        if (contents_.pathComponents && !contents_.pathComponents->empty()) {
            entries.push_back({contents_.pathComponents->back(), numberFor(any), true, entries.size()});
        }
        const std::size_t count = entries.size();
        std::erase_if(entries, [&](const platform::FolderEntry& entry) {
            return !entry.mayBeFolder && entry.fileNumber != fileNumber;
        });
        return platform::FolderEntries{std::move(entries), count};
    }

private:
    static constexpr std::size_t mostCalls = 500'000;

    bool isLikely(const platform::MountedVolume& volume) const {
        return volume.id == likely_ && seed_ / 7 % 8 != 0;
    }

    /// Small numbers drawn from a large one.
    class Choices {
    public:
        explicit Choices(std::size_t source) : source_(source) {}
        std::size_t among(std::size_t count) {
            source_ = source_ * 6'364'136'223'846'793'005U + 1'442'695'040'888'963'407U;
            return (source_ >> 33U) % count;
        }

    private:
        std::size_t source_;
    };

    std::uint64_t numberFor(Choices& any) const {
        return numbers_.empty() || any.among(4) == 0 ? any.among(8) : numbers_[any.among(numbers_.size())];
    }

    const platform::BookmarkContents& contents_;
    std::size_t seed_;
    std::uint64_t likely_; ///< The volume that most items are on.
    std::vector<std::uint64_t> numbers_;
    std::vector<platform::MountedVolume> volumes_;
    mutable std::atomic<std::size_t> calls_ = 0;
};

bool isAtOrBelow(std::string_view path, std::string_view folder) {
    return folder == "/"
           || (path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/'));
}

std::string shown(const std::optional<platform::Date>& date) {
    return date ? date->description() : "none";
}

/// Whether the target exists, is on a matching volume, and is reported correctly.
void checkTarget(const platform::ResolvedBookmark& resolved, const AnyVolumes& volumes) {
    const std::string path = resolved.url->path();
    const platform::BookmarkMatch& match = resolved.match;
    const auto item = volumes.itemAt(path);
    fuzz::require(item.has_value(), "something is at the path of a target");
    fuzz::require(
        match.actualNumber == static_cast<std::int64_t>(item->fileNumber), "a target's number is told");
    fuzz::require(
        shown(match.actualCreationDate) == shown(item->creationDate), "a target's date of creation is told");
    const auto isItsVolume = [&](const platform::MountedVolume& volume) {
        return volume.id == item->volume && isAtOrBelow(path, volume.mountPoint);
    };
    fuzz::require(
        match.volume == platform::VolumeMatch::notNamed
            || std::ranges::any_of(volumes.volumes(), isItsVolume),
        "a target is on the volume that is mounted above it");
    const bool hasOtherNumber = match.storedNumber && match.storedNumber != match.actualNumber;
    fuzz::require(
        resolved.isStale == (match.item != platform::ItemMatch::path || hasOtherNumber),
        "what is found elsewhere or has another number is stale, and nothing else");
}

/// The contents of the bookmark, if it is readable.
platform::BookmarkContents contentsOf(std::span<const std::byte> bytes) {
    const auto structure = platform::readBookmarkOrAlias(bytes);
    return structure ? platform::targetContents(*structure) : platform::BookmarkContents();
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto bytes = fuzz::bytesOf(data, size);
    const platform::BookmarkContents contents = contentsOf(bytes);
    const AnyVolumes volumes(contents, std::hash<std::string_view>{}(fuzz::textOf(data, size)));
    const auto resolved = platform::resolveBookmarkData(bytes, volumes);
    if (resolved) {
        fuzz::require(resolved->url && resolved->url->path().starts_with('/'), "a target has a path");
        checkTarget(*resolved, volumes);
        fuzz::require(
            resolved->match.item == platform::ItemMatch::path
                || (resolved->match.storedNumber
                    && resolved->match.actualNumber == resolved->match.storedNumber),
            "what is found elsewhere has the number");
    } else {
        fuzz::require(!resolved.error().localizedDescription().empty(), "a failure has its sentence");
    }
    return 0;
}
