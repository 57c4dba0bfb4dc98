#include "platform/bookmark/format/SectionComposer.h"

#include "platform/values/ByteCursor.h"

#include <functional>

namespace tolvane::platform {

namespace {

constexpr std::size_t recordHeadLength = 8;
constexpr std::size_t firstSlotCount = 64; // bookmarks have some twenty records as a rule

std::string_view asText(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

void writeU32le(std::span<std::byte> place, std::uint32_t number) {
    for (std::size_t i = 0; i < sizeof number; ++i) {
        place[i] = static_cast<std::byte>(number >> (8 * i));
    }
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
    const std::uint32_t offset = begin(record_type::string);
    appendText(bytes_, text);
    return shared(offset);
}

std::uint32_t SectionComposer::addURL(std::string_view text) {
    const std::uint32_t offset = begin(record_type::absoluteURL);
    appendText(bytes_, text);
    return shared(offset);
}

std::uint32_t SectionComposer::addData(std::span<const std::byte> bytes) {
    const std::uint32_t offset = begin(record_type::data);
    appendBytes(bytes_, bytes);
    return shared(offset);
}

std::uint32_t SectionComposer::addInt32(std::uint32_t number) {
    const std::uint32_t offset = begin(record_type::int32);
    appendU32le(bytes_, number);
    return shared(offset);
}

std::uint32_t SectionComposer::addInt64(std::int64_t number) {
    const std::uint32_t offset = begin(record_type::int64);
    appendU64le(bytes_, static_cast<std::uint64_t>(number));
    return shared(offset);
}

std::uint32_t SectionComposer::addDate(const Date& date) {
    const std::uint32_t offset = begin(record_type::date);
    appendU64be(bytes_, std::bit_cast<std::uint64_t>(date.timeIntervalSinceReferenceDate()));
    return shared(offset);
}

std::uint32_t SectionComposer::addFlags(const BookmarkFlags& flags) {
    const std::uint32_t offset = begin(record_type::data);
    appendU64le(bytes_, flags.values);
    appendU64le(bytes_, flags.valid);
    appendU64le(bytes_, flags.requested);
    return shared(offset);
}

std::uint32_t SectionComposer::addArray(std::span<const std::uint32_t> offsets) {
    const std::uint32_t offset = begin(record_type::array);
    for (const std::uint32_t element : offsets) {
        appendU32le(bytes_, element);
    }
    return shared(offset);
}

std::uint32_t SectionComposer::addTable(
    std::uint32_t identifier, std::uint32_t nextOffset, std::vector<BookmarkItem> items) {
    std::ranges::sort(items, {}, &BookmarkItem::key);
    const std::uint32_t offset = begin(record_type::table);
    appendU32le(bytes_, identifier);
    appendU32le(bytes_, nextOffset);
    appendU32le(bytes_, static_cast<std::uint32_t>(items.size()));
    for (const BookmarkItem& item : items) {
        appendU64le(bytes_, std::uint64_t{item.valueOffset} << 32U | item.key);
        appendU32le(bytes_, item.flags);
    }
    end(offset);
    return offset;
}

Data SectionComposer::take(std::uint32_t firstTable) {
    writeU32le(std::span(bytes_).subspan(headerLength_), firstTable);
    return std::move(bytes_);
}

std::uint32_t SectionComposer::begin(std::uint32_t type) {
    const auto offset = static_cast<std::uint32_t>(bytes_.size() - headerLength_);
    // The length, which comes first, is known at the end.
    appendU64le(bytes_, std::uint64_t{type} << 32U);
    return offset;
}

void SectionComposer::end(std::uint32_t offset) {
    const std::span<std::byte> record = std::span(bytes_).subspan(headerLength_ + offset);
    writeU32le(record, static_cast<std::uint32_t>(record.size() - recordHeadLength));
    bytes_.resize(bytes_.size() + (4 - record.size() % 4) % 4);
}

std::uint32_t SectionComposer::shared(std::uint32_t offset) {
    end(offset);
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
    const std::string_view record = asText(recordAt(offset));
    std::size_t slot = std::hash<std::string_view>()(record) & (slots_.size() - 1);
    while (slots_[slot] != 0 && asText(recordAt(slots_[slot])) != record) {
        slot = (slot + 1) & (slots_.size() - 1);
    }
    return slot;
}

std::span<const std::byte> SectionComposer::recordAt(std::uint32_t offset) const {
    const auto record = std::span(bytes_).subspan(headerLength_ + offset);
    return record.first(recordHeadLength + ByteCursor(record).u32le());
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
