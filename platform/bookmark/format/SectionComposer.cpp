#include "platform/bookmark/format/SectionComposer.h"

#include "platform/values/ByteCursor.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

namespace tolvane::platform {

namespace {

constexpr std::size_t recordHeadLength = 8;
constexpr std::size_t firstSlotCount = 64; // bookmarks have some twenty records as a rule

void writeU32le(std::byte* place, std::uint32_t number) {
    const auto bytes = littleEndianBytes(number);
    std::memcpy(place, bytes.data(), bytes.size());
}

std::uint32_t u32leAt(const std::byte* place) {
    std::uint32_t number = 0;
    std::memcpy(&number, place, sizeof number);
    return std::endian::native == std::endian::big ? std::byteswap(number) : number;
}

std::size_t paddedLength(std::size_t length) {
    return (length + 3) / 4 * 4;
}

/// A record has a multiple of four bytes.
std::size_t hashOf(std::span<const std::byte> record) {
    constexpr std::uint64_t oddFactor = 0x9E3779B97F4A7C15;
    std::uint64_t hash = 0;
    for (std::size_t i = 0; i < record.size(); i += 4) {
        hash = (std::rotl(hash, 29) ^ u32leAt(&record[i])) * oddFactor;
    }
    return static_cast<std::size_t>(hash ^ (hash >> 32U));
}

} // namespace

SectionComposer::SectionComposer(std::size_t headerLength, std::size_t expectedLength)
    : headerLength_(headerLength)
    , slots_(firstSlotCount) {
    bytes_.reserve(headerLength + expectedLength);
    // Also room for the offset of the first table, which is known last.
    bytes_.resize(headerLength + sizeof(std::uint32_t));
}

std::uint32_t SectionComposer::addString(std::string_view text) {
    return addRecord(record_type::string, std::as_bytes(std::span(text)));
}

std::uint32_t SectionComposer::addURL(std::string_view text) {
    return addRecord(record_type::absoluteURL, std::as_bytes(std::span(text)));
}

std::uint32_t SectionComposer::addData(std::span<const std::byte> bytes) {
    return addRecord(record_type::data, bytes);
}

std::uint32_t SectionComposer::addInt32(std::uint32_t number) {
    return addRecord(record_type::int32, littleEndianBytes(number));
}

std::uint32_t SectionComposer::addInt64(std::int64_t number) {
    return addRecord(record_type::int64, littleEndianBytes(static_cast<std::uint64_t>(number)));
}

std::uint32_t SectionComposer::addDate(const Date& date) {
    auto bytes = littleEndianBytes(std::bit_cast<std::uint64_t>(date.timeIntervalSinceReferenceDate()));
    std::ranges::reverse(bytes);
    return addRecord(record_type::date, bytes);
}

std::uint32_t SectionComposer::addFlags(const BookmarkFlags& flags) {
    const std::array words{
        littleEndianBytes(flags.values), littleEndianBytes(flags.valid), littleEndianBytes(flags.requested)};
    return addRecord(record_type::data, std::as_bytes(std::span(words)));
}

std::uint32_t SectionComposer::addArray(std::span<const std::uint32_t> offsets) {
    const std::uint32_t offset = begin(record_type::array, offsets.size() * sizeof(std::uint32_t));
    std::byte* place = payloadAt(offset);
    for (const std::uint32_t element : offsets) {
        writeU32le(std::exchange(place, place + sizeof element), element);
    }
    return shared(offset);
}

std::uint32_t SectionComposer::addTable(
    std::uint32_t identifier, std::uint32_t nextOffset, std::vector<BookmarkItem> items) {
    std::ranges::sort(items, {}, &BookmarkItem::key);
    const std::size_t length =
        BookmarkTable::headLength - recordHeadLength + items.size() * std::size_t{BookmarkTable::itemLength};
    const std::uint32_t offset = begin(record_type::table, length);
    std::byte* place = payloadAt(offset);
    const auto append = [&place](std::uint32_t word) {
        writeU32le(std::exchange(place, place + sizeof word), word);
    };
    append(identifier);
    append(nextOffset);
    append(static_cast<std::uint32_t>(items.size()));
    for (const BookmarkItem& item : items) {
        append(item.key);
        append(item.valueOffset);
        append(item.flags);
    }
    return offset;
}

Data SectionComposer::take(std::uint32_t firstTable) {
    writeU32le(bytes_.data() + headerLength_, firstTable);
    return std::move(bytes_);
}

std::uint32_t SectionComposer::begin(std::uint32_t type, std::size_t length) {
    const std::size_t end = bytes_.size();
    bytes_.resize(end + recordHeadLength + paddedLength(length));
    writeU32le(&bytes_[end], static_cast<std::uint32_t>(length));
    writeU32le(&bytes_[end + sizeof(std::uint32_t)], type);
    return static_cast<std::uint32_t>(end - headerLength_);
}

std::byte* SectionComposer::payloadAt(std::uint32_t offset) {
    return bytes_.data() + headerLength_ + offset + recordHeadLength;
}

std::uint32_t SectionComposer::addRecord(std::uint32_t type, std::span<const std::byte> payload) {
    const std::uint32_t offset = begin(type, payload.size());
    std::ranges::copy(payload, payloadAt(offset));
    return shared(offset);
}

std::uint32_t SectionComposer::shared(std::uint32_t offset) {
    const std::size_t slot = slotOf(offset);
    if (slots_[slot] != 0) {
        bytes_.resize(headerLength_ + offset);
        return slots_[slot];
    }
    slots_[slot] = offset;
    if (2 * ++recordCount_ > slots_.size()) {
        doubleSlots();
    }
    return offset;
}

std::size_t SectionComposer::slotOf(std::uint32_t offset) const {
    const std::span<const std::byte> record = recordAt(offset);
    std::size_t slot = hashOf(record) & (slots_.size() - 1);
    while (slots_[slot] != 0 && !std::ranges::equal(recordAt(slots_[slot]), record)) {
        slot = (slot + 1) & (slots_.size() - 1);
    }
    return slot;
}

std::span<const std::byte> SectionComposer::recordAt(std::uint32_t offset) const {
    const auto record = std::span(bytes_).subspan(headerLength_ + offset);
    return record.first(recordHeadLength + paddedLength(u32leAt(record.data())));
}

void SectionComposer::doubleSlots() {
    const std::vector<std::uint32_t> offsets =
        std::exchange(slots_, std::vector<std::uint32_t>(2 * slots_.size()));
    for (const std::uint32_t offset : offsets) {
        if (offset != 0) {
            slots_[slotOf(offset)] = offset;
        }
    }
}

} // namespace tolvane::platform
