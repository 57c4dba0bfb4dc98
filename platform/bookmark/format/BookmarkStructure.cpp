#include "platform/bookmark/format/BookmarkStructure.h"

#include "platform/values/ByteCursor.h"

namespace tolvane::platform {

std::string_view BookmarkHeader::teamIdentifier() const {
    constexpr std::size_t length = 10;
    if (isAliasFile() || version != bookmarkVersionWithTeam || extra.size() < length) {
        return {};
    }
    const std::string_view bytes(reinterpret_cast<const char*>(extra.data()), length);
    return bytes.substr(0, bytes.find('\0'));
}

const BookmarkItem* BookmarkTable::find(std::uint32_t key) const {
    const auto found = std::ranges::find(items, key, &BookmarkItem::key);
    return found == items.end() ? nullptr : &*found;
}

const BookmarkTable* BookmarkStructure::table(std::uint32_t identifier) const {
    const auto found = std::ranges::find(tables, identifier, &BookmarkTable::identifier);
    return found == tables.end() ? nullptr : &*found;
}

const BookmarkRecord* BookmarkStructure::record(std::uint32_t offset) const {
    const auto place = std::ranges::lower_bound(records, offset, {}, &BookmarkRecord::offset);
    return place != records.end() && place->offset == offset ? &*place : nullptr;
}

std::span<const std::byte> BookmarkStructure::payload(const BookmarkRecord& record) const {
    ByteCursor cursor(section);
    cursor.seek(record.offset);
    cursor.take(8);
    return cursor.take(record.length);
}

std::uint32_t BookmarkStructure::word(const BookmarkRecord& record, std::size_t index) const {
    ByteCursor cursor(payload(record));
    cursor.seek(index * 4);
    return cursor.u32le();
}

std::string_view BookmarkStructure::text(const BookmarkRecord& record) const {
    const std::span<const std::byte> bytes = payload(record);
    // A view of bytes as characters is one of the casts that the language allows for any object.
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

} // namespace tolvane::platform
