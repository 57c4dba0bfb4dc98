#include "attributes/Decoders.h"
#include "attributes/Parsing.h"
#include "attributes/Protobuf.h"
#include "platform/values/ByteCursor.h"

#include <array>
#include <limits>

namespace tolvane::attributes {

namespace {

using platform::ByteCursor;

/// A little-endian number that grows with the container, as framing offsets do.
std::size_t offsetWidth(std::size_t size) {
    return size <= 0xFF ? 1 : size <= 0xFFFF ? 2 : 4;
}

/// The ends of an array's elements, which stand behind them. Nothing if they do not fit.
std::optional<std::vector<std::size_t>> elementEnds(std::span<const std::byte> array) {
    const std::size_t width = offsetWidth(array.size());
    if (array.size() < width) {
        return std::nullopt;
    }
    ByteCursor last(array.last(width));
    const std::size_t table = last.littleEndian(width);
    if (table > array.size() || (array.size() - table) % width != 0) {
        return std::nullopt;
    }
    std::vector<std::size_t> ends;
    ByteCursor cursor(array.subspan(table));
    while (cursor.remaining() > 0) {
        ends.push_back(cursor.littleEndian(width));
        if (ends.back() > table || (ends.size() > 1 && ends.back() < ends[ends.size() - 2])) {
            return std::nullopt;
        }
    }
    return ends;
}

/// An attribute: a name ended by NUL, and a value, with the name's end stored last.
bool addOstreeAttribute(std::span<const std::byte> pair, Answer& answer) {
    const std::size_t width = offsetWidth(pair.size());
    if (pair.size() < width) {
        return false;
    }
    ByteCursor end(pair.last(width));
    const std::size_t nameEnd = end.littleEndian(width);
    if (nameEnd == 0 || nameEnd > pair.size() - width || pair[nameEnd - 1] != std::byte{0}
        || !isText(textOf(pair.first(nameEnd - 1)))) {
        return false;
    }
    answer.bytes(textOf(pair.first(nameEnd - 1)), pair.subspan(nameEnd, pair.size() - width - nameEnd));
    return true;
}

} // namespace

Outcome decodeRootlessOwner(const Subject& subject, Answer& answer) {
    const auto fields = protobufFields(subject.bytes);
    if (!fields) {
        return misfit(0, "numbers in protobuf form");
    }
    constexpr std::uint64_t unchanged = std::numeric_limits<std::uint32_t>::max();
    for (const ProtobufField& field : *fields) {
        if (field.number > 2 || field.number == 0 || !field.isNumber || field.value > unchanged) {
            return misfit(0, "fields 1 and 2 with 32-bit numbers");
        }
        const std::string_view name = field.number == 1 ? "Owner" : "Group";
        if (field.value == unchanged) {
            answer.add(name, "unchanged", field.value);
        } else {
            answer.account(
                name, field.number == 1 ? AccountKind::user : AccountKind::group,
                static_cast<std::uint32_t>(field.value));
        }
    }
    return {};
}

Outcome decodeOstreeMeta(const Subject& subject, Answer& answer) {
    ByteCursor cursor(subject.bytes);
    const std::uint32_t user = cursor.u32be();
    const std::uint32_t group = cursor.u32be();
    const std::uint32_t mode = cursor.u32be();
    if (cursor.failed()) {
        return misfit(0, "owner, group and mode");
    }
    answer.account("Owner", AccountKind::user, user);
    answer.account("Group", AccountKind::group, group);
    if (const std::string_view kind = kindOfMode(mode); !kind.empty()) {
        answer.text("Kind", kind);
    }
    answer.add("Permissions", permissionLetters(mode), std::uint64_t{mode & 07777U});
    const auto array = cursor.take(cursor.remaining());
    if (array.empty()) {
        return {};
    }
    const auto ends = elementEnds(array);
    if (!ends) {
        return misfit(12, "a list of attributes");
    }
    std::size_t start = 0;
    for (const std::size_t end : *ends) {
        if (start > end || !addOstreeAttribute(array.subspan(start, end - start), answer)) {
            return misfit(12 + start, "an attribute's name and value");
        }
        start = end;
    }
    return {};
}

Outcome decodeVirtualNumber(const Subject& subject, Answer& answer) {
    const bool isDevice = subject.name.ends_with("rdev");
    ByteCursor cursor(subject.bytes);
    const std::uint64_t number = cursor.littleEndian(isDevice ? 8 : 4);
    if (cursor.failed() || cursor.remaining() != 0) {
        return misfit(0, isDevice ? "8 bytes" : "4 bytes");
    }
    const auto narrow = static_cast<std::uint32_t>(number);
    if (subject.name.ends_with("uid") || subject.name.ends_with("gid")) {
        answer.account(
            subject.label, subject.name.ends_with("uid") ? AccountKind::user : AccountKind::group, narrow);
    } else if (subject.name.ends_with("mode")) {
        answer.add(subject.label, std::string(kindOfMode(narrow)) + " " + permissionLetters(narrow), number);
    } else {
        answer.hex(subject.label, number);
    }
    return {};
}

Outcome decodePickle(const Subject& subject, Answer& answer) {
    constexpr std::size_t shortestRun = 3;
    const std::string_view all = textOf(subject.bytes);
    std::string run;
    const auto take = [&] {
        if (run.size() >= shortestRun) {
            answer.text("Text in it", run);
        }
        run.clear();
    };
    for (const char c : all) {
        if (c >= ' ' && c <= '~') {
            run += c;
        } else {
            take();
        }
    }
    take();
    answer.note("A serialised Python object; it is not loaded, only the texts in it are shown");
    return {};
}

} // namespace tolvane::attributes
