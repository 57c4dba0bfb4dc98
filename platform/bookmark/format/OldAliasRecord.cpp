#include "platform/bookmark/format/OldAliasRecord.h"

#include "platform/bookmark/format/BookmarkHeader.h"
#include "platform/bookmark/format/SectionComposer.h"
#include "platform/values/ByteCursor.h"
#include "platform/values/MacRoman.h"

namespace tolvane::platform {

namespace {

constexpr std::uint32_t alisType = 0x616C'6973;
constexpr std::size_t oldRecordHeadLength = 10;

/// The part of `bytes` from an offset on, of a given length; nothing when it does not lie within.
std::optional<std::span<const std::byte>> part(
    std::span<const std::byte> bytes, std::size_t offset, std::size_t length) {
    if (offset > bytes.size() || length > bytes.size() - offset) {
        return std::nullopt;
    }
    return bytes.subspan(offset, length);
}

std::optional<std::span<const std::byte>> from(std::span<const std::byte> bytes, std::size_t offset) {
    return offset > bytes.size() ? std::nullopt : part(bytes, offset, bytes.size() - offset);
}

struct References {
    std::size_t offset; ///< From the start of the list of types.
    std::size_t count;
};

std::optional<References> aliasReferences(std::span<const std::byte> typeList) {
    ByteCursor cursor(typeList);
    // The number is kept less one, so that none at all is the largest.
    const auto typeCount = static_cast<std::uint16_t>(cursor.u16be() + 1U);
    for (unsigned i = 0; i < typeCount && !cursor.failed(); ++i) {
        const std::uint32_t type = cursor.u32be();
        const std::size_t count = cursor.u16be() + std::size_t{1};
        const std::size_t offset = cursor.u16be();
        if (!cursor.failed() && type == alisType) {
            return References{offset, count};
        }
    }
    return std::nullopt;
}

/// Where in the resource data the alias resource lies.
std::optional<std::uint32_t> aliasOffset(std::span<const std::byte> typeList, const References& references) {
    ByteCursor cursor(typeList);
    cursor.seek(references.offset);
    std::optional<std::uint32_t> first;
    for (std::size_t i = 0; i < references.count; ++i) {
        const std::uint16_t number = cursor.u16be();
        cursor.take(3);
        const std::uint32_t offset = cursor.u24be();
        cursor.take(4);
        if (cursor.failed()) {
            break;
        }
        if (number == 0) {
            return offset;
        }
        first = first.value_or(offset);
    }
    return first;
}

} // namespace

std::string OldAliasRecord::description() const {
    std::string text = "old alias record, version " + std::to_string(version);
    if (volumeName) {
        text += ", volume " + *volumeName;
    }
    return text;
}

std::optional<OldAliasRecord> oldAliasRecord(std::span<const std::byte> bytes) {
    constexpr std::size_t volumeNameLength = 28;
    ByteCursor head(bytes);
    head.take(4);
    const std::size_t size = head.u16be();
    OldAliasRecord record;
    record.version = head.u16be();
    const std::uint16_t kind = head.u16be();
    const bool isKnown = (record.version == 2 || record.version == 3) && kind <= 1;
    if (head.failed() || !isKnown || size < oldRecordHeadLength || size > bytes.size()) {
        return std::nullopt;
    }
    record.isFolder = kind == 1;
    if (record.version == 2) {
        ByteCursor cursor(bytes.first(size));
        cursor.seek(oldRecordHeadLength);
        ByteCursor name(cursor.take(volumeNameLength));
        const std::span<const std::byte> letters = name.take(name.u8());
        if (cursor.failed() || name.failed()) {
            return std::nullopt;
        }
        record.volumeName = textOfMacRoman(letters);
    }
    return record;
}

std::optional<std::span<const std::byte>> aliasResourceInFork(std::span<const std::byte> fork) {
    ByteCursor cursor(fork);
    const std::uint32_t dataOffset = cursor.u32be();
    const std::uint32_t mapOffset = cursor.u32be();
    const std::uint32_t dataLength = cursor.u32be();
    const std::uint32_t mapLength = cursor.u32be();
    const auto data = part(fork, dataOffset, dataLength);
    const auto map = part(fork, mapOffset, mapLength);
    if (cursor.failed() || !data || !map) {
        return std::nullopt;
    }
    ByteCursor mapCursor(*map);
    mapCursor.seek(24);
    const std::size_t typeListOffset = mapCursor.u16be();
    const auto typeList = from(*map, typeListOffset);
    if (mapCursor.failed() || !typeList) {
        return std::nullopt;
    }
    const auto references = aliasReferences(*typeList);
    const auto offset = references ? aliasOffset(*typeList, *references) : std::nullopt;
    if (!offset) {
        return std::nullopt;
    }
    ByteCursor resource(*data);
    resource.seek(*offset);
    const std::span<const std::byte> bytes = resource.take(resource.u32be());
    return resource.failed() ? std::nullopt : std::optional(bytes);
}

std::optional<OldAliasRecord> oldAliasRecordInResourceFork(std::span<const std::byte> fork) {
    const auto resource = aliasResourceInFork(fork);
    return resource ? oldAliasRecord(*resource) : std::nullopt;
}

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

} // namespace tolvane::platform
