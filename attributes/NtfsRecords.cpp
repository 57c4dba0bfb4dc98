#include "attributes/Decoders.h"
#include "attributes/Parsing.h"
#include "platform/values/ByteCursor.h"

#include <array>

namespace tolvane::attributes {

namespace {

using platform::ByteCursor;

Outcome addTimes(const Subject& subject, bool bigEndian, Answer& answer) {
    static constexpr std::array<std::string_view, 4> names{"Created", "Written", "Read", "Record changed"};
    constexpr std::size_t width = 8;
    const std::size_t count = subject.bytes.size() / width;
    if (subject.bytes.empty() || subject.bytes.size() % width != 0 || count > names.size()) {
        return misfit(0, "1 to 4 times of 8 bytes");
    }
    ByteCursor cursor(subject.bytes);
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint64_t ticks = bigEndian ? cursor.bigEndian(width) : cursor.u64le();
        if (ticks == 0) {
            answer.add(names.at(i), "none", ticks);
        } else {
            answer.date(names.at(i), windowsDate(ticks));
        }
    }
    return {};
}

} // namespace

Outcome decodeNtfsTimes(const Subject& subject, Answer& answer) {
    return addTimes(subject, false, answer);
}

Outcome decodeNtfsTimesBigEndian(const Subject& subject, Answer& answer) {
    return addTimes(subject, true, answer);
}

Outcome decodeNtfsObjectId(const Subject& subject, Answer& answer) {
    static constexpr std::array<std::string_view, 4> names{
        "Object", "Birth volume", "Birth object", "Domain"};
    constexpr std::size_t width = 16;
    if (subject.bytes.size() != width && subject.bytes.size() != width * names.size()) {
        return misfit(0, "16 or 64 bytes");
    }
    for (std::size_t i = 0; i < subject.bytes.size() / width; ++i) {
        answer.uuid(names.at(i), guidInWrittenOrder(subject.bytes.subspan(i * width, width)));
    }
    return {};
}

Outcome decodeNtfsExtended(const Subject& subject, Answer& answer) {
    std::size_t place = 0;
    while (place < subject.bytes.size()) {
        ByteCursor cursor(subject.bytes);
        cursor.seek(place);
        const std::uint32_t next = cursor.u32le();
        const std::uint8_t flags = cursor.u8();
        const std::uint8_t nameLength = cursor.u8();
        const std::size_t valueLength = cursor.littleEndian(2);
        const std::string_view name = textOf(cursor.take(nameLength));
        cursor.take(1);
        const auto value = cursor.take(valueLength);
        if (cursor.failed() || !isText(name) || (next != 0 && next < cursor.position() - place)) {
            return misfit(place, "an entry: name and value");
        }
        ByteCursor number(value);
        const std::string heading = std::string(name) + ((flags & 0x80U) != 0 ? " (needed)" : "");
        if (name == "$LXUID" && value.size() == 4) {
            answer.account(heading, AccountKind::user, number.u32le());
        } else if (name == "$LXGID" && value.size() == 4) {
            answer.account(heading, AccountKind::group, number.u32le());
        } else if (name == "$LXMOD" && value.size() == 4) {
            const std::uint32_t mode = number.u32le();
            answer.add(
                heading, std::string(kindOfMode(mode)) + " " + permissionLetters(mode), std::uint64_t{mode});
        } else if (name == "$LXDEV" && value.size() == 8) {
            const std::uint32_t major = number.u32le();
            const std::uint32_t minor = number.u32le();
            answer.add(
                heading, std::to_string(major) + ", " + std::to_string(minor), platform::Array{major, minor});
        } else {
            answer.bytes(heading, value);
        }
        if (next == 0 || next > subject.bytes.size() - place) {
            break;
        }
        place += next;
    }
    return {};
}

Outcome decodeNulList(const Subject& subject, Answer& answer) {
    for (const std::string_view name : piecesOf(textWithoutNul(subject.bytes), '\0')) {
        if (!isText(name)) {
            return misfit(0, "names in UTF-8");
        }
        if (!name.empty()) {
            answer.text(subject.label, name);
        }
    }
    return {};
}

} // namespace tolvane::attributes
