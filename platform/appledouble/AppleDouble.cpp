#include "platform/appledouble/AppleDouble.h"

#include "platform/values/ByteCursor.h"

#include <algorithm>

namespace tolvane::platform {

namespace {

constexpr std::uint32_t singleMagic = 0x0005'1600;
constexpr std::uint32_t companionMagic = 0x0005'1607;
constexpr std::uint32_t firstVersion = 0x0001'0000;
constexpr std::uint32_t secondVersion = 0x0002'0000;
constexpr std::size_t headerLength = 26;

constexpr std::uint32_t attributeMagic = 0x4154'5452; // "ATTR"
constexpr std::size_t finderInfoLength = 32;
constexpr std::size_t paddingLength = 2;
constexpr std::size_t attributeHeadLength = 11;

/// The bytes at an offset, if they are within.
bool liesWithin(std::size_t whole, std::size_t offset, std::size_t length) {
    return offset <= whole && length <= whole - offset;
}

std::unexpected<ForkFault> fault(std::size_t offset, std::string_view expected) {
    return std::unexpected(ForkFault{offset, expected});
}

/// One attribute at the cursor, which then stands at the next one.
std::expected<AppleDoubleAttribute, ForkFault> readAttribute(
    ByteCursor& cursor, std::span<const std::byte> bytes) {
    const std::size_t start = cursor.position();
    AppleDoubleAttribute attribute;
    attribute.offset = cursor.u32be();
    const std::uint32_t length = cursor.u32be();
    attribute.flags = cursor.u16be();
    const std::size_t nameLength = cursor.u8();
    const auto name = cursor.take(nameLength);
    if (cursor.failed()) {
        return fault(start, "an attribute's name within the file");
    }
    if (name.size() < 2 || std::ranges::find(name, std::byte{0}) != name.end() - 1) {
        return fault(start + attributeHeadLength, "a name of an attribute that ends with its only NUL");
    }
    attribute.name = {reinterpret_cast<const char*>(name.data()), name.size() - 1};
    if (length > 0) {
        if (!liesWithin(bytes.size(), attribute.offset, length)) {
            return fault(start, "an attribute's value within the file");
        }
        attribute.value = bytes.subspan(attribute.offset, length);
    }
    const std::size_t used = attributeHeadLength + nameLength;
    cursor.take(std::min((4 - used % 4) % 4, cursor.remaining()));
    return attribute;
}

} // namespace

const AppleDoubleEntry* AppleDouble::entry(std::uint32_t identifier) const {
    const auto found = std::ranges::find(entries, identifier, &AppleDoubleEntry::identifier);
    return found == entries.end() ? nullptr : &*found;
}

std::expected<AppleDouble, ForkFault> readAppleDouble(std::span<const std::byte> bytes) {
    ByteCursor cursor(bytes);
    const std::uint32_t magic = cursor.u32be();
    AppleDouble file;
    file.version = cursor.u32be();
    if (magic != singleMagic && magic != companionMagic) {
        return fault(0, "the magic number of AppleDouble or AppleSingle");
    }
    const auto filler = cursor.take(file.filler.size());
    const std::size_t count = cursor.u16be();
    if (cursor.failed()) {
        return fault(bytes.size(), "a header of 26 bytes");
    }
    if (file.version != firstVersion && file.version != secondVersion) {
        return fault(4, "version 1 or 2");
    }
    file.form = magic == singleMagic ? AppleDoubleForm::single : AppleDoubleForm::companion;
    file.length = bytes.size();
    std::ranges::copy(filler, file.filler.begin());
    constexpr std::size_t entryLength = 12;
    if (count > cursor.remaining() / entryLength) {
        return fault(headerLength - 2, "no more parts than the file has room for");
    }
    file.entries.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t start = cursor.position();
        AppleDoubleEntry entry;
        entry.identifier = cursor.u32be();
        entry.offset = cursor.u32be();
        const std::uint32_t length = cursor.u32be();
        if (length > 0) {
            if (!liesWithin(bytes.size(), entry.offset, length)) {
                return fault(start, "a part within the file");
            }
            entry.bytes = bytes.subspan(entry.offset, length);
        }
        file.entries.push_back(entry);
    }
    return file;
}

std::expected<AppleDoubleAttributes, ForkFault> readAppleDoubleAttributes(
    const AppleDouble& file, std::span<const std::byte> bytes) {
    AppleDoubleAttributes block;
    const AppleDoubleEntry* const finderInfo = file.entry(apple_double_entry::finderInfo);
    if (finderInfo == nullptr || finderInfo->bytes.size() <= finderInfoLength + paddingLength) {
        return block;
    }
    const std::size_t start = finderInfo->offset + finderInfoLength + paddingLength;
    ByteCursor cursor(bytes);
    cursor.seek(start);
    if (cursor.u32be() != attributeMagic) {
        // What else may follow the Finder information is not known, and no attributes.
        return block;
    }
    block.debugTag = cursor.u32be();
    block.totalSize = cursor.u32be();
    block.dataStart = cursor.u32be();
    block.dataLength = cursor.u32be();
    cursor.take(12);
    block.flags = cursor.u16be();
    const std::size_t count = cursor.u16be();
    if (cursor.failed()) {
        return fault(start, "a header of attributes within the file");
    }
    for (std::size_t i = 0; i < count; ++i) {
        auto attribute = readAttribute(cursor, bytes);
        if (!attribute) {
            return std::unexpected(attribute.error());
        }
        block.attributes.push_back(*attribute);
    }
    return block;
}

} // namespace tolvane::platform
