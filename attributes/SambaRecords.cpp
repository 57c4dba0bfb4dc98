#include "attributes/Decoders.h"
#include "attributes/FinderInfo.h"
#include "attributes/Parsing.h"
#include "platform/values/ByteCursor.h"

#include <array>

namespace tolvane::attributes {

namespace {

using platform::ByteCursor;

constexpr std::array<Named, 3> paiKinds{{{0, "user"}, {1, "group"}, {2, "everyone"}}};

void addPaiEntries(
    ByteCursor& cursor, std::size_t count, bool hasFlags, std::string_view name, Answer& answer) {
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint8_t flags = hasFlags ? cursor.u8() : std::uint8_t{0};
        const std::uint8_t kind = cursor.u8();
        const std::uint32_t account = cursor.u32le();
        const std::string_view word = nameIn(paiKinds, kind);
        std::string text = word.empty() ? "kind " + std::to_string(kind) : std::string(word);
        if (kind < 2) {
            text += " " + answer.accountText(kind == 0 ? AccountKind::user : AccountKind::group, account);
        }
        if (flags != 0) {
            text += ", flags " + hexNumber(flags, 2);
        }
        answer.add(name, text, std::uint64_t{account});
    }
}

} // namespace

Outcome decodeAfpInfo(const Subject& subject, Answer& answer) {
    constexpr std::uint32_t magic = 0x41465000;
    constexpr std::uint32_t noDate = 0x80000000;
    constexpr std::int64_t secondsTo2000 = 946'684'800;
    ByteCursor cursor(subject.bytes);
    if (cursor.u32be() != magic) {
        return misfit(0, "the letters AFP");
    }
    if (subject.bytes.size() != 60) {
        return misfit(0, "60 bytes");
    }
    const std::uint32_t version = cursor.u32be();
    cursor.take(4);
    const std::uint32_t backup = cursor.u32be();
    addFinderInfo(cursor.take(32), subject.questions.itemKind, answer);
    if (backup != noDate && backup != 0) {
        answer.date(
            "Backup", platform::Date::fromUnixTime(secondsTo2000 + static_cast<std::int32_t>(backup), 0));
    }
    answer.hex("Version", version, 8);
    if (const auto proDos = cursor.take(6); hexDigits(proDos) != "000000000000") {
        answer.bytes("ProDOS", proDos);
    }
    return {};
}

Outcome decodeSambaPai(const Subject& subject, Answer& answer) {
    ByteCursor cursor(subject.bytes);
    const std::uint8_t version = cursor.u8();
    if (version != 1 && version != 2) {
        return misfit(0, "version 1 or 2");
    }
    const std::uint64_t flags = cursor.littleEndian(version == 1 ? 1 : 2);
    const std::size_t count = cursor.littleEndian(2);
    const std::size_t defaults = cursor.littleEndian(2);
    const std::size_t entrySize = version == 1 ? 5 : 6;
    if (cursor.failed() || cursor.remaining() != (count + defaults) * entrySize) {
        return misfit(cursor.position(), "as many entries as the counts state");
    }
    answer.number("Version", version);
    if (version == 1) {
        answer.yes("Protected", (flags & 1U) != 0);
    } else {
        answer.hex("Descriptor type", flags, 4);
    }
    addPaiEntries(cursor, count, version == 2, "Inherited entry", answer);
    addPaiEntries(cursor, defaults, version == 2, "Default entry", answer);
    return {};
}

Outcome decodeSambaStreamPart(const Subject& subject, Answer& answer) {
    // "user.DosStreamExt.0.NAME:$DATA"
    std::string_view rest = subject.name.substr(std::string_view("user.DosStreamExt.").size());
    const std::size_t dot = rest.find('.');
    const auto index = parsedNumber<std::uint32_t>(rest.substr(0, dot));
    if (dot == std::string_view::npos || !index) {
        return misfit(0, "a number and a stream's name behind the attribute's name");
    }
    rest.remove_prefix(dot + 1);
    constexpr std::string_view type = ":$DATA";
    rest.remove_suffix(rest.ends_with(type) ? type.size() : 0);
    answer.text("Stream", rest);
    answer.number("Index", *index);
    answer.bytes("Part", subject.bytes);
    answer.summary(
        "Further part of the stream " + shortened(rest)
        + ", which is too long for one attribute; Samba keeps it.");
    return {};
}

} // namespace tolvane::attributes
