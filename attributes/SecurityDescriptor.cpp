#include "attributes/SecurityDescriptor.h"

#include "attributes/Decoders.h"
#include "attributes/Parsing.h"
#include "platform/values/ByteCursor.h"

#include <array>
#include <vector>

namespace tolvane::attributes {

namespace {

using platform::ByteCursor;

constexpr std::array<Flag, 6> controlBits{
    {{0x0004, "access list present"},
     {0x0010, "audit list present"},
     {0x0100, "inheritance requested"},
     {0x0400, "inherits automatically"},
     {0x1000, "access list protected"},
     {0x8000, "self-relative"}}};

constexpr std::array<Flag, 7> aceFlags{
    {{0x01, "files inherit"},
     {0x02, "folders inherit"},
     {0x04, "inherited one level"},
     {0x08, "only inherited"},
     {0x10, "was inherited"},
     {0x40, "on success"},
     {0x80, "on failure"}}};

constexpr std::array<Flag, 23> windowsRights{
    {{0x001F01FF, "full control"},
     {0x001301BF, "modify"},
     {0x001200A9, "read and run"},
     {0x00120089, "read"},
     {0x00120116, "write"},
     {0x00100116, "write"},
     {0x00000001, "read or list"},
     {0x00000002, "write or add files"},
     {0x00000004, "append or add folders"},
     {0x00000008, "read extended attributes"},
     {0x00000010, "write extended attributes"},
     {0x00000020, "run or search"},
     {0x00000040, "delete children"},
     {0x00000080, "read attributes"},
     {0x00000100, "write attributes"},
     {0x00010000, "delete"},
     {0x00020000, "read rights"},
     {0x00040000, "change rights"},
     {0x00080000, "change owner"},
     {0x00100000, "synchronize"},
     {0x10000000, "generic all"},
     {0x40000000, "generic write"},
     {0x80000000, "generic read"}}};

constexpr std::array<Named, 3> aceTypes{{{0, "allow"}, {1, "deny"}, {2, "audit"}}};

constexpr std::array<std::pair<std::string_view, std::string_view>, 12> knownAccounts{
    {{"S-1-1-0", "Everyone"},
     {"S-1-3-0", "Creator Owner"},
     {"S-1-3-1", "Creator Group"},
     {"S-1-5-11", "Authenticated Users"},
     {"S-1-5-18", "SYSTEM"},
     {"S-1-5-32-544", "Administrators"},
     {"S-1-5-32-545", "Users"},
     {"S-1-5-32-546", "Guests"},
     {"S-1-5-32-549", "Server Operators"},
     {"S-1-5-7", "Anonymous"},
     {"S-1-5-19", "Local Service"},
     {"S-1-5-20", "Network Service"}}};

constexpr std::array<std::pair<std::string_view, std::string_view>, 3> domainAccounts{
    {{"-500", "Administrator"}, {"-512", "Domain Admins"}, {"-513", "Domain Users"}}};

/// The name that an identifier has everywhere, or on Samba; empty if it has none.
std::string wellKnownName(
    const std::string& text, const std::vector<std::uint32_t>& parts, const Answer& answer) {
    for (const auto& [identifier, name] : knownAccounts) {
        if (text == identifier) {
            return std::string(name);
        }
    }
    if (text.starts_with("S-1-5-21-")) {
        for (const auto& [end, name] : domainAccounts) {
            if (text.ends_with(end)) {
                return std::string(name);
            }
        }
    }
    if (text.starts_with("S-1-22-1-") && parts.size() == 2) {
        return "Unix user " + answer.accountText(AccountKind::user, parts[1]);
    }
    if (text.starts_with("S-1-22-2-") && parts.size() == 2) {
        return "Unix group " + answer.accountText(AccountKind::group, parts[1]);
    }
    return {};
}

/// "S-1-5-18 (SYSTEM)"; empty if the cursor fails or the identifier has an unknown form.
std::string takeIdentifier(ByteCursor& cursor, const Answer& answer) {
    constexpr std::uint8_t mostParts = 15;
    const std::uint8_t revision = cursor.u8();
    const std::uint8_t count = cursor.u8();
    const std::uint64_t authority = cursor.bigEndian(6);
    std::string text = "S-1-" + std::to_string(authority);
    if (revision != 1 || count > mostParts) {
        return {};
    }
    std::vector<std::uint32_t> parts;
    for (std::uint8_t i = 0; i < count; ++i) {
        parts.push_back(cursor.u32le());
        text += "-" + std::to_string(parts.back());
    }
    if (cursor.failed()) {
        return {};
    }
    const std::string name = wellKnownName(text, parts, answer);
    return name.empty() ? text : text + " (" + name + ")";
}

Outcome addAce(std::span<const std::byte> bytes, std::size_t start, std::string_view list, Answer& answer) {
    ByteCursor cursor(bytes);
    const std::uint8_t type = cursor.u8();
    const std::uint8_t flags = cursor.u8();
    cursor.take(2);
    const std::uint32_t mask = cursor.u32le();
    const std::string_view kind = nameIn(aceTypes, type);
    if (kind.empty()) {
        answer.add(
            list, "entry of type " + std::to_string(type) + ", not taken apart",
            platform::Data(bytes.begin(), bytes.end()));
        return {};
    }
    const std::string who = takeIdentifier(cursor, answer);
    if (who.empty()) {
        return misfit(start + 8, "a security identifier");
    }
    std::string text = std::string(kind) + " " + who + ": " + flagNames(mask, windowsRights) + " ("
                       + hexNumber(mask, 8) + ")";
    if (flags != 0) {
        text += "; " + flagNames(flags, aceFlags);
    }
    answer.add(
        list, text,
        platform::Dictionary{
            {"type", std::uint64_t{type}},
            {"flags", std::uint64_t{flags}},
            {"mask", std::uint64_t{mask}},
            {"who", who.substr(0, who.find(' '))}});
    return {};
}

Outcome addList(std::span<const std::byte> bytes, std::size_t offset, std::string_view name, Answer& answer) {
    ByteCursor cursor(bytes);
    cursor.seek(offset);
    cursor.take(2);
    const std::size_t size = cursor.littleEndian(2);
    const std::size_t count = cursor.littleEndian(2);
    cursor.take(2);
    if (cursor.failed() || size < 8 || size > bytes.size() - offset) {
        return misfit(offset, "an access control list");
    }
    std::size_t place = offset + 8;
    for (std::size_t i = 0; i < count; ++i) {
        ByteCursor entry(bytes.first(offset + size));
        entry.seek(place);
        entry.take(2);
        const std::size_t length = entry.littleEndian(2);
        if (entry.failed() || length < 8 || length > offset + size - place) {
            return misfit(place, "an entry of the access control list");
        }
        if (Outcome outcome = addAce(bytes.subspan(place, length), place, name, answer); !outcome) {
            return outcome;
        }
        place += length;
    }
    return {};
}

} // namespace

Outcome addSecurityDescriptor(std::span<const std::byte> bytes, std::size_t base, Answer& answer) {
    ByteCursor cursor(bytes);
    cursor.seek(base);
    const std::uint8_t revision = cursor.u8();
    cursor.take(1);
    const std::uint64_t control = cursor.littleEndian(2);
    const std::array<std::uint32_t, 4> offsets{
        cursor.u32le(), cursor.u32le(), cursor.u32le(), cursor.u32le()};
    if (cursor.failed() || revision != 1) {
        return misfit(base, "a security descriptor of revision 1");
    }
    static constexpr std::array<std::string_view, 2> accounts{"Owner", "Group"};
    for (std::size_t i = 0; i < accounts.size(); ++i) {
        if (offsets.at(i) == 0) {
            continue;
        }
        ByteCursor identifier(bytes);
        identifier.seek(offsets.at(i));
        const std::string text = takeIdentifier(identifier, answer);
        if (text.empty()) {
            return misfit(std::min<std::size_t>(offsets.at(i), bytes.size()), "a security identifier");
        }
        answer.text(accounts.at(i), text);
    }
    answer.flags("Control", control, controlBits, 4);
    if (offsets[3] == 0) {
        answer.text(
            "Access", (control & 4U) != 0 ? "everybody may do everything (no list)" : "no list is stated");
    } else if (Outcome outcome = addList(bytes, offsets[3], "Access", answer); !outcome) {
        return outcome;
    }
    return offsets[2] == 0 ? Outcome() : addList(bytes, offsets[2], "Audit", answer);
}

Outcome decodeSecurityDescriptor(const Subject& subject, Answer& answer) {
    return addSecurityDescriptor(subject.bytes, 0, answer);
}

Outcome decodeNtAcl(const Subject& subject, Answer& answer) {
    constexpr std::size_t hashSize = 64;
    static constexpr std::array<Named, 2> hashTypes{{{0, "none"}, {1, "SHA-256"}}};
    ByteCursor cursor(subject.bytes);
    const std::uint64_t version = cursor.littleEndian(2);
    const std::uint64_t repeated = cursor.littleEndian(2);
    cursor.take(4);
    if (cursor.failed() || version != repeated || version < 1 || version > 4) {
        return misfit(0, "a version from 1 to 4, twice");
    }
    answer.number("Version", version);
    if (version == 2) {
        cursor.take(4);
        answer.bytes("Hash", cursor.take(16));
    } else if (version > 2) {
        cursor.take(4);
        answer.named("Hash type", cursor.littleEndian(2), hashTypes);
        answer.bytes("Hash of the descriptor", cursor.take(hashSize));
    }
    if (version == 4) {
        const std::string_view rest = textOf(subject.bytes.subspan(cursor.position()));
        const std::size_t nul = rest.find('\0');
        if (cursor.failed() || nul == std::string_view::npos) {
            return misfit(cursor.position(), "a description ended by NUL");
        }
        answer.text("Description", rest.substr(0, nul));
        cursor.take(nul + 1);
        cursor.take((4 - cursor.position() % 4) % 4);
        if (const std::uint64_t time = cursor.u64le(); time != 0) {
            answer.date("Written", windowsDate(time));
        }
        answer.bytes("Hash of the POSIX list", cursor.take(hashSize));
    }
    if (cursor.failed()) {
        return misfit(cursor.position(), "hashes of the version's length");
    }
    return addSecurityDescriptor(subject.bytes, cursor.position(), answer);
}

} // namespace tolvane::attributes
