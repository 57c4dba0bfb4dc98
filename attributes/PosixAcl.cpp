#include "attributes/Decoders.h"
#include "attributes/Parsing.h"
#include "platform/values/ByteCursor.h"

#include <limits>

namespace tolvane::attributes {

namespace {

using platform::ByteCursor;

enum Tag : std::uint32_t {
    owner = 1,
    namedUser = 2,
    owningGroup = 4,
    namedGroup = 8,
    mask = 0x10,
    other = 0x20
};

struct PosixEntry {
    std::uint32_t tag = 0;
    std::uint32_t permissions = 0;
    std::uint32_t account = 0;
};

constexpr std::size_t mostPosixEntries = 8192;

std::string rights(std::uint32_t permissions) {
    std::string letters = "---";
    letters[0] = (permissions & 4U) != 0 ? 'r' : '-';
    letters[1] = (permissions & 2U) != 0 ? 'w' : '-';
    letters[2] = (permissions & 1U) != 0 ? 'x' : '-';
    return letters;
}

std::string who(const PosixEntry& entry, const Answer& answer) {
    switch (entry.tag) {
    case owner:
        return "user::";
    case namedUser:
        return "user:" + answer.accountText(AccountKind::user, entry.account) + ":";
    case owningGroup:
        return "group::";
    case namedGroup:
        return "group:" + answer.accountText(AccountKind::group, entry.account) + ":";
    case mask:
        return "mask::";
    default:
        return "other::";
    }
}

bool isKnownTag(std::uint32_t tag) {
    return tag == owner || tag == namedUser || tag == owningGroup || tag == namedGroup || tag == mask
           || tag == other;
}

/// Adds an entry as `getfacl` prints it.
void addEntry(const PosixEntry& entry, std::optional<std::uint32_t> limit, Answer& answer) {
    const bool isLimited = entry.tag == namedUser || entry.tag == owningGroup || entry.tag == namedGroup;
    std::string text = who(entry, answer) + rights(entry.permissions);
    const std::uint32_t effective = isLimited && limit ? entry.permissions & *limit : entry.permissions;
    if (effective != entry.permissions) {
        text += " (effective: " + rights(effective) + ")";
    }
    platform::Dictionary value{
        {"tag", std::uint64_t{entry.tag}},
        {"permissions", std::uint64_t{entry.permissions}},
        {"effective", std::uint64_t{effective}}};
    if (entry.tag == namedUser || entry.tag == namedGroup) {
        value.set("id", std::uint64_t{entry.account});
    }
    answer.add("Entry", text, std::move(value));
}

Outcome addPosixAcl(const std::vector<PosixEntry>& entries, const Subject& subject, Answer& answer) {
    std::optional<std::uint32_t> limit;
    std::size_t named = 0;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const PosixEntry& entry = entries[i];
        if (!isKnownTag(entry.tag) || entry.permissions > 7) {
            return misfit(4 + i * 8, "a tag and permissions that are known");
        }
        limit = entry.tag == mask ? std::optional(entry.permissions) : limit;
        named += entry.tag == namedUser || entry.tag == namedGroup ? 1 : 0;
    }
    for (const PosixEntry& entry : entries) {
        addEntry(entry, limit, answer);
    }
    const bool isDefault = subject.name.ends_with("default") || subject.name.ends_with("DEFAULT");
    if (entries.empty()) {
        answer.summary("Access control list without entries: the permissions alone apply.");
    } else {
        answer.summary(
            std::string(
                isDefault ? "Access control list that new items in this folder get"
                          : "Access control list: who may do what beyond the permissions")
            + "; " + std::to_string(named)
            + (named == 1 ? " user or group is named." : " users or groups are named."));
    }
    return {};
}

} // namespace

Outcome decodePosixAcl(const Subject& subject, Answer& answer) {
    constexpr std::uint32_t knownVersion = 2;
    constexpr std::size_t entrySize = 8;
    ByteCursor cursor(subject.bytes);
    const std::uint32_t version = cursor.u32le();
    if (cursor.failed() || version != knownVersion) {
        return misfit(0, "version 2");
    }
    if (cursor.remaining() % entrySize != 0 || cursor.remaining() / entrySize > mostPosixEntries) {
        return misfit(cursor.position(), "entries of 8 bytes, at most 8192");
    }
    std::vector<PosixEntry> entries;
    while (cursor.remaining() > 0) {
        PosixEntry entry;
        entry.tag = static_cast<std::uint32_t>(cursor.littleEndian(2));
        entry.permissions = static_cast<std::uint32_t>(cursor.littleEndian(2));
        entry.account = cursor.u32le();
        entries.push_back(entry);
    }
    return addPosixAcl(entries, subject, answer);
}

Outcome decodeXfsAcl(const Subject& subject, Answer& answer) {
    constexpr std::size_t entrySize = 12;
    ByteCursor cursor(subject.bytes);
    const std::uint32_t count = cursor.u32be();
    if (cursor.failed() || count > mostPosixEntries || cursor.remaining() != count * entrySize) {
        return misfit(0, "a count, and so many entries of 12 bytes");
    }
    std::vector<PosixEntry> entries(count);
    for (PosixEntry& entry : entries) {
        entry.tag = cursor.u32be();
        entry.account = cursor.u32be();
        entry.permissions = cursor.u16be();
        cursor.take(2);
    }
    return addPosixAcl(entries, subject, answer);
}

Outcome decodeRsyncAcl(const Subject& subject, Answer& answer) {
    constexpr std::uint32_t userMark = 0x80000000;
    constexpr std::uint32_t accessBits = 7;
    constexpr std::uint32_t absent = 0x80;
    ByteCursor cursor(subject.bytes);
    std::array<std::uint32_t, 4> fixed{};
    for (std::uint32_t& each : fixed) {
        each = cursor.u32le();
    }
    if (cursor.failed() || cursor.remaining() % 8 != 0) {
        return misfit(0, "4 numbers, and entries of 8 bytes");
    }
    std::vector<PosixEntry> entries;
    constexpr std::array<Tag, 4> tags{owner, owningGroup, mask, other};
    for (std::size_t i = 0; i < fixed.size(); ++i) {
        if ((fixed[i] & absent) == 0) {
            entries.push_back({tags[i], fixed[i] & accessBits, 0});
        }
    }
    while (cursor.remaining() > 0) {
        const std::uint32_t account = cursor.u32le();
        const std::uint32_t access = cursor.u32le();
        entries.push_back({(access & userMark) != 0 ? namedUser : namedGroup, access & accessBits, account});
    }
    return addPosixAcl(entries, subject, answer);
}

} // namespace tolvane::attributes
