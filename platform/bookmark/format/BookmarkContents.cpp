#include "platform/bookmark/format/BookmarkContents.h"

#include <map>

namespace tolvane::platform {

namespace {

BookmarkVolume volumeIn(const BookmarkItems& items) {
    BookmarkVolume volume;
    volume.path = items.string(bookmark_key::volumePath);
    volume.url = items.urlText(bookmark_key::volumeURL);
    volume.name = items.string(bookmark_key::volumeName);
    volume.uuid = items.string(bookmark_key::volumeUUID);
    volume.capacity = items.integer(bookmark_key::volumeCapacity);
    volume.creationDate = items.date(bookmark_key::volumeCreationDate);
    volume.flags = items.flags(bookmark_key::volumeFlags);
    volume.mountURL = items.urlText(bookmark_key::volumeMountURL);
    volume.wasBoot = items.boolean(bookmark_key::volumeWasBoot).value_or(false);
    return volume;
}

/// Identifiers are stored as signed numbers; what fits no identifier is that of no table.
std::vector<std::uint32_t> volumeDepthsIn(const BookmarkItems& items) {
    std::vector<std::uint32_t> depths;
    for (const std::optional<std::int64_t> number :
         items.integers(bookmark_key::volumeDepths).value_or(std::vector<std::optional<std::int64_t>>())) {
        depths.push_back(static_cast<std::uint32_t>(number.value_or(0)));
    }
    return depths;
}

/// Goes through the tables once, since a bookmark may have very many; the first with an identifier counts.
std::vector<BookmarkVolume> volumesBetweenIn(const BookmarkStructure& structure) {
    std::map<std::uint32_t, const BookmarkTable*> tables;
    for (const BookmarkTable& table : structure.tables) {
        if (table.identifier >= table_identifier::firstVolumeBetween) {
            tables.emplace(table.identifier, &table);
        }
    }
    std::vector<BookmarkVolume> volumes;
    for (const auto& [identifier, table] : tables) {
        if (identifier - table_identifier::firstVolumeBetween != volumes.size()) {
            break;
        }
        volumes.push_back(volumeIn({structure, table}));
    }
    return volumes;
}

void requestAllKnown(std::optional<BookmarkFlags>& flags) {
    if (flags) {
        flags->requested = flags->valid;
    }
}

} // namespace

BookmarkContents bookmarkContents(const BookmarkStructure& structure) {
    const BookmarkItems items(structure, table_identifier::target);
    BookmarkContents contents;
    contents.url = items.urlOrString(bookmark_key::targetURL);
    contents.pathComponents = items.strings(bookmark_key::pathComponents);
    contents.fileIDs = items.integers(bookmark_key::fileIDs);
    contents.fileName = items.string(bookmark_key::fileName);
    contents.creationDate = items.date(bookmark_key::creationDate);
    contents.fileFlags = items.flags(bookmark_key::fileFlags);
    contents.createdWithRelativeURL = items.boolean(bookmark_key::createdWithRelativeURL);
    contents.relativeDirsUp = items.integer(bookmark_key::relativeDirsUp);
    contents.relativeDirsDown = items.integer(bookmark_key::relativeDirsDown);
    contents.componentsBelowHome = items.integer(bookmark_key::componentsBelowHome);
    contents.userName = items.string(bookmark_key::userName);
    contents.userID = items.integer(bookmark_key::userID);
    contents.volume = volumeIn(items);
    if (const BookmarkTable* const table = structure.table(table_identifier::rootVolume)) {
        contents.rootVolume = volumeIn({structure, table});
    }
    contents.volumeDepths = volumeDepthsIn(items);
    contents.volumesBetween = volumesBetweenIn(structure);
    contents.wasFileIDFormat = items.boolean(bookmark_key::wasFileIDFormat).value_or(false);
    contents.options = static_cast<std::uint32_t>(items.integer(bookmark_key::creationOptions).value_or(0));
    contents.displayName = items.string(bookmark_key::displayName);
    return contents;
}

BookmarkContents contentsForAliasFile(BookmarkContents contents) {
    contents.options = bookmark_option::suitableForBookmarkFile;
    contents.wasFileIDFormat = true;
    if (!contents.displayName && contents.pathComponents && !contents.pathComponents->empty()) {
        contents.displayName = contents.pathComponents->back();
    }
    if (!contents.displayName) {
        contents.displayName = contents.fileName;
    }
    requestAllKnown(contents.fileFlags);
    requestAllKnown(contents.volume.flags);
    if (contents.rootVolume) {
        requestAllKnown(contents.rootVolume->flags);
    }
    for (BookmarkVolume& volume : contents.volumesBetween) {
        requestAllKnown(volume.flags);
    }
    return contents;
}

} // namespace tolvane::platform
