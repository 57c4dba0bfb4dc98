#include "attributes/ClusterParsing.h"
#include "attributes/Decoders.h"
#include "attributes/Parsing.h"
#include "platform/values/ByteCursor.h"

#include <array>

namespace tolvane::attributes {

using platform::ByteCursor;

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

Outcome decodeGlusterSigned(const Subject& subject, Answer& answer) {
    ByteCursor cursor(subject.bytes);
    const std::uint64_t version = cursor.u64le();
    const std::uint32_t seconds = cursor.u32le();
    const std::uint32_t microseconds = cursor.u32le();
    if (Outcome outcome = decodeExact(cursor, 16); !outcome) {
        return outcome;
    }
    if (microseconds >= 1'000'000) {
        return misfit(12, "microseconds below a second");
    }
    answer.number("Version", version);
    answer.date("Started", platform::Date::fromUnixTime(seconds, microseconds * 1000));
    return {};
}

Outcome decodeGlusterSignature(const Subject& subject, Answer& answer) {
    static constexpr std::array<Named, 2> kinds{{{0, "none"}, {1, "SHA-256"}}};
    ByteCursor cursor(subject.bytes);
    const std::uint8_t kind = cursor.u8();
    const std::uint64_t version = cursor.u64le();
    if (cursor.failed()) {
        return misfit(0, "a kind, a version, and a signature");
    }
    answer.named("Kind", kind, kinds);
    answer.number("Signed version", version);
    answer.bytes("Signature", cursor.take(cursor.remaining()));
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
