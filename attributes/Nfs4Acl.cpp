#include "attributes/Decoders.h"
#include "attributes/Parsing.h"
#include "platform/values/ByteCursor.h"

#include <array>

namespace tolvane::attributes {

namespace {

using platform::ByteCursor;

constexpr std::size_t mostNfsEntries = 8192;
constexpr std::uint32_t groupFlag = 0x40;

constexpr std::array<Named, 4> entryTypes{{{0, "allow"}, {1, "deny"}, {2, "audit"}, {3, "alarm"}}};

constexpr std::array<Flag, 8> entryFlags{
    {{0x01, "files inherit"},
     {0x02, "folders inherit"},
     {0x04, "inherited one level"},
     {0x08, "only inherited"},
     {0x10, "on success"},
     {0x20, "on failure"},
     {groupFlag, "group"},
     {0x80, "was inherited"}}};

constexpr std::array<Flag, 17> nfsRights{
    {{0x001F01FF, "full control"},
     {0x00000001, "read or list"},
     {0x00000002, "write or add files"},
     {0x00000004, "append or add folders"},
     {0x00000008, "read named attributes"},
     {0x00000010, "write named attributes"},
     {0x00000020, "run or search"},
     {0x00000040, "delete children"},
     {0x00000080, "read attributes"},
     {0x00000100, "write attributes"},
     {0x00000200, "write retention"},
     {0x00000400, "write retention hold"},
     {0x00010000, "delete"},
     {0x00020000, "read rights"},
     {0x00040000, "change rights"},
     {0x00080000, "change owner"},
     {0x00100000, "synchronize"}}};

struct NfsEntry {
    std::uint32_t type = 0;
    std::uint32_t flags = 0;
    std::uint32_t mask = 0;
    std::string who;
};

void addNfsEntry(const NfsEntry& entry, Answer& answer) {
    const std::string_view type = nameIn(entryTypes, entry.type);
    std::string text = type.empty() ? "type " + std::to_string(entry.type) : std::string(type);
    text += " " + entry.who + ": " + flagNames(entry.mask, nfsRights) + " (" + hexNumber(entry.mask, 8) + ")";
    if (entry.flags != 0) {
        text += "; " + flagNames(entry.flags, entryFlags);
    }
    answer.add(
        "Entry", text,
        platform::Dictionary{
            {"type", std::uint64_t{entry.type}},
            {"flags", std::uint64_t{entry.flags}},
            {"mask", std::uint64_t{entry.mask}},
            {"who", entry.who}});
}

void addNfsSummary(std::size_t count, Answer& answer) {
    answer.summary(
        "Access control list of NFS version 4: who may do what; " + std::to_string(count)
        + (count == 1 ? " entry." : " entries."));
}

std::string account(std::uint32_t number, bool isGroup, const Answer& answer) {
    return (isGroup ? "group " : "user ")
           + answer.accountText(isGroup ? AccountKind::group : AccountKind::user, number);
}

} // namespace

Outcome decodeNfs4Acl(const Subject& subject, Answer& answer) {
    ByteCursor cursor(subject.bytes);
    if (subject.name.ends_with("dacl") || subject.name.ends_with("sacl")) {
        answer.hex("List flags", cursor.u32be(), 8);
    }
    const std::uint32_t count = cursor.u32be();
    if (cursor.failed() || count > mostNfsEntries) {
        return misfit(0, "a count of at most 8192 entries");
    }
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::size_t start = cursor.position();
        NfsEntry entry{cursor.u32be(), cursor.u32be(), cursor.u32be(), {}};
        const std::uint32_t length = cursor.u32be();
        const std::span<const std::byte> who = cursor.take(length);
        cursor.take((4 - length % 4) % 4);
        if (cursor.failed() || !isText(textOf(who))) {
            return misfit(start, "an entry: type, flags, mask, and a name");
        }
        entry.who = textOf(who);
        addNfsEntry(entry, answer);
    }
    if (cursor.remaining() != 0) {
        return misfit(cursor.position(), "no more bytes");
    }
    addNfsSummary(count, answer);
    return {};
}

