#include "attributes/Decoders.h"
#include "attributes/Parsing.h"
#include "platform/values/ByteCursor.h"

#include <array>

namespace tolvane::attributes {

namespace {

using platform::ByteCursor;

constexpr std::array<Flag, 15> dosBits{
    {{0x1, "read-only"},
     {0x2, "hidden"},
     {0x4, "system"},
     {0x8, "volume label"},
     {0x10, "folder"},
     {0x20, "archive"},
     {0x40, "device"},
     {0x80, "normal"},
     {0x100, "temporary"},
     {0x200, "sparse"},
     {0x400, "reparse point"},
     {0x800, "compressed"},
     {0x1000, "offline"},
     {0x2000, "not indexed"},
     {0x4000, "encrypted"}}};

enum Valid : std::uint32_t {
    hasAttributes = 1,
    hasSize = 4,
    hasAllocation = 8,
    hasCreation = 0x10,
    hasChange = 0x20
};

void addDosBits(std::uint32_t bits, Answer& answer) {
    answer.flags("Attributes", bits, dosBits);
    answer.summary("Attributes of DOS and Windows: " + flagNames(bits, dosBits) + ".");
}

void addTime(std::string_view name, std::uint64_t ticks, Answer& answer) {
    if (ticks != 0) {
        answer.date(name, windowsDate(ticks));
    }
}

/// "0x20", with or without a NUL; nothing if the text has another form.
std::optional<std::uint32_t> bitsInText(std::string_view text) {
    return text.starts_with("0x") || text.starts_with("0X") ? parsedNumber<std::uint32_t>(text.substr(2), 16)
                                                            : std::nullopt;
}

/// The versions of Samba that have a mask of what is valid.
Outcome addMasked(ByteCursor& cursor, std::uint64_t version, Answer& answer) {
    const std::uint32_t valid = cursor.u32le();
    const std::uint32_t bits = cursor.u32le();
    std::uint64_t size = 0;
    std::uint64_t allocation = 0;
    std::uint64_t change = 0;
    if (version == 3) {
        cursor.take(4);
        size = cursor.u64le();
        allocation = cursor.u64le();
    } else if (version == 4) {
        // A number that Samba invents, with a random top byte; it looks like a date and is none.
        cursor.take(8);
    }
    const std::uint64_t creation = cursor.u64le();
    if (version == 3) {
        change = cursor.u64le();
    }
    if (cursor.failed()) {
        return misfit(cursor.position(), "as many bytes as the version has");
    }
    if ((valid & hasAttributes) != 0) {
        addDosBits(bits, answer);
    }
    if ((valid & hasSize) != 0) {
        answer.number("Size", size, "bytes");
    }
    if ((valid & hasAllocation) != 0) {
        answer.number("Allocated", allocation, "bytes");
    }
    if ((valid & hasCreation) != 0) {
        addTime("Created", creation, answer);
    }
    if ((valid & hasChange) != 0) {
        addTime("Changed", change, answer);
    }
    return {};
}

/// The first two versions.
Outcome addPlain(ByteCursor& cursor, std::uint64_t version, std::span<const std::byte> all, Answer& answer) {
    if (version == 2) {
        cursor.take(4);
    }
    const std::uint32_t bits = cursor.u32le();
    cursor.take(4);
    const std::uint64_t size = cursor.u64le();
    const std::uint64_t allocation = cursor.u64le();
    const std::uint64_t creation = cursor.u64le();
    const std::uint64_t change = cursor.u64le();
    const std::uint64_t written = version == 2 ? cursor.u64le() : 0;
    if (cursor.failed()) {
        return misfit(cursor.position(), "as many bytes as the version has");
    }
    addDosBits(bits, answer);
    answer.number("Size", size, "bytes");
    answer.number("Allocated", allocation, "bytes");
    addTime("Created", creation, answer);
    addTime("Changed", change, answer);
    addTime("Written", written, answer);
    if (version == 2 && cursor.remaining() > 0) {
        const auto name = cursor.take(cursor.remaining());
        if (!isText(textWithoutNul(name))) {
            return misfit(all.size() - name.size(), "a name");
        }
        answer.text("Name", textWithoutNul(name));
    }
    return {};
}

Outcome addNumber(const Subject& subject, bool bigEndian, Answer& answer) {
    ByteCursor cursor(subject.bytes);
    const std::size_t width = subject.name == "system.dos_attrib" ? 1 : 4;
    const std::uint64_t bits = bigEndian ? cursor.bigEndian(width) : cursor.littleEndian(width);
    if (cursor.failed() || cursor.remaining() != 0) {
        return misfit(0, std::to_string(width) + (width == 1 ? " byte" : " bytes"));
    }
    addDosBits(static_cast<std::uint32_t>(bits), answer);
    return {};
}

} // namespace

Outcome decodeDosAttributes(const Subject& subject, Answer& answer) {
    if (const auto bits = bitsInText(textWithoutNul(subject.bytes))) {
        addDosBits(*bits, answer);
        return {};
    }
    const std::string_view all = textOf(subject.bytes);
    const std::size_t nul = all.find('\0');
    if (nul == std::string_view::npos || (nul > 0 && !bitsInText(all.substr(0, nul)))) {
        return misfit(0, "a number like \"0x20\"");
    }
    ByteCursor cursor(subject.bytes);
    cursor.take(nul + 1);
    cursor.take((nul + 1) % 2);
    const std::size_t start = cursor.position();
    const std::uint64_t version = cursor.littleEndian(2);
    // The second one begins at a multiple of four.
    cursor.take((4 - cursor.position() % 4) % 4);
    const std::uint32_t repeated = cursor.u32le();
    if (cursor.failed() || version != repeated || version < 1 || version > 5) {
        return misfit(start, "a version from 1 to 5, twice");
    }
    if (Outcome outcome = version < 3 ? addPlain(cursor, version, subject.bytes, answer)
                                      : addMasked(cursor, version, answer);
        !outcome) {
        return outcome;
    }
    answer.number("Version", version);
    if (cursor.remaining() != 0) {
        answer.note(std::to_string(cursor.remaining()) + " bytes more than the version has");
    }
    return {};
}

Outcome decodeDosNumber(const Subject& subject, Answer& answer) {
    return addNumber(subject, false, answer);
}

Outcome decodeDosNumberBigEndian(const Subject& subject, Answer& answer) {
    return addNumber(subject, true, answer);
}

} // namespace tolvane::attributes
