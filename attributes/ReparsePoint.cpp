#include "attributes/Decoders.h"
#include "attributes/Parsing.h"
#include "platform/values/ByteCursor.h"

#include <array>

namespace tolvane::attributes {

namespace {

using platform::ByteCursor;

constexpr std::uint32_t symbolicLink = 0xA000000C;
constexpr std::uint32_t mountPoint = 0xA0000003;
constexpr std::uint32_t wslLink = 0xA000001D;
constexpr std::uint32_t nfsSpecial = 0x80000014;

constexpr std::array<Named, 12> reparseTags{
    {{symbolicLink, "symbolic link"},
     {mountPoint, "mount point or junction"},
     {wslLink, "symbolic link of WSL"},
     {0x80000023, "socket"},
     {0x80000024, "FIFO"},
     {0x80000025, "character device"},
     {0x80000026, "block device"},
     {0x80000017, "compressed by the system"},
     {0x80000013, "deduplicated"},
     {0x8000001B, "link to an application"},
     {nfsSpecial, "special file of NFS"},
     {0x9000001A, "file in a cloud"}}};

std::string tagName(std::uint32_t tag) {
    constexpr std::uint32_t cloudMask = 0xFFFF0FFF;
    if ((tag & cloudMask) == 0x9000001A) {
        return "file in a cloud";
    }
    const std::string_view name = nameIn(reparseTags, tag);
    return name.empty() ? "unknown kind" : std::string(name);
}

Outcome addNames(ByteCursor& cursor, bool hasFlags, std::string& target, Answer& answer) {
    struct Part {
        std::size_t offset;
        std::size_t length;
    };
    const Part substitute{cursor.littleEndian(2), cursor.littleEndian(2)};
    const Part printed{cursor.littleEndian(2), cursor.littleEndian(2)};
    const std::uint32_t flags = hasFlags ? cursor.u32le() : 0;
    const std::size_t base = cursor.position();
    const auto buffer = cursor.take(cursor.remaining());
    const auto fits = [&](const Part& part) {
        return part.offset <= buffer.size() && part.length <= buffer.size() - part.offset
               && part.length % 2 == 0;
    };
    if (cursor.failed() || !fits(substitute) || !fits(printed)) {
        return misfit(base, "two names within the value");
    }
    target = textOfUtf16(buffer.subspan(substitute.offset, substitute.length));
    answer.text("Target", target);
    if (printed.length > 0) {
        answer.text("Printed as", textOfUtf16(buffer.subspan(printed.offset, printed.length)));
    }
    if (hasFlags) {
        answer.yes("Relative", (flags & 1U) != 0);
    }
    return {};
}

} // namespace

Outcome decodeReparsePoint(const Subject& subject, Answer& answer) {
    ByteCursor cursor(subject.bytes);
    const std::uint32_t tag = cursor.u32le();
    const std::size_t length = cursor.littleEndian(2);
    cursor.take(2);
    if (cursor.failed() || length > cursor.remaining()) {
        return misfit(4, "as many bytes as the length states");
    }
    const std::string kind = tagName(tag);
    answer.add("Kind", kind + " (" + hexNumber(tag, 8) + ")", std::uint64_t{tag});
    const std::size_t behind = cursor.remaining() - length;
    std::string target;
    ByteCursor data(subject.bytes.first(8 + length));
    data.take(8);
    if (tag == symbolicLink || tag == mountPoint) {
        if (Outcome outcome = addNames(data, tag == symbolicLink, target, answer); !outcome) {
            return outcome;
        }
    } else if (tag == wslLink && length >= 4) {
        data.take(4);
        target = textOf(data.take(data.remaining()));
        answer.text("Target", target);
    } else if (tag == nfsSpecial && length >= 8) {
        const std::uint64_t code = data.u64le();
        std::string letters;
        for (std::uint64_t rest = code; rest != 0; rest >>= 8U) {
            letters += static_cast<char>(rest & 0xFFU);
        }
        answer.add("Special", letters, code);
        if (data.remaining() > 0) {
            answer.bytes("Data", data.take(data.remaining()));
        }
    } else if (length > 0) {
        answer.bytes("Data", data.take(data.remaining()));
    }
    if (behind > 0) {
        answer.note(std::to_string(behind) + " bytes behind the data");
    }
    answer.summary(
        "Reparse point of Windows: " + kind + (target.empty() ? "" : " to " + shortened(target)) + ".");
    return {};
}

} // namespace tolvane::attributes
