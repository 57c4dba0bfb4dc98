#include "attributes/ClusterParsing.h"
#include "attributes/Decoders.h"
#include "attributes/Parsing.h"
#include "platform/values/ByteCursor.h"

#include <array>

namespace tolvane::attributes {

using platform::ByteCursor;

Outcome decodeLustreSize(const Subject& subject, Answer& answer) {
    static constexpr std::array<Flag, 3> states{{{1, "exact"}, {2, "outdated"}, {4, "may be outdated"}}};
    ByteCursor cursor(subject.bytes);
    const std::uint64_t state = cursor.littleEndian(2);
    cursor.take(6);
    const std::uint64_t size = cursor.u64le();
    const std::uint64_t blocks = cursor.u64le();
    if (Outcome outcome = decodeExact(cursor, 24); !outcome) {
        return outcome;
    }
    answer.flags("State", state, states, 4);
    answer.number("Size", size, "bytes");
    answer.number("Blocks", blocks, "of 512 bytes");
    return {};
}

Outcome decodeLustreParent(const Subject& subject, Answer& answer) {
    ByteCursor cursor(subject.bytes);
    const std::uint64_t sequence = cursor.u64le();
    const std::uint32_t object = cursor.u32le();
    const std::uint32_t stripe = cursor.u32le();
    if (cursor.failed()) {
        return misfit(0, "an identifier of 16 bytes");
    }
    answer.text("File", identifierText(sequence, object, 0));
    answer.number("Stripe", stripe);
    if (cursor.remaining() > 0) {
        answer.bytes("Further", cursor.take(cursor.remaining()));
    }
    return {};
}

Outcome decodeLustreIdentity(const Subject& subject, Answer& answer) {
    ByteCursor cursor(subject.bytes);
    const std::uint32_t compatible = cursor.u32le();
    const std::uint32_t incompatible = cursor.u32le();
    const std::uint64_t sequence = cursor.u64le();
    const std::uint32_t object = cursor.u32le();
    const std::uint32_t version = cursor.u32le();
    if (cursor.failed()) {
        return misfit(0, "24 bytes");
    }
    answer.text("Identifier", identifierText(sequence, object, version));
    answer.hex("Compatible features", compatible, 8);
    answer.hex("Incompatible features", incompatible, 8);
    if (cursor.remaining() > 0) {
        answer.bytes("Further", cursor.take(cursor.remaining()));
    }
    return {};
}

Outcome decodeLustreLinks(const Subject& subject, Answer& answer) {
    constexpr std::uint32_t magic = 0x11EAF1DF;
    ByteCursor cursor(subject.bytes);
    if (cursor.u32le() != magic) {
        return misfit(0, "the magic number 11eaf1df");
    }
    const std::uint32_t count = cursor.u32le();
    const std::uint64_t length = cursor.u64le();
    cursor.take(8);
    if (cursor.failed() || length > subject.bytes.size()) {
        return misfit(4, "a header of 24 bytes, and its length");
    }
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::size_t start = cursor.position();
        const std::uint16_t record = cursor.u16be();
        const std::uint64_t sequence = cursor.bigEndian(8);
        const std::uint32_t object = cursor.u32be();
        const std::uint32_t version = cursor.u32be();
        if (cursor.failed() || record < 18) {
            return misfit(start, "a link: its length, the folder, the name");
        }
        const std::string_view name = textOf(cursor.take(record - 18U));
        if (cursor.failed()) {
            return misfit(start, "a link: its length, the folder, the name");
        }
        answer.add(
            "Name", std::string(name) + " in " + identifierText(sequence, object, version),
            platform::Value(name.empty() ? std::string() : visibleText(name)));
    }
    return {};
}

Outcome decodeLustreArchive(const Subject& subject, Answer& answer) {
    static constexpr std::array<Flag, 7> states{
        {{1, "exists in the archive"},
         {2, "changed since"},
         {4, "released"},
         {8, "archived"},
         {0x10, "not released"},
         {0x20, "not archived"},
         {0x40, "lost"}}};
    ByteCursor cursor(subject.bytes);
    const std::uint32_t compatible = cursor.u32le();
    const std::uint32_t flags = cursor.u32le();
    const std::uint64_t archive = cursor.u64le();
    const std::uint64_t version = cursor.u64le();
    if (Outcome outcome = decodeExact(cursor, 24); !outcome) {
        return outcome;
    }
    answer.flags("State", flags, states, 8);
    answer.number("Archive", archive);
    answer.number("Version", version);
    answer.hex("Compatible features", compatible, 8);
    return {};
}

} // namespace tolvane::attributes
