#include "attributes/ClusterParsing.h"
#include "attributes/Decoders.h"
#include "attributes/Parsing.h"
#include "platform/values/ByteCursor.h"

#include <array>
#include <cstddef>
#include <span>

namespace tolvane::attributes {

using platform::ByteCursor;

namespace {

/// A layout that lies at this offset of the value.
Outcome addLayout(std::span<const std::byte> bytes, std::size_t offset, Answer& answer) {
    constexpr std::uint32_t v1 = 0x0BD10BD0;
    constexpr std::uint32_t v3 = 0x0BD30BD0;
    ByteCursor cursor(bytes);
    const std::uint32_t magic = cursor.u32le();
    if (magic != v1 && magic != v3) {
        return misfit(offset, "a layout's magic number");
    }
    const std::uint32_t pattern = cursor.u32le();
    const auto object = cursor.take(16);
    const std::uint32_t size = cursor.u32le();
    const std::size_t count = cursor.littleEndian(2);
    const std::uint64_t generation = cursor.littleEndian(2);
    const std::string_view pool = magic == v3 ? textOf(cursor.take(16)) : std::string_view();
    if (cursor.failed() || (cursor.remaining() != count * 24 && cursor.remaining() != 0)) {
        return misfit(offset + 4, "a layout and its stripes");
    }
    static constexpr std::array<Named, 3> patterns{{{1, "RAID 0"}, {2, "RAID 1"}, {0x100, "data on MDT"}}};
    answer.named("Pattern", pattern, patterns);
    answer.number("Stripe size", size, "bytes");
    answer.number("Stripes", count);
    answer.number("Generation", generation);
    if (!pool.empty()) {
        answer.text("Pool", pool.substr(0, pool.find('\0')));
    }
    answer.bytes("Object", object);
    while (cursor.remaining() > 0) {
        const auto stripe = cursor.take(16);
        const std::uint32_t stripeGeneration = cursor.u32le();
        const std::uint32_t target = cursor.u32le();
        answer.add(
            "Stripe", "target " + std::to_string(target) + ", object " + hexDigits(stripe),
            platform::Dictionary{
                {"target", std::uint64_t{target}}, {"generation", std::uint64_t{stripeGeneration}}});
    }
    return {};
}

/// "0 to 1048576", or to the end of the file.
std::string extentText(std::uint64_t start, std::uint64_t end) {
    constexpr std::uint64_t endOfFile = ~std::uint64_t{0};
    return std::to_string(start) + " to " + (end == endOfFile ? "the end" : std::to_string(end));
}

/// Several layouts, each for a part of the file or a copy of it.
Outcome addCompositeLayout(std::span<const std::byte> bytes, Answer& answer) {
    static constexpr std::array<Flag, 8> flags{
        {{1, "outdated"},
         {2, "preferred for reading"},
         {4, "preferred for writing"},
         {8, "offline"},
         {0x10, "in use"},
         {0x20, "not synchronized"},
         {0x40, "extension"},
         {0x80, "parity"}}};
    static constexpr std::array<Named, 4> states{
        {{0, "no copies"}, {1, "all the same"}, {2, "being written"}, {3, "being synchronized"}}};
    constexpr std::size_t componentSize = 48;
    ByteCursor cursor(bytes);
    cursor.take(4);
    const std::uint32_t size = cursor.u32le();
    const std::uint32_t generation = cursor.u32le();
    const std::uint64_t state = cursor.littleEndian(2);
    const std::size_t count = cursor.littleEndian(2);
    const std::uint64_t furtherCopies = cursor.littleEndian(2);
    cursor.take(14);
    if (cursor.failed() || size != bytes.size() || cursor.remaining() < count * componentSize) {
        return misfit(4, "the layout's own length, and its components");
    }
    answer.text("Kind", "composite layout");
    answer.number("Generation", generation);
    answer.named("Copies' state", state & 3U, states);
    answer.number("Copies", furtherCopies + 1);
    answer.number("Components", count);
    std::size_t free = cursor.position() + count * componentSize;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t place = cursor.position();
        const std::uint32_t number = cursor.u32le();
        const std::uint32_t componentFlags = cursor.u32le();
        const std::uint64_t start = cursor.u64le();
        const std::uint64_t end = cursor.u64le();
        const std::size_t offset = cursor.u32le();
        const std::size_t length = cursor.u32le();
        cursor.take(16);
        // In their order, so that no byte belongs to two of them.
        if (offset < free || offset > bytes.size() || length > bytes.size() - offset) {
            return misfit(place + 24, "where the component's layout is, behind that of the one before");
        }
        free = offset + length;
        answer.hex("Component", number);
        answer.text("Bytes", extentText(start, end));
        answer.flags("Component's state", componentFlags, flags, 8);
        if (Outcome outcome = addLayout(bytes.subspan(offset, length), offset, answer); !outcome) {
            return outcome;
        }
    }
    return {};
}

} // namespace

Outcome decodeLustreLayout(const Subject& subject, Answer& answer) {
    constexpr std::uint32_t composite = 0x0BD60BD0;
    const bool isComposite = ByteCursor(subject.bytes).u32le() == composite;
    return isComposite ? addCompositeLayout(subject.bytes, answer) : addLayout(subject.bytes, 0, answer);
}

Outcome decodeLustreFolder(const Subject& subject, Answer& answer) {
    constexpr std::uint32_t layoutMagic = 0x0CD20CD0;
    constexpr std::size_t headerSize = 56;
    constexpr std::size_t identifierSize = 16;
    static constexpr std::array<Named, 4> hashes{
        {{1, "all characters"}, {2, "FNV-1a of 64 bits"}, {3, "CRUSH"}, {4, "CRUSH2"}}};
    ByteCursor cursor(subject.bytes);
    const std::uint32_t magic = cursor.u32le();
    const std::size_t count = cursor.u32le();
    const std::uint32_t target = cursor.u32le();
    const std::uint32_t hash = cursor.u32le();
    const std::uint32_t version = cursor.u32le();
    cursor.take(20);
    const std::string_view pool = textOf(cursor.take(16));
    if (magic != layoutMagic) {
        return misfit(0, "the magic number 0cd20cd0");
    }
    if (cursor.failed() || (cursor.remaining() != 0 && cursor.remaining() != count * identifierSize)) {
        return misfit(4, std::to_string(headerSize) + " bytes, and the identifiers of all stripes or none");
    }
    answer.number("Stripes", count);
    answer.number("Metadata target or stripe", target);
    answer.named("Hash", hash & 0xFFFFU, hashes);
    answer.hex("State", hash & 0xFFFF0000U, 8);
    answer.number("Version", version);
    if (!pool.starts_with('\0')) {
        answer.text("Pool", pool.substr(0, pool.find('\0')));
    }
    while (cursor.remaining() > 0) {
        const std::uint64_t sequence = cursor.u64le();
        const std::uint32_t object = cursor.u32le();
        answer.text("Stripe", identifierText(sequence, object, cursor.u32le()));
    }
    return {};
}

} // namespace tolvane::attributes