Outcome decodeNfs4AclNumbers(const Subject& subject, Answer& answer) {
    static constexpr std::array<Flag, 4> listFlags{
        {{1, "inherits automatically"}, {2, "protected"}, {4, "defaulted"}, {0x20000, "folder"}}};
    static constexpr std::array<std::string_view, 4> specials{"", "OWNER@", "GROUP@", "EVERYONE@"};
    ByteCursor cursor(subject.bytes);
    const std::uint32_t flags = cursor.u32be();
    const std::uint32_t count = cursor.u32be();
    if (cursor.failed() || count > mostNfsEntries || cursor.remaining() != std::size_t{count} * 20) {
        return misfit(4, "a count, and so many entries of 20 bytes");
    }
    answer.flags("List flags", flags, listFlags, 8);
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::size_t start = cursor.position();
        NfsEntry entry{cursor.u32be(), cursor.u32be(), 0, {}};
        const bool isSpecial = cursor.u32be() == 1;
        entry.mask = cursor.u32be();
        const std::uint32_t who = cursor.u32be();
        if (isSpecial && (who == 0 || who >= specials.size())) {
            return misfit(start + 16, "owner, group or everyone");
        }
        entry.who =
            isSpecial ? std::string(specials.at(who)) : account(who, (entry.flags & groupFlag) != 0, answer);
        addNfsEntry(entry, answer);
    }
    addNfsSummary(count, answer);
    return {};
}

Outcome decodeNfs4AclBlob(const Subject& subject, Answer& answer) {
    ByteCursor cursor(subject.bytes);
    const std::uint8_t version = cursor.u8();
    const std::uint8_t flags = cursor.u8();
    const std::uint16_t count = cursor.u16be();
    answer.number("Version", version);
    answer.hex("List flags", flags, 2);
    for (const std::string_view name : {"Owner mask", "Group mask", "Other mask"}) {
        answer.hex(name, cursor.u32be(), 8);
    }
    if (cursor.failed() || count > mostNfsEntries) {
        return misfit(0, "a header of 16 bytes");
    }
    for (std::uint16_t i = 0; i < count; ++i) {
        const std::size_t start = cursor.position();
        NfsEntry entry{cursor.u16be(), cursor.u16be(), cursor.u32be(), {}};
        const std::uint32_t number = cursor.u32be();
        const std::string_view rest = textOf(subject.bytes.subspan(cursor.position()));
        const std::size_t nul = rest.find('\0');
        if (cursor.failed() || nul == std::string_view::npos || !isText(rest.substr(0, nul))) {
            return misfit(start, "an entry, and a name ended by NUL");
        }
        entry.who = nul > 0 ? std::string(rest.substr(0, nul))
                            : account(number, (entry.flags & groupFlag) != 0, answer);
        cursor.take(nul + 1);
        cursor.take(std::min((4 - cursor.position() % 4) % 4, cursor.remaining()));
        addNfsEntry(entry, answer);
    }
    if (cursor.remaining() != 0) {
        return misfit(cursor.position(), "no more bytes");
    }
    addNfsSummary(count, answer);
    return {};
}

Outcome decodeRichAcl(const Subject& subject, Answer& answer) {
    constexpr std::uint32_t specialFlag = 0x100;
    static constexpr std::array<std::string_view, 3> specials{"OWNER@", "GROUP@", "EVERYONE@"};
    ByteCursor cursor(subject.bytes);
    const std::uint8_t version = cursor.u8();
    const std::uint8_t flags = cursor.u8();
    const auto count = static_cast<std::uint32_t>(cursor.littleEndian(2));
    if (cursor.failed() || version != 0) {
        return misfit(0, "version 0");
    }
    answer.hex("List flags", flags, 2);
    for (const std::string_view name : {"Owner mask", "Group mask", "Other mask"}) {
        answer.hex(name, cursor.u32le(), 8);
    }
    if (cursor.failed() || cursor.remaining() != std::size_t{count} * 12 || count > mostNfsEntries) {
        return misfit(2, "a count, and so many entries of 12 bytes");
    }
    for (std::uint32_t i = 0; i < count; ++i) {
        NfsEntry entry;
        entry.type = static_cast<std::uint32_t>(cursor.littleEndian(2));
        entry.flags = static_cast<std::uint32_t>(cursor.littleEndian(2));
        entry.mask = cursor.u32le();
        const std::uint32_t who = cursor.u32le();
        const bool isSpecial = (entry.flags & specialFlag) != 0 && who < specials.size();
        entry.who =
            isSpecial ? std::string(specials.at(who)) : account(who, (entry.flags & groupFlag) != 0, answer);
        entry.flags &= ~specialFlag;
        addNfsEntry(entry, answer);
    }
    addNfsSummary(count, answer);
    return {};
}

} // namespace tolvane::attributes
