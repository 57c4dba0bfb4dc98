#include "platform/bookmark/format/SectionComposer.h"

#include "platform/values/ByteCursor.h"

namespace tolvane::platform {

namespace {

Data textBytes(std::string_view text) {
    Data bytes;
    appendText(bytes, text);
    return bytes;
}

} // namespace

SectionComposer::SectionComposer() {
    // Room for the offset of the first table, which is known last.
    appendU32le(section_, 0);
}

std::uint32_t SectionComposer::addString(std::string_view text) {
    return add(record_type::string, textBytes(text));
}

std::uint32_t SectionComposer::addURL(std::string_view text) {
    return add(record_type::absoluteURL, textBytes(text));
}

std::uint32_t SectionComposer::addInt32(std::uint32_t number) {
    Data payload;
    appendU32le(payload, number);
    return add(record_type::int32, payload);
}

std::uint32_t SectionComposer::addInt64(std::int64_t number) {
    Data payload;
    appendU64le(payload, static_cast<std::uint64_t>(number));
    return add(record_type::int64, payload);
}

std::uint32_t SectionComposer::addDate(const Date& date) {
    Data payload;
    appendU64be(payload, std::bit_cast<std::uint64_t>(date.timeIntervalSinceReferenceDate()));
    return add(record_type::date, payload);
}

std::uint32_t SectionComposer::addFlags(const BookmarkFlags& flags) {
    Data payload;
    appendU64le(payload, flags.values);
    appendU64le(payload, flags.valid);
    appendU64le(payload, flags.requested);
    return add(record_type::data, payload);
}

std::uint32_t SectionComposer::addArray(std::span<const std::uint32_t> offsets) {
    Data payload;
    payload.reserve(offsets.size_bytes());
    for (const std::uint32_t offset : offsets) {
        appendU32le(payload, offset);
    }
    return add(record_type::array, payload);
}

std::uint32_t SectionComposer::addTable(
    std::uint32_t identifier, std::uint32_t nextOffset, std::vector<BookmarkItem> items) {
    std::ranges::sort(items, {}, &BookmarkItem::key);
    Data payload;
    appendU32le(payload, identifier);
    appendU32le(payload, nextOffset);
    appendU32le(payload, static_cast<std::uint32_t>(items.size()));
    for (const BookmarkItem& item : items) {
        appendU32le(payload, item.key);
        appendU32le(payload, item.valueOffset);
        appendU32le(payload, item.flags);
    }
    return append(record_type::table, payload);
}

Data SectionComposer::take(std::uint32_t firstTable) {
    Data front;
    appendU32le(front, firstTable);
    std::ranges::copy(front, section_.begin());
    return std::move(section_);
}

std::uint32_t SectionComposer::add(std::uint32_t type, const Data& payload) {
    const auto [entry, isNew] = offsets_.try_emplace({type, payload}, 0);
    if (isNew) {
        entry->second = append(type, payload);
    }
    return entry->second;
}

std::uint32_t SectionComposer::append(std::uint32_t type, const Data& payload) {
    const auto offset = static_cast<std::uint32_t>(section_.size());
    appendU32le(section_, static_cast<std::uint32_t>(payload.size()));
    appendU32le(section_, type);
    appendBytes(section_, payload);
    section_.resize((section_.size() + 3) / 4 * 4);
    return offset;
}

} // namespace tolvane::platform
