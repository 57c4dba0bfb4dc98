#include "platform/bookmark/format/AliasBookmark.h"

#include "platform/bookmark/format/BookmarkHeader.h"
#include "platform/bookmark/format/BookmarkReader.h"
#include "platform/bookmark/format/SectionComposer.h"
#include "platform/values/ByteCursor.h"
#include "platform/values/Pieces.h"

#include <algorithm>

namespace tolvane::platform {

namespace {

using Components = std::vector<std::string>;

Components componentsOf(std::string_view path) {
    const auto pieces = nonEmptyPieces(path, '/');
    return {pieces.begin(), pieces.end()};
}

/// A Carbon path is divided by colons and begins with the volume; its names have slashes where POSIX names
/// have colons. Nothing for paths with steps upward, which are empty components.
std::optional<Components> componentsOfCarbonPath(std::string_view path) {
    takeUntil(':', path);
    Components components;
    while (!path.empty()) {
        std::string name(takeUntil(':', path));
        if (name.empty()) {
            return std::nullopt;
        }
        std::ranges::replace(name, '/', ':');
        components.push_back(std::move(name));
    }
    return components;
}

std::optional<Components> componentsOnVolume(const AliasRecord& record) {
    if (record.posixPath) {
        return componentsOf(*record.posixPath);
    }
    return record.carbonPath ? componentsOfCarbonPath(*record.carbonPath) : std::nullopt;
}

std::optional<std::int64_t> fileNumber(std::optional<std::uint32_t> number) {
    return number && *number != 0 ? std::optional<std::int64_t>(*number) : std::nullopt;
}

/// For each component the number of its item, as far as the record has them; `above` components lead to the
/// mount point.
std::vector<std::optional<std::int64_t>> numbersAlong(
    const AliasRecord& record, std::size_t components, std::size_t above) {
    std::vector<std::optional<std::int64_t>> numbers(components);
    if (components == above) {
        return numbers;
    }
    numbers.back() = fileNumber(record.fileNumber);
    std::vector<std::uint32_t> parents = record.parentNumbers;
    if (parents.empty() && record.parentNumber) {
        parents.push_back(*record.parentNumber);
    }
    const std::size_t folders = std::min(parents.size(), components - above - 1);
    for (std::size_t i = 0; i < folders; ++i) {
        numbers[components - 2 - i] = fileNumber(parents[i]);
    }
    return numbers;
}

BookmarkVolume volumeOf(const AliasRecord& record) {
    BookmarkVolume volume;
    if (!record.volumeName.empty()) {
        volume.name = record.volumeName;
    }
    if (record.mountPoint) {
        const std::size_t length = record.mountPoint->find_last_not_of('/') + 1;
        volume.path = length == 0 ? "/" : record.mountPoint->substr(0, length);
        volume.wasBoot = volume.path == "/";
    }
    volume.creationDate = record.volumeCreationDate.utc;
    if (!volume.creationDate) {
        volume.localCreationDate = record.volumeCreationDate.local;
    }
    return volume;
}

} // namespace

Data bookmarkOfAliasRecord(std::span<const std::byte> record) {
    SectionComposer composer;
    const std::uint32_t value = composer.addData(record);
    const Data section = composer.take(
        composer.addTable(table_identifier::target, 0, {{bookmark_key::aliasRecord, value, 0}}));
    BookmarkHeader header;
    header.container = BookmarkContainer::bareAlias;
    Data bytes;
    appendBookmarkHeader(bytes, header, section.size());
    appendBytes(bytes, section);
    return bytes;
}

std::expected<BookmarkStructure, BookmarkFault> readBookmarkOrAlias(std::span<const std::byte> bytes) {
    return isLikeAliasRecord(bytes) ? readBookmark(bookmarkOfAliasRecord(bytes)) : readBookmark(bytes);
}

std::optional<AliasRecord> aliasRecordIn(const BookmarkStructure& structure) {
    const BookmarkRecord* const value =
        BookmarkItems(structure, table_identifier::target).record(bookmark_key::aliasRecord);
    if (value == nullptr || value->type != record_type::data) {
        return std::nullopt;
    }
    auto record = readAliasRecord(structure.payload(*value));
    return record ? std::optional(*std::move(record)) : std::nullopt;
}

BookmarkContents contentsOfAliasRecord(const AliasRecord& record) {
    BookmarkContents contents;
    contents.volume = volumeOf(record);
    const auto below = componentsOnVolume(record);
    // A path on a volume that is not known leads anywhere.
    if (below && (contents.volume.path || contents.volume.name)) {
        Components components = componentsOf(contents.volume.path.value_or(""));
        const std::size_t above = components.size();
        components.insert(components.end(), below->begin(), below->end());
        contents.fileIDs = numbersAlong(record, components.size(), above);
        contents.pathComponents = std::move(components);
    }
    contents.creationDate = record.creationDate.utc;
    if (!contents.creationDate) {
        contents.localCreationDate = record.creationDate.local;
    }
    const std::uint64_t kind = record.isFolder ? file_flag::directory : file_flag::regularFile;
    contents.fileFlags =
        BookmarkFlags{kind, file_flag::regularFile | file_flag::directory | file_flag::symbolicLink, 0};
    if (!record.fileName.empty()) {
        contents.displayName = record.fileName;
    }
    if (!record.diskImage.empty()) {
        contents.diskImagePath = record.diskImage.front().path();
    }
    return contents;
}

BookmarkContents targetContents(const BookmarkStructure& structure) {
    BookmarkContents contents = bookmarkContents(structure);
    if (!contents.pathComponents && !contents.url) {
        if (const auto record = aliasRecordIn(structure)) {
            return contentsOfAliasRecord(*record);
        }
    }
    return contents;
}

} // namespace tolvane::platform
