#include "attributes/Decoders.h"
#include "attributes/Parsing.h"
#include "platform/values/ByteCursor.h"

#include <array>

namespace tolvane::attributes {

namespace {

using platform::ByteCursor;

Outcome decodeExact(const ByteCursor& cursor, std::size_t size) {
    if (cursor.failed() || cursor.remaining() != 0) {
        return misfit(cursor.failed() ? cursor.position() : size, std::to_string(size) + " bytes");
    }
    return {};
}

/// "[0x200000401:0x1:0x0]", as Lustre writes it.
std::string identifierText(std::uint64_t sequence, std::uint32_t object, std::uint32_t version) {
    return "[" + hexNumber(sequence) + ":" + hexNumber(object) + ":" + hexNumber(version) + "]";
}

} // namespace

Outcome decodeUUIDBytes(const Subject& subject, Answer& answer) {
    if (subject.bytes.size() != 16) {
        return misfit(0, "16 bytes");
    }
    answer.uuid(subject.label, subject.bytes);
    return {};
}

Outcome decodeGlusterRange(const Subject& subject, Answer& answer) {
    ByteCursor cursor(subject.bytes);
    const std::uint32_t hash = cursor.u32be();
    const std::uint32_t type = cursor.u32be();
    const std::uint32_t first = cursor.u32be();
    const std::uint32_t last = cursor.u32be();
    if (Outcome outcome = decodeExact(cursor, 16); !outcome) {
        return outcome;
    }
    answer.hex("First word", hash, 8);
    answer.number("Type", type);
    answer.hex("First hash", first, 8);
    answer.hex("Last hash", last, 8);
    answer.summary(
        "Gluster: this brick's part of the folder holds names with hashes from " + hexNumber(first, 8)
        + " to " + hexNumber(last, 8) + ".");
    return {};
}

Outcome decodeGlusterPending(const Subject& subject, Answer& answer) {
    ByteCursor cursor(subject.bytes);
    const std::array<std::uint32_t, 3> pending{cursor.u32be(), cursor.u32be(), cursor.u32be()};
    if (Outcome outcome = decodeExact(cursor, 12); !outcome) {
        return outcome;
    }
    static constexpr std::array<std::string_view, 3> names{
        "Pending data", "Pending metadata", "Pending entries"};
    for (std::size_t i = 0; i < names.size(); ++i) {
        answer.number(names.at(i), pending.at(i));
    }
    const bool isBehind = pending != std::array<std::uint32_t, 3>{};
    answer.summary(
        isBehind ? "Gluster: changes that a replica has not got yet: it is behind, or two disagree."
                 : "Gluster: no changes wait for a replica.");
    return {};
}

Outcome decodeGlusterTimes(const Subject& subject, Answer& answer) {
    ByteCursor cursor(subject.bytes);
    const std::uint8_t version = cursor.u8();
    const std::uint64_t flags = cursor.bigEndian(8);
    answer.number("Version", version);
    answer.hex("Flags", flags);
    for (const std::string_view name : {"Changed", "Modified", "Read"}) {
        const std::uint64_t seconds = cursor.bigEndian(8);
        const std::uint64_t nanoseconds = cursor.bigEndian(8);
        if (nanoseconds >= 1'000'000'000) {
            return misfit(cursor.position() - 8, "nanoseconds below a second");
        }
        answer.date(
            name, platform::Date::fromUnixTime(
                      static_cast<std::int64_t>(seconds), static_cast<std::uint32_t>(nanoseconds)));
    }
    return decodeExact(cursor, 57);
}

Outcome decodeBigEndianNumbers(const Subject& subject, Answer& answer) {
    constexpr std::size_t width = 8;
    if (subject.bytes.empty() || subject.bytes.size() % width != 0 || subject.bytes.size() > 8 * width) {
        return misfit(0, "up to 8 numbers of 8 bytes");
    }
    // "Hard limit,Soft limit": one name for each number.
    const std::vector<std::string_view> names = piecesOf(subject.label, ',');
    ByteCursor cursor(subject.bytes);
    for (std::size_t i = 0; cursor.remaining() > 0; ++i) {
        const std::string_view name = i < names.size() ? names[i] : "Further number";
        answer.signedNumber(name, static_cast<std::int64_t>(cursor.bigEndian(width)));
    }
    return {};
}

Outcome decodeLustreLayout(const Subject& subject, Answer& answer) {
    constexpr std::uint32_t v1 = 0x0BD10BD0;
    constexpr std::uint32_t v3 = 0x0BD30BD0;
    constexpr std::uint32_t composite = 0x0BD60BD0;
    ByteCursor cursor(subject.bytes);
    const std::uint32_t magic = cursor.u32le();
    if (magic == composite) {
        answer.text("Kind", "composite layout");
        answer.bytes("Layout", subject.bytes);
        return {};
    }
    if (magic != v1 && magic != v3) {
        return misfit(0, "a layout's magic number");
    }
    const std::uint32_t pattern = cursor.u32le();
    const auto object = cursor.take(16);
    const std::uint32_t size = cursor.u32le();
    const std::size_t count = cursor.littleEndian(2);
    const std::uint64_t generation = cursor.littleEndian(2);
    const std::string_view pool = magic == v3 ? textOf(cursor.take(16)) : std::string_view();
    if (cursor.failed() || (cursor.remaining() != count * 24 && cursor.remaining() != 0)) {
        return misfit(4, "a layout and its stripes");
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

Outcome decodeCephRecord(const Subject& subject, Answer& answer) {
    ByteCursor cursor(subject.bytes);
    const std::uint8_t version = cursor.u8();
    const std::uint8_t compatible = cursor.u8();
    const std::uint32_t length = cursor.u32le();
    if (cursor.failed() || length > cursor.remaining()) {
        return misfit(0, "version, compatible version, and a length");
    }
    answer.number("Structure version", version);
    answer.number("Compatible with", compatible);
    answer.number("Length", length, "bytes");
    if (cursor.remaining() > length) {
        answer.note(std::to_string(cursor.remaining() - length) + " bytes behind the record");
    }
    const auto record = cursor.take(length);
    if (subject.name == "user.ceph._") {
        // The name of the object is the first text, in a structure of its own.
        ByteCursor name(record);
        name.take(6);
        const std::uint32_t size = name.u32le();
        const std::string_view text = textOf(name.take(size));
        if (!name.failed() && !text.empty() && isText(text)) {
            answer.text("Object", text);
        }
    }
    answer.bytes("Record", record);
    return {};
}

} // namespace tolvane::attributes
